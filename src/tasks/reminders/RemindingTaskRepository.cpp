#include "tasks/reminders/RemindingTaskRepository.h"

RemindingTaskRepository::RemindingTaskRepository(std::shared_ptr<TaskRepository> store, TaskReminderScheduler reminders)
    : m_store(std::move(store))
    , m_reminders(std::move(reminders))
{
}

void RemindingTaskRepository::follow(const TaskResultEntity& result, const TaskEntity* fallback) const
{
    if (!result.result)
        return;
    if (const TaskEntity* stored = result.dataAs<TaskEntity>())
        m_reminders.update(*stored);
    else if (fallback)
        m_reminders.update(*fallback);
}

void RemindingTaskRepository::reconcile(
    const TaskResultEntity& result, const std::optional<QList<QUuid>>& listIds) const
{
    if (const auto* tasks = result.result ? result.dataAs<QList<TaskEntity>>() : nullptr)
        m_reminders.reconcile(*tasks, listIds);
}

TaskResultEntity RemindingTaskRepository::create(const TaskEntity& task)
{
    TaskResultEntity created = m_store->create(task);
    follow(created, &task);
    return created;
}

TaskResultEntity RemindingTaskRepository::update(const TaskEntity& task)
{
    TaskResultEntity updated = m_store->update(task);
    follow(updated, &task);
    return updated;
}

TaskResultEntity RemindingTaskRepository::setDone(const QUuid& taskId, bool isDone)
{
    TaskResultEntity changed = m_store->setDone(taskId, isDone);
    if (changed.result && !changed.dataAs<TaskEntity>()) {
        // A store that answers without the task: a done one needs no reminder, a reopened one
        // is read back to learn when it is due.
        if (isDone)
            m_reminders.drop(taskId);
        else
            follow(m_store->find(taskId), nullptr);
        return changed;
    }
    follow(changed, nullptr);
    return changed;
}

TaskResultEntity RemindingTaskRepository::setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag)
{
    return m_store->setTag(taskId, tag);
}

TaskResultEntity RemindingTaskRepository::delete_(const QUuid& taskId)
{
    TaskResultEntity deleted = m_store->delete_(taskId);
    if (deleted.result)
        m_reminders.drop(taskId);
    return deleted;
}

TaskResultEntity RemindingTaskRepository::deleteCompleted(const QUuid& taskListId)
{
    // Done tasks have no reminder left: their reminders went when they were marked done.
    return m_store->deleteCompleted(taskListId);
}

TaskResultEntity RemindingTaskRepository::find(const QUuid& taskId)
{
    return m_store->find(taskId);
}

TaskResultEntity RemindingTaskRepository::list(const QUuid& taskListId)
{
    TaskResultEntity listed = m_store->list(taskListId);
    reconcile(listed, QList<QUuid> {taskListId});
    return listed;
}

TaskResultEntity RemindingTaskRepository::listOfLists(const QList<QUuid>& taskListIds)
{
    TaskResultEntity listed = m_store->listOfLists(taskListIds);
    reconcile(listed, taskListIds);
    return listed;
}

TaskResultEntity RemindingTaskRepository::listAll()
{
    TaskResultEntity listed = m_store->listAll();
    reconcile(listed, std::nullopt);
    return listed;
}
