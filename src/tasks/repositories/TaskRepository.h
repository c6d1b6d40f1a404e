#pragma once

#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>

// Where tasks are kept: the encrypted local store or the backend. The done flag and the
// Eisenhower tag change only through their single-field operations.
class TaskRepository {
public:
    virtual ~TaskRepository() = default;

    // data: the stored TaskEntity.
    virtual TaskResultEntity create(const TaskEntity& task) = 0;
    // data: the updated TaskEntity.
    virtual TaskResultEntity update(const TaskEntity& task) = 0;
    // Marks the task done (true) or not done (false); data: the updated TaskEntity.
    virtual TaskResultEntity setDone(const QUuid& taskId, bool isDone) = 0;
    // Sets the tag, or clears it when tag is empty; data: the updated TaskEntity.
    virtual TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) = 0;
    // No payload.
    virtual TaskResultEntity delete_(const QUuid& taskId) = 0;
    // Deletes every done task of the list; no payload.
    virtual TaskResultEntity deleteCompleted(const QUuid& taskListId) = 0;
    // data: the TaskEntity.
    virtual TaskResultEntity find(const QUuid& taskId) = 0;
    // data: QList<TaskEntity>, the list's tasks in the store's own order.
    virtual TaskResultEntity list(const QUuid& taskListId) = 0;
    // data: QList<TaskEntity>, the tasks of all those lists, each list's in the store's own order.
    // A store that can answer for many lists at once does so in one read.
    virtual TaskResultEntity listOfLists(const QList<QUuid>& taskListIds)
    {
        QList<TaskEntity> all;
        for (const QUuid& taskListId : taskListIds) {
            TaskResultEntity one = list(taskListId);
            if (!one.result)
                return one;
            if (const auto* tasks = one.dataAs<QList<TaskEntity>>())
                all.append(*tasks);
        }
        return TaskResultEntity::success(all);
    }
    // data: QList<TaskEntity>, every task of every list in one read, for a store that can do
    // that much faster than list by list; the others fail, and are read list by list.
    virtual TaskResultEntity listAll()
    {
        return TaskResultEntity::infrastructureFailure(QStringLiteral("read list by list"));
    }

    // data: QList<TaskEntity>, every open task due before that instant, for a store that can
    // find them without reading every list; the others fail, and are read list by list.
    virtual TaskResultEntity listOpenDueBefore(const QDateTime& before)
    {
        Q_UNUSED(before);
        return TaskResultEntity::infrastructureFailure(QStringLiteral("read list by list"));
    }
    // data: QList<TaskEntity>, every done task completed in [from, to), on the same terms.
    virtual TaskResultEntity listCompletedBetween(const QDateTime& from, const QDateTime& to)
    {
        Q_UNUSED(from);
        Q_UNUSED(to);
        return TaskResultEntity::infrastructureFailure(QStringLiteral("read list by list"));
    }

    TaskResultEntity markDone(const QUuid& taskId) { return setDone(taskId, true); }
    TaskResultEntity markNotDone(const QUuid& taskId) { return setDone(taskId, false); }
};
