#include "tasks/domain/ProjectDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace ProjectDomain {

TaskResultEntity validateName(const ProjectEntity& project)
{
    return TaskResultEntity::domainCheck(!Text::isBlank(project.prjName), TaskMessages::Project::blankName);
}

TaskResultEntity canDelete(const QList<TaskListEntity>& taskLists)
{
    return TaskResultEntity::domainCheck(taskLists.isEmpty(), TaskMessages::Project::hasTaskLists);
}

TaskResultEntity belongsToUser(const ProjectEntity& project, const QUuid& userId)
{
    return TaskResultEntity::domainCheck(project.prjUserId == userId, TaskMessages::Project::notOwned);
}

} // namespace ProjectDomain
