#include "wire/tasks/UpdateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateTaskRequestDTO UpdateTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasTitle"), QLatin1String("tasIsDone"), QLatin1String("tasDueDate"),
        QLatin1String("tasEisenhowerTag"), QLatin1String("tasCompletedAt"), QLatin1String("tasDueHasTime"),
        QLatin1String("tasOccurrence"), QLatin1String("tasRecurrence"), QLatin1String("tasReminderMinutesBefore")});
    UpdateTaskRequestDTO dto;
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

void UpdateTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    if (tasCompletedAt)
        out.key("tasCompletedAt").date(*tasCompletedAt);
    if (tasDueDate)
        out.key("tasDueDate").date(*tasDueDate);
    if (tasDueHasTime)
        out.key("tasDueHasTime").boolean(true);
    if (tasEisenhowerTag)
        out.key("tasEisenhowerTag").string(*tasEisenhowerTag);
    out.key("tasIsDone").boolean(tasIsDone);
    if (tasOccurrence)
        out.key("tasOccurrence").integer(*tasOccurrence);
    if (tasRecurrence)
        tasRecurrence->writeJson(out.key("tasRecurrence"));
    if (tasReminderMinutesBefore)
        out.key("tasReminderMinutesBefore").integer(*tasReminderMinutesBefore);
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
