#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QDateTime>
#include <QString>

// How a task's due date reads in a row or a quadrant: near days in words ("today", "tomorrow",
// "in 3 days", "2 days ago"), farther ones as a short date, with the time when it has one.
struct TaskDueLabel {
    QString text;
    // Open and past its due day, or its due time for a timed one.
    bool overdue = false;

    friend bool operator==(const TaskDueLabel&, const TaskDueLabel&) = default;
};

namespace TaskDueText {

// Nothing to show (an empty text) for a task without a due date. now: the user's local time.
TaskDueLabel of(const TaskEntity& task, const QDateTime& now);

} // namespace TaskDueText
