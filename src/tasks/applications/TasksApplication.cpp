#include "tasks/applications/TasksApplication.h"

#include "tasks/domain/TaskDomain.h"

namespace {

template <typename Work>
TaskResultEntity recordedTasks(
    const TasksApplication& app, TaskChangeVerbEnum verb, const QList<QUuid>& ids, Work&& work)
{
    return TaskChanges::recorded<TaskEntity>(
        app.recorder, verb, ids, [&](const QUuid& id) { return app.taskRepository->find(id); },
        std::forward<Work>(work));
}

} // namespace

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
    return recordedTasks(*this, TaskChangeVerbEnum::add, {task.tasId}, [&] { return taskRepository->create(task); });
}

TaskResultEntity TasksApplication::rename(const TaskEntity& task) const
{
    if (TaskResultEntity valid = TaskDomain::validateTitle(task); !valid.result)
        return valid;
    return recordedTasks(*this, TaskChangeVerbEnum::edit, {task.tasId}, [&] { return taskRepository->update(task); });
}

TaskResultEntity TasksApplication::markDone(const QUuid& taskId) const
{
    return recordedTasks(
        *this, TaskChangeVerbEnum::complete, {taskId}, [&] { return taskRepository->markDone(taskId); });
}

TaskResultEntity TasksApplication::markNotDone(const QUuid& taskId) const
{
    return recordedTasks(
        *this, TaskChangeVerbEnum::reopen, {taskId}, [&] { return taskRepository->markNotDone(taskId); });
}

TaskResultEntity TasksApplication::setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) const
{
    return recordedTasks(
        *this, TaskChangeVerbEnum::setTag, {taskId}, [&] { return taskRepository->setTag(taskId, tag); });
}

TaskResultEntity TasksApplication::delete_(const QUuid& taskId) const
{
    return recordedTasks(*this, TaskChangeVerbEnum::delete_, {taskId}, [&] { return taskRepository->delete_(taskId); });
}

TaskResultEntity TasksApplication::deleteCompleted(const QUuid& taskListId) const
{
    QList<QUuid> completed;
    if (recorder) {
        const TaskResultEntity listed = taskRepository->list(taskListId);
        if (const auto* tasks = listed.result ? listed.dataAs<QList<TaskEntity>>() : nullptr) {
            for (const TaskEntity& task : *tasks) {
                if (task.tasIsDone)
                    completed.append(task.tasId);
            }
        }
    }
    return recordedTasks(*this, TaskChangeVerbEnum::deleteCompleted, completed,
        [&] { return taskRepository->deleteCompleted(taskListId); });
}

TaskResultEntity TasksApplication::find(const QUuid& taskId) const
{
    return taskRepository->find(taskId);
}

TaskResultEntity TasksApplication::list(const QUuid& taskListId) const
{
    return taskRepository->list(taskListId);
}
