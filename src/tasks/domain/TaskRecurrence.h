#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QDate>
#include <QDateTime>

#include <optional>

// The arithmetic of repeating tasks, free of any store or clock: given a task and when it was
// finished, where its next occurrence falls, and whether the rule has ended.
namespace TaskRecurrence {

// The first day strictly after `after` on which the rule falls. `original` is the day the series
// keeps its shape from (its day of the month, its month, its weekday when the rule names none).
QDate nextDay(const TaskRecurrenceEntity& rule, QDate after, QDate original);

// The next occurrence of a repeating task finished (or skipped) at `finishedAt`: open, due on the
// rule's next day at the same local time, counted one further. Nothing when the task does not
// repeat or the rule has ended.
std::optional<TaskEntity> nextOccurrence(const TaskEntity& task, const QDateTime& finishedAt);

} // namespace TaskRecurrence
