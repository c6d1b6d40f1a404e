#pragma once

#include "tasks/reminders/TaskReminderScheduler.h"
#include "tasks/repositories/TaskRepository.h"

#include <memory>

// A task store that keeps the tasks' reminders in step with it: every change that succeeds arms,
// moves or drops the task's reminder, and every read of whole lists re-arms what changed
// elsewhere (another device, a restart) and drops reminders of tasks that are gone. Use cases,
// undo and redo all write through it, so none of them has to think of reminders.
class RemindingTaskRepository final : public TaskRepository {
public:
    RemindingTaskRepository(std::shared_ptr<TaskRepository> store, TaskReminderScheduler reminders);

    TaskResultEntity create(const TaskEntity& task) override;
    TaskResultEntity update(const TaskEntity& task) override;
    TaskResultEntity setDone(const QUuid& taskId, bool isDone) override;
    TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) override;
    TaskResultEntity delete_(const QUuid& taskId) override;
    TaskResultEntity deleteCompleted(const QUuid& taskListId) override;
    TaskResultEntity find(const QUuid& taskId) override;
    TaskResultEntity list(const QUuid& taskListId) override;
    TaskResultEntity listOfLists(const QList<QUuid>& taskListIds) override;
    TaskResultEntity listAll() override;

    const std::shared_ptr<TaskRepository>& store() const { return m_store; }

private:
    // Follows the task the store answered with, or fallback when it answered none.
    void follow(const TaskResultEntity& result, const TaskEntity* fallback) const;
    void reconcile(const TaskResultEntity& result, const std::optional<QList<QUuid>>& listIds) const;

    std::shared_ptr<TaskRepository> m_store;
    TaskReminderScheduler m_reminders;
};
