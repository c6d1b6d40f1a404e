#include "tasks/applications/TasksApplication.h"

#include "platform/SystemClock.h"
#include "tasks/domain/TaskDomain.h"
#include "tasks/domain/TaskMessages.h"
#include "tasks/domain/TaskRecurrence.h"

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

TasksApplication::TasksApplication(std::shared_ptr<TaskRepository> taskRepository,
    std::shared_ptr<TaskListRepository> taskListRepository, std::shared_ptr<Clock> clock)
    : taskRepository(std::move(taskRepository))
    , taskListRepository(std::move(taskListRepository))
    , clock(clock ? std::move(clock) : std::make_shared<SystemClock>())
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

TaskResultEntity TasksApplication::schedule(const TaskEntity& task) const
{
    if (TaskResultEntity valid = TaskDomain::validateSchedule(task); !valid.result)
        return valid;
    const TaskResultEntity found = taskRepository->find(task.tasId);
    const TaskEntity* stored = found.dataAs<TaskEntity>();
    if (!stored)
        return found;
    TaskEntity changed = *stored;
    changed.tasDueDate = task.tasDueDate;
    changed.tasDueHasTime = task.tasDueDate && task.tasDueHasTime;
    changed.tasRecurrence = task.tasRecurrence;
    changed.tasReminderMinutesBefore = task.tasReminderMinutesBefore;
    return recordedTasks(
        *this, TaskChangeVerbEnum::edit, {task.tasId}, [&] { return taskRepository->update(changed); });
}

TaskResultEntity TasksApplication::markDone(const QUuid& taskId) const
{
    const TaskResultEntity found = taskRepository->find(taskId);
    const TaskEntity* stored = found.dataAs<TaskEntity>();
    if (!stored)
        return found;
    // Done twice is done once: no second completion time, no second next occurrence.
    if (stored->tasIsDone)
        return found;
    TaskEntity done = *stored;
    done.tasIsDone = true;
    done.tasCompletedAt = clock->now().toUTC();
    const std::optional<TaskEntity> next = TaskRecurrence::nextOccurrence(*stored, *done.tasCompletedAt);
    // The next occurrence is part of the change: undoing it reopens the task and removes the next.
    QList<QUuid> changed {taskId};
    if (next)
        changed.append(next->tasId);
    return recordedTasks(*this, TaskChangeVerbEnum::complete, changed, [&]() -> TaskResultEntity {
        // The next occurrence first: should it fail, the task is still open and can be done again.
        if (next) {
            if (TaskResultEntity created = taskRepository->create(*next); !created.result)
                return created;
        }
        return taskRepository->update(done);
    });
}

TaskResultEntity TasksApplication::markNotDone(const QUuid& taskId) const
{
    const TaskResultEntity found = taskRepository->find(taskId);
    const TaskEntity* stored = found.dataAs<TaskEntity>();
    if (!stored)
        return found;
    TaskEntity open = *stored;
    open.tasIsDone = false;
    open.tasCompletedAt.reset();
    return recordedTasks(*this, TaskChangeVerbEnum::reopen, {taskId}, [&] { return taskRepository->update(open); });
}

TaskResultEntity TasksApplication::skipOccurrence(const QUuid& taskId) const
{
    const TaskResultEntity found = taskRepository->find(taskId);
    const TaskEntity* stored = found.dataAs<TaskEntity>();
    if (!stored)
        return found;
    if (!stored->tasRecurrence)
        return TaskResultEntity::domainFailure(TaskMessages::Task::notRepeating);
    const std::optional<TaskEntity> next = TaskRecurrence::nextOccurrence(*stored, clock->now());
    if (!next)
        return TaskResultEntity::domainFailure(TaskMessages::Task::lastOccurrence);
    TaskEntity moved = *next;
    // The same task, moved on: it keeps its identity and its state.
    moved.tasId = stored->tasId;
    moved.tasIsDone = stored->tasIsDone;
    moved.tasCompletedAt = stored->tasCompletedAt;
    return recordedTasks(*this, TaskChangeVerbEnum::edit, {taskId}, [&] { return taskRepository->update(moved); });
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

TaskResultEntity TasksApplication::listOfLists(const QList<QUuid>& taskListIds) const
{
    return taskRepository->listOfLists(taskListIds);
}
