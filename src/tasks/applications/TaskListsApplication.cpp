#include "tasks/applications/TaskListsApplication.h"

#include "tasks/domain/TaskListDomain.h"
#include "tasks/domain/TaskMessages.h"

TaskListsApplication::TaskListsApplication(std::shared_ptr<TaskListRepository> taskListRepository,
    std::shared_ptr<ProjectRepository> projectRepository, std::shared_ptr<TaskRepository> taskRepository)
    : taskListRepository(std::move(taskListRepository))
    , projectRepository(std::move(projectRepository))
    , taskRepository(std::move(taskRepository))
{
}

TaskResultEntity TaskListsApplication::create(const TaskListEntity& taskList) const
{
    if (TaskResultEntity valid = TaskListDomain::validateName(taskList); !valid.result)
        return valid;
    const TaskResultEntity found = projectRepository->find(taskList.prjId);
    const ProjectEntity* project = found.result ? found.dataAs<ProjectEntity>() : nullptr;
    if (TaskResultEntity parent = TaskListDomain::parentProjectExists(project ? std::optional(*project) : std::nullopt);
        !parent.result)
        return parent;
    return taskListRepository->create(taskList);
}

TaskResultEntity TaskListsApplication::update(const TaskListEntity& taskList) const
{
    if (TaskResultEntity valid = TaskListDomain::validateName(taskList); !valid.result)
        return valid;
    return taskListRepository->update(taskList);
}

TaskResultEntity TaskListsApplication::setDefault(const TaskListEntity& taskList) const
{
    const TaskResultEntity listed = taskListRepository->list(taskList.prjId);
    const auto* lists = listed.result ? listed.dataAs<QList<TaskListEntity>>() : nullptr;
    if (!lists)
        return TaskResultEntity::applicationFailure(TaskMessages::TaskList::listingFailed);
    const bool chosenIsListed = std::any_of(
        lists->begin(), lists->end(), [&](const TaskListEntity& list) { return list.talId == taskList.talId; });
    if (!chosenIsListed)
        return TaskResultEntity::applicationFailure(TaskMessages::TaskList::notFound);

    for (TaskListEntity list : *lists) {
        const bool wanted = list.talId == taskList.talId;
        if (list.talIsDefault == wanted)
            continue;
        list.talIsDefault = wanted;
        if (TaskResultEntity written = taskListRepository->update(list); !written.result)
            return written;
    }
    return TaskResultEntity::success();
}

TaskResultEntity TaskListsApplication::delete_(const QUuid& taskListId) const
{
    const TaskResultEntity listed = taskRepository->list(taskListId);
    if (!listed.result)
        return listed;
    if (const auto* tasks = listed.dataAs<QList<TaskEntity>>()) {
        for (const TaskEntity& task : *tasks) {
            if (TaskResultEntity deleted = taskRepository->delete_(task.tasId); !deleted.result)
                return deleted;
        }
    }
    return taskListRepository->delete_(taskListId);
}

TaskResultEntity TaskListsApplication::find(const QUuid& taskListId) const
{
    return taskListRepository->find(taskListId);
}

TaskResultEntity TaskListsApplication::list(const QUuid& projectId) const
{
    return taskListRepository->list(projectId);
}

TaskResultEntity TaskListsApplication::listOfProjects(const QList<QUuid>& projectIds) const
{
    return taskListRepository->listOfProjects(projectIds);
}
