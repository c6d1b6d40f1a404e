#include "tasks/domain/TaskDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

#include <algorithm>

namespace TaskDomain {

TaskResultEntity validateTitle(const TaskEntity& task)
{
    if (Text::isBlank(task.tasTitle))
        return TaskResultEntity::domainFailure(TaskMessages::Task::blankTitle);
    // UTF-8 in the store and JSON on the wire have no form for half a surrogate pair; it would
    // come back as "?".
    return TaskResultEntity::domainCheck(task.tasTitle.isValidUtf16(), TaskMessages::Task::unstorableTitle);
}

TaskResultEntity validateSchedule(const TaskEntity& task)
{
    if (task.tasReminderMinutesBefore && (!task.tasDueDate || *task.tasReminderMinutesBefore < 0))
        return TaskResultEntity::domainFailure(TaskMessages::Task::badReminder);
    if (!task.tasRecurrence)
        return TaskResultEntity::success();
    const TaskRecurrenceEntity& rule = *task.tasRecurrence;
    const auto isWeekday = [](int day) { return day >= Qt::Monday && day <= Qt::Sunday; };
    const bool valid = rule.interval >= 1 && std::all_of(rule.weekdays.cbegin(), rule.weekdays.cend(), isWeekday)
        && rule.monthDay >= -1 && rule.monthDay <= 31 && rule.weekdayOrdinal >= -1 && rule.weekdayOrdinal <= 5
        && (rule.weekdayOrdinal == 0 || isWeekday(rule.ordinalWeekday))
        && (!rule.endAfterCount || *rule.endAfterCount >= 1);
    return TaskResultEntity::domainCheck(valid, TaskMessages::Task::badRecurrence);
}

TaskResultEntity parentTaskListExists(const std::optional<TaskListEntity>& taskList)
{
    return TaskResultEntity::domainCheck(taskList.has_value(), TaskMessages::Task::missingParent);
}

} // namespace TaskDomain
