#include "tasks/domain/ProjectDomain.h"

#include "platform/Text.h"
#include "tasks/domain/TaskMessages.h"

namespace ProjectDomain {

TaskResultEntity validateName(const ProjectEntity& project)
{
    if (Text::isBlank(project.prjName))
        return TaskResultEntity::domainFailure(TaskMessages::Project::blankName);
    // UTF-8 in the store and JSON on the wire have no form for half a surrogate pair; it would
    // come back as "?".
    return TaskResultEntity::domainCheck(project.prjName.isValidUtf16(), TaskMessages::Project::unstorableName);
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
