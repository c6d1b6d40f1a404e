#include "tasks/reminders/TaskReminderTime.h"

std::optional<QDateTime> TaskReminderTime::dueMoment(const TaskEntity& task)
{
    if (!task.tasDueDate)
        return std::nullopt;
    if (task.tasDueHasTime)
        return task.tasDueDate->toLocalTime();
    // A day whose morning is skipped by a daylight-saving change still gets a valid moment:
    // Qt moves a time in the gap forward.
    return QDateTime(*task.dueDay(), dayOnlyDueTime, Qt::LocalTime);
}

std::optional<QDateTime> TaskReminderTime::of(const TaskEntity& task)
{
    if (task.tasIsDone || !task.tasReminderMinutesBefore)
        return std::nullopt;
    const std::optional<QDateTime> due = dueMoment(task);
    if (!due)
        return std::nullopt;
    return due->addSecs(-qint64(*task.tasReminderMinutesBefore) * 60);
}
