#pragma once

#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// Where task lists are kept: the encrypted local store or the backend.
class TaskListRepository {
public:
    virtual ~TaskListRepository() = default;

    // data: the stored TaskListEntity.
    virtual TaskResultEntity create(const TaskListEntity& taskList) = 0;
    // data: the updated TaskListEntity.
    virtual TaskResultEntity update(const TaskListEntity& taskList) = 0;
    // No payload. The list's tasks are left alone.
    virtual TaskResultEntity delete_(const QUuid& taskListId) = 0;
    // data: the TaskListEntity.
    virtual TaskResultEntity find(const QUuid& taskListId) = 0;
    // data: QList<TaskListEntity>, the project's lists in the store's own order.
    virtual TaskResultEntity list(const QUuid& projectId) = 0;
};
