#include "wire/tasks/CreateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

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
    dto.tasTitle = reader.string(QLatin1String("tasTitle"));
    dto.tasDueDate = reader.optionalDate(QLatin1String("tasDueDate"));
    dto.tasEisenhowerTag = reader.optionalString(QLatin1String("tasEisenhowerTag"));
    dto.tasCompletedAt = reader.optionalDate(QLatin1String("tasCompletedAt"));
    dto.tasDueHasTime = reader.optionalBoolean(QLatin1String("tasDueHasTime")).value_or(false);
    dto.tasOccurrence = reader.optionalInteger(QLatin1String("tasOccurrence"));
    dto.tasRecurrence = reader.optionalDecode<TaskRecurrenceDTO>(QLatin1String("tasRecurrence"));
    dto.tasReminderMinutesBefore = reader.optionalInteger(QLatin1String("tasReminderMinutesBefore"));
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
