#include "tasks/domain/TaskListDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace TaskListDomain {

TaskResultEntity validateName(const TaskListEntity& taskList)
{
    return TaskResultEntity::domainCheck(!Text::isBlank(taskList.talName), TaskMessages::TaskList::blankName);
}

TaskResultEntity parentProjectExists(const std::optional<ProjectEntity>& project)
{
    return TaskResultEntity::domainCheck(project.has_value(), TaskMessages::TaskList::missingParent);
}

} // namespace TaskListDomain
