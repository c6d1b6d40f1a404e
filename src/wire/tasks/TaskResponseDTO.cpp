#include "wire/tasks/TaskResponseDTO.h"

#include "wire/JSONObjectReader.h"

TaskResponseDTO TaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    TaskResponseDTO dto;
    dto.tasId = reader.string(QLatin1String("tasId"));
    dto.prjId = reader.string(QLatin1String("prjId"));
    dto.talId = reader.string(QLatin1String("talId"));
    dto.tasTitle = reader.string(QLatin1String("tasTitle"));
    dto.tasIsDone = reader.boolean(QLatin1String("tasIsDone"));
    dto.tasDueDate = reader.optionalDate(QLatin1String("tasDueDate"));
    dto.tasEisenhowerTag = reader.optionalString(QLatin1String("tasEisenhowerTag"));
    dto.tasCompletedAt = reader.optionalDate(QLatin1String("tasCompletedAt"));
    dto.tasDueHasTime = reader.optionalBoolean(QLatin1String("tasDueHasTime")).value_or(false);
    dto.tasOccurrence = reader.optionalInteger(QLatin1String("tasOccurrence"));
    dto.tasRecurrence = reader.optionalDecode<TaskRecurrenceDTO>(QLatin1String("tasRecurrence"));
    dto.tasReminderMinutesBefore = reader.optionalInteger(QLatin1String("tasReminderMinutesBefore"));
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
