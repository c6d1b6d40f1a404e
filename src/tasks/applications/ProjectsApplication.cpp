#include "tasks/applications/ProjectsApplication.h"

#include "tasks/domain/ProjectDomain.h"
#include "tasks/domain/TaskMessages.h"

namespace {

template <typename Work>
TaskResultEntity recordedProjects(const ProjectsApplication& app, TaskChangeVerbEnum verb, const QUuid& id, Work&& work)
{
    return TaskChanges::recorded<ProjectEntity>(
        app.recorder, verb, {id}, [&](const QUuid& found) { return app.projectRepository->find(found); },
        std::forward<Work>(work));
}

} // namespace

ProjectsApplication::ProjectsApplication(
    std::shared_ptr<ProjectRepository> projectRepository, std::shared_ptr<TaskListRepository> taskListRepository)
    : projectRepository(std::move(projectRepository))
    , taskListRepository(std::move(taskListRepository))
{
}

TaskResultEntity ProjectsApplication::create(const ProjectEntity& project) const
{
    if (TaskResultEntity valid = ProjectDomain::validateName(project); !valid.result)
        return valid;
    return recordedProjects(
        *this, TaskChangeVerbEnum::add, project.prjId, [&] { return projectRepository->create(project); });
}

TaskResultEntity ProjectsApplication::update(const ProjectEntity& project) const
{
    if (TaskResultEntity valid = ProjectDomain::validateName(project); !valid.result)
        return valid;
    return recordedProjects(
        *this, TaskChangeVerbEnum::edit, project.prjId, [&] { return projectRepository->update(project); });
}

TaskResultEntity ProjectsApplication::delete_(const QUuid& projectId, const QUuid& userId) const
{
    const TaskResultEntity found = projectRepository->find(projectId);
    if (!found.result)
        return found;
    const ProjectEntity* project = found.dataAs<ProjectEntity>();
    if (!project)
        return TaskResultEntity::applicationFailure(TaskMessages::Project::notFound);
    if (TaskResultEntity owned = ProjectDomain::belongsToUser(*project, userId); !owned.result)
        return owned;
    const TaskResultEntity lists = taskListRepository->list(projectId);
    if (!lists.result)
        return lists;
    const auto* taskLists = lists.dataAs<QList<TaskListEntity>>();
    if (TaskResultEntity empty = ProjectDomain::canDelete(taskLists ? *taskLists : QList<TaskListEntity>());
        !empty.result)
        return empty;
    return recordedProjects(
        *this, TaskChangeVerbEnum::delete_, projectId, [&] { return projectRepository->delete_(projectId); });
}

TaskResultEntity ProjectsApplication::list(const QUuid& userId) const
{
    return projectRepository->list(userId);
}
