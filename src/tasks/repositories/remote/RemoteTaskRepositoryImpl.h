#pragma once

#include "networking/APIClient.h"
#include "tasks/repositories/TaskRepository.h"

#include <functional>

// Tasks on the backend, under "/v0/tasks". The backend has no single-field endpoints, so the done
// flag and the tag change by reading the task and writing it back whole.
class RemoteTaskRepositoryImpl final : public TaskRepository {
public:
    explicit RemoteTaskRepositoryImpl(APIClient client);

    TaskResultEntity create(const TaskEntity& task) override;
    TaskResultEntity update(const TaskEntity& task) override;
    TaskResultEntity setDone(const QUuid& taskId, bool isDone) override;
    TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) override;
    TaskResultEntity delete_(const QUuid& taskId) override;
    TaskResultEntity deleteCompleted(const QUuid& taskListId) override;
    TaskResultEntity find(const QUuid& taskId) override;
    TaskResultEntity list(const QUuid& taskListId) override;
    // One request across all lists; a backend that does not know the query refuses it, and the
    // tasks are then read list by list.
    TaskResultEntity listOpenDueBefore(const QDateTime& before) override;
    TaskResultEntity listCompletedBetween(const QDateTime& from, const QDateTime& to) override;

    const APIClient client;

private:
    // find, change, update; the first failure is the answer.
    TaskResultEntity readModifyWrite(const QUuid& taskId, const std::function<void(TaskEntity&)>& change);
};
