#include "wire/tasks/TaskResponseDTO.h"

#include "wire/JSONObjectReader.h"
#include "wire/tasks/TaskBodyFields.h"

TaskResponseDTO TaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    TaskResponseDTO dto;
    dto.tasId = reader.string(QLatin1String("tasId"));
    dto.prjId = reader.string(QLatin1String("prjId"));
    dto.talId = reader.string(QLatin1String("talId"));
    readTaskBodyFields(reader, dto);
    dto.tasIsDone = reader.boolean(QLatin1String("tasIsDone"));
    return dto;
}

void TaskResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talId").string(talId);
    out.key("tasCompletedAt").optionalDate(tasCompletedAt);
    out.key("tasDueDate").optionalDate(tasDueDate);
    out.key("tasDueHasTime").boolean(tasDueHasTime);
    out.key("tasEisenhowerTag").optionalString(tasEisenhowerTag);
    out.key("tasId").string(tasId);
    out.key("tasIsDone").boolean(tasIsDone);
    out.key("tasOccurrence").integer(tasOccurrence.value_or(1));
    if (tasRecurrence)
        tasRecurrence->writeJson(out.key("tasRecurrence"));
    else
        out.key("tasRecurrence").null();
    out.key("tasReminderMinutesBefore");
    if (tasReminderMinutesBefore)
        out.integer(*tasReminderMinutesBefore);
    else
        out.null();
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
