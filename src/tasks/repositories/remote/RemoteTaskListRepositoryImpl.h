#pragma once

#include "networking/APIClient.h"
#include "tasks/repositories/TaskListRepository.h"

// Task lists on the backend, under "/v0/task-lists".
class RemoteTaskListRepositoryImpl final : public TaskListRepository {
public:
    explicit RemoteTaskListRepositoryImpl(APIClient client);

    TaskResultEntity create(const TaskListEntity& taskList) override;
    TaskResultEntity update(const TaskListEntity& taskList) override;
    TaskResultEntity delete_(const QUuid& taskListId) override;
    TaskResultEntity find(const QUuid& taskListId) override;
    TaskResultEntity list(const QUuid& projectId) override;

    const APIClient client;
};
