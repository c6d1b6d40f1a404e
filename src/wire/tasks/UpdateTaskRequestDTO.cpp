#include "wire/tasks/UpdateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"
#include "wire/tasks/TaskBodyFields.h"

UpdateTaskRequestDTO UpdateTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasTitle"), QLatin1String("tasIsDone"), QLatin1String("tasDueDate"),
        QLatin1String("tasEisenhowerTag"), QLatin1String("tasCompletedAt"), QLatin1String("tasDueHasTime"),
        QLatin1String("tasOccurrence"), QLatin1String("tasRecurrence"), QLatin1String("tasReminderMinutesBefore")});
    UpdateTaskRequestDTO dto;
    readTaskBodyFields(reader, dto);
    dto.tasIsDone = reader.boolean(QLatin1String("tasIsDone"));
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
