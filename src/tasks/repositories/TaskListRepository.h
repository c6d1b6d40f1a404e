#pragma once

#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>

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
    // data: QList<TaskListEntity>, the lists of all those projects, each project's in the store's
    // own order. A store that can answer for many projects at once does so in one read.
    virtual TaskResultEntity listOfProjects(const QList<QUuid>& projectIds)
    {
        QList<TaskListEntity> all;
        for (const QUuid& projectId : projectIds) {
            TaskResultEntity one = list(projectId);
            if (!one.result)
                return one;
            if (const auto* lists = one.dataAs<QList<TaskListEntity>>())
                all.append(*lists);
        }
        return TaskResultEntity::success(all);
    }
};
