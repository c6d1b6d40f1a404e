#include "tasks/applications/TasksApplication.h"

#include "tasks/domain/TaskDomain.h"

TasksApplication::TasksApplication(
    std::shared_ptr<TaskRepository> taskRepository, std::shared_ptr<TaskListRepository> taskListRepository)
    : taskRepository(std::move(taskRepository))
    , taskListRepository(std::move(taskListRepository))
{
}

TaskResultEntity TasksApplication::create(const TaskEntity& task) const
{
    if (TaskResultEntity valid = TaskDomain::validateTitle(task); !valid.result)
        return valid;
    const TaskResultEntity found = taskListRepository->find(task.talId);
    const TaskListEntity* taskList = found.result ? found.dataAs<TaskListEntity>() : nullptr;
    if (TaskResultEntity parent = TaskDomain::parentTaskListExists(taskList ? std::optional(*taskList) : std::nullopt);
        !parent.result)
        return parent;
    return taskRepository->create(task);
}

TaskResultEntity TasksApplication::rename(const TaskEntity& task) const
{
    if (TaskResultEntity valid = TaskDomain::validateTitle(task); !valid.result)
        return valid;
    return taskRepository->update(task);
}

TaskResultEntity TasksApplication::markDone(const QUuid& taskId) const
{
    return taskRepository->markDone(taskId);
}

TaskResultEntity TasksApplication::markNotDone(const QUuid& taskId) const
{
    return taskRepository->markNotDone(taskId);
}

TaskResultEntity TasksApplication::setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) const
{
    return taskRepository->setTag(taskId, tag);
}

TaskResultEntity TasksApplication::delete_(const QUuid& taskId) const
{
    return taskRepository->delete_(taskId);
}

TaskResultEntity TasksApplication::deleteCompleted(const QUuid& taskListId) const
{
    return taskRepository->deleteCompleted(taskListId);
}

TaskResultEntity TasksApplication::find(const QUuid& taskId) const
{
    return taskRepository->find(taskId);
}

TaskResultEntity TasksApplication::list(const QUuid& taskListId) const
{
    return taskRepository->list(taskListId);
}

TaskResultEntity TasksApplication::listOfLists(const QList<QUuid>& taskListIds) const
{
    return taskRepository->listOfLists(taskListIds);
}
