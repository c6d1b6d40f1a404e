#pragma once

#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <optional>

// The rules on tasks; each failure carries its text as domainMessage.
namespace TaskDomain {

TaskResultEntity validateTitle(const TaskEntity& task);
// A repetition with an interval of at least 1 and days that exist; a reminder only with a due
// date and never after it.
TaskResultEntity validateSchedule(const TaskEntity& task);
// The list looked up for the task's talId must be there.
TaskResultEntity parentTaskListExists(const std::optional<TaskListEntity>& taskList);

} // namespace TaskDomain
