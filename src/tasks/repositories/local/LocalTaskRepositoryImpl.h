#pragma once

#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/TaskRepository.h"

// Tasks in the store "Tasks.Tasks", with a fresh handle per operation.
class LocalTaskRepositoryImpl final : public TaskRepository {
public:
    explicit LocalTaskRepositoryImpl(TasksDatabase database);

    TaskResultEntity create(const TaskEntity& task) override;
    TaskResultEntity update(const TaskEntity& task) override;
    TaskResultEntity setDone(const QUuid& taskId, bool isDone) override;
    TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) override;
    TaskResultEntity delete_(const QUuid& taskId) override;
    TaskResultEntity deleteCompleted(const QUuid& taskListId) override;
    TaskResultEntity find(const QUuid& taskId) override;
    TaskResultEntity list(const QUuid& taskListId) override;
    TaskResultEntity listOfLists(const QList<QUuid>& taskListIds) override;
    // One pass over the table: a list's read is a pass over it too.
    TaskResultEntity listAll() override;
    // Through the due date's index: only the few rows that qualify are read.
    TaskResultEntity listOpenDueBefore(const QDateTime& before) override;
    TaskResultEntity listCompletedBetween(const QDateTime& from, const QDateTime& to) override;

    TasksDatabase database;

private:
    template <typename Change> TaskResultEntity change(const QUuid& taskId, Change&& change);
};
