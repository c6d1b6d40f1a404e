#pragma once

#include "tasks/database/TaskListsDatabase.h"
#include "tasks/repositories/TaskListRepository.h"

// Task lists in the store "Tasks.TaskList", with a fresh handle per operation.
class LocalTaskListRepositoryImpl final : public TaskListRepository {
public:
    explicit LocalTaskListRepositoryImpl(TaskListsDatabase database);

    TaskResultEntity create(const TaskListEntity& taskList) override;
    TaskResultEntity update(const TaskListEntity& taskList) override;
    TaskResultEntity delete_(const QUuid& taskListId) override;
    TaskResultEntity find(const QUuid& taskListId) override;
    TaskResultEntity list(const QUuid& projectId) override;
    TaskResultEntity listOfProjects(const QList<QUuid>& projectIds) override;

    TaskListsDatabase database;
};
