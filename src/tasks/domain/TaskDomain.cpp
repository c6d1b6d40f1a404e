#include "tasks/domain/TaskDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace TaskDomain {

TaskResultEntity validateTitle(const TaskEntity& task)
{
    return TaskResultEntity::domainCheck(!Text::isBlank(task.tasTitle), TaskMessages::Task::blankTitle);
}

TaskResultEntity parentTaskListExists(const std::optional<TaskListEntity>& taskList)
{
    return TaskResultEntity::domainCheck(taskList.has_value(), TaskMessages::Task::missingParent);
}

} // namespace TaskDomain
