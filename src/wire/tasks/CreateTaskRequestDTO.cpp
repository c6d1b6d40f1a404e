#include "wire/tasks/CreateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"
#include "wire/tasks/TaskBodyFields.h"

CreateTaskRequestDTO CreateTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasId"), QLatin1String("prjId"), QLatin1String("talId"),
        QLatin1String("tasTitle"), QLatin1String("tasDueDate"), QLatin1String("tasEisenhowerTag"),
        QLatin1String("tasCompletedAt"), QLatin1String("tasDueHasTime"), QLatin1String("tasOccurrence"),
        QLatin1String("tasRecurrence"), QLatin1String("tasReminderMinutesBefore")});
    CreateTaskRequestDTO dto;
    dto.prjId = reader.string(QLatin1String("prjId"));
    dto.talId = reader.string(QLatin1String("talId"));
    readTaskBodyFields(reader, dto);
    dto.tasId = reader.optionalString(QLatin1String("tasId"));
    return dto;
}

void CreateTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talId").string(talId);
    if (tasCompletedAt)
        out.key("tasCompletedAt").date(*tasCompletedAt);
    if (tasDueDate)
        out.key("tasDueDate").date(*tasDueDate);
    if (tasDueHasTime)
        out.key("tasDueHasTime").boolean(true);
    if (tasEisenhowerTag)
        out.key("tasEisenhowerTag").string(*tasEisenhowerTag);
    if (tasOccurrence)
        out.key("tasOccurrence").integer(*tasOccurrence);
    if (tasRecurrence)
        tasRecurrence->writeJson(out.key("tasRecurrence"));
    if (tasReminderMinutesBefore)
        out.key("tasReminderMinutesBefore").integer(*tasReminderMinutesBefore);
    if (tasId)
        out.key("tasId").string(*tasId);
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
