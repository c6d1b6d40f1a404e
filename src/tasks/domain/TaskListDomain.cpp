#include "tasks/domain/TaskListDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace TaskListDomain {

TaskResultEntity validateName(const TaskListEntity& taskList)
{
    if (Text::isBlank(taskList.talName))
        return TaskResultEntity::domainFailure(TaskMessages::TaskList::blankName);
    // UTF-8 in the store and JSON on the wire have no form for half a surrogate pair; it would
    // come back as "?".
    return TaskResultEntity::domainCheck(taskList.talName.isValidUtf16(), TaskMessages::TaskList::unstorableName);
}

TaskResultEntity parentProjectExists(const std::optional<ProjectEntity>& project)
{
    return TaskResultEntity::domainCheck(project.has_value(), TaskMessages::TaskList::missingParent);
}

} // namespace TaskListDomain
