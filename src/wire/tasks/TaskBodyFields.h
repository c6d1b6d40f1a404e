#pragma once

#include "wire/JSONObjectReader.h"
#include "wire/tasks/TaskRecurrenceDTO.h"

// The keys every task body has, whichever way it goes: what the task says and when it is due.
template <typename Body> void readTaskBodyFields(const JSONObjectReader& reader, Body& body)
{
    body.tasTitle = reader.string(QLatin1String("tasTitle"));
    body.tasDueDate = reader.optionalDate(QLatin1String("tasDueDate"));
    body.tasEisenhowerTag = reader.optionalString(QLatin1String("tasEisenhowerTag"));
    body.tasCompletedAt = reader.optionalDate(QLatin1String("tasCompletedAt"));
    body.tasDueHasTime = reader.optionalBoolean(QLatin1String("tasDueHasTime")).value_or(false);
    body.tasOccurrence = reader.optionalInteger(QLatin1String("tasOccurrence"));
    body.tasRecurrence = reader.optionalDecode<TaskRecurrenceDTO>(QLatin1String("tasRecurrence"));
    body.tasReminderMinutesBefore = reader.optionalInteger(QLatin1String("tasReminderMinutesBefore"));
}
