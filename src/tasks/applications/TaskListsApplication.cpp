#include "tasks/applications/TaskListsApplication.h"

#include "tasks/domain/TaskListDomain.h"
#include "tasks/domain/TaskMessages.h"

namespace {

template <typename Work>
TaskResultEntity recordedLists(
    const TaskListsApplication& app, TaskChangeVerbEnum verb, const QList<QUuid>& ids, Work&& work)
{
    return TaskChanges::recorded<TaskListEntity>(
        app.recorder, verb, ids, [&](const QUuid& found) { return app.taskListRepository->find(found); },
        std::forward<Work>(work));
}

} // namespace

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
    return recordedLists(
        *this, TaskChangeVerbEnum::add, {taskList.talId}, [&] { return taskListRepository->create(taskList); });
}

TaskResultEntity TaskListsApplication::update(const TaskListEntity& taskList) const
{
    if (TaskResultEntity valid = TaskListDomain::validateName(taskList); !valid.result)
        return valid;
    return recordedLists(
        *this, TaskChangeVerbEnum::edit, {taskList.talId}, [&] { return taskListRepository->update(taskList); });
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

    // The chosen list first: the change is named after it.
    QList<QUuid> listIds {taskList.talId};
    for (const TaskListEntity& list : *lists) {
        if (list.talId != taskList.talId)
            listIds.append(list.talId);
    }
    const TaskResultEntity done = recordedLists(*this, TaskChangeVerbEnum::setDefault, listIds, [&] {
        for (TaskListEntity list : *lists) {
            const bool wanted = list.talId == taskList.talId;
            if (list.talIsDefault == wanted)
                continue;
            list.talIsDefault = wanted;
            if (TaskResultEntity written = taskListRepository->update(list); !written.result)
                return written;
        }
        return TaskResultEntity::success();
    });
    return done.result ? TaskResultEntity::success() : done;
}

TaskResultEntity TaskListsApplication::delete_(const QUuid& taskListId) const
{
    const TaskResultEntity listed = taskRepository->list(taskListId);
    if (!listed.result)
        return listed;
    const QList<TaskEntity> tasks
        = listed.dataAs<QList<TaskEntity>>() ? *listed.dataAs<QList<TaskEntity>>() : QList<TaskEntity>();
    // The tasks go with their list, and come back with it.
    TasksChange change {.verb = TaskChangeVerbEnum::delete_, .subject = TaskChangeSubjectEnum::taskList};
    if (recorder) {
        const TaskResultEntity found = taskListRepository->find(taskListId);
        if (const auto* list = found.result ? found.dataAs<TaskListEntity>() : nullptr) {
            change.before.taskLists.append(*list);
            change.name = list->talName;
        }
        change.before.tasks = tasks;
    }
    for (const TaskEntity& task : tasks) {
        if (TaskResultEntity deleted = taskRepository->delete_(task.tasId); !deleted.result) {
            if (recorder && !change.before.taskLists.isEmpty()) {
                // What went before the failure stays gone; that part can still be taken back.
                change.before.taskLists.clear();
                change.before.tasks.resize(&task - tasks.data());
                if (!change.before.tasks.isEmpty())
                    recorder->record(change);
            }
            return deleted;
        }
    }
    TaskResultEntity deleted = taskListRepository->delete_(taskListId);
    if (recorder && !change.before.isEmpty()) {
        if (!deleted.result)
            change.before.taskLists.clear();
        if (!change.before.isEmpty())
            recorder->record(change);
    }
    return deleted;
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
