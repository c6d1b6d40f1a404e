#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QDateTime>
#include <QTime>

#include <optional>

// When a task's reminder rings: its due time less the minutes before. A task due on a day
// without a time is reminded as if due at the start of a working morning, in the local zone.
class TaskReminderTime {
public:
    static inline const QTime dayOnlyDueTime = QTime(9, 0);

    // None for a done task, one without a due date, or one that asked for no reminder.
    static std::optional<QDateTime> of(const TaskEntity& task);
    // The moment the task is due: its instant, or the day at dayOnlyDueTime.
    static std::optional<QDateTime> dueMoment(const TaskEntity& task);
};
