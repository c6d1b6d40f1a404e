#include "tasks/domain/TaskDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace TaskDomain {

TaskResultEntity validateTitle(const TaskEntity& task)
{
    if (Text::isBlank(task.tasTitle))
        return TaskResultEntity::domainFailure(TaskMessages::Task::blankTitle);
    // UTF-8 in the store and JSON on the wire have no form for half a surrogate pair; it would
    // come back as "?".
    return TaskResultEntity::domainCheck(task.tasTitle.isValidUtf16(), TaskMessages::Task::unstorableTitle);
}

TaskResultEntity parentTaskListExists(const std::optional<TaskListEntity>& taskList)
{
    return TaskResultEntity::domainCheck(taskList.has_value(), TaskMessages::Task::missingParent);
}

} // namespace TaskDomain
