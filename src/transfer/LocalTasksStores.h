#pragma once

#include "platform/ResultEntity.h"
#include "storage/RealmConfiguration.h"
#include "transfer/TasksRepositories.h"
#include "transfer/TasksSnapshot.h"
#include "transfer/TransferControl.h"

#include <QDate>

#include <memory>
#include <optional>

class RemindingTaskRepository;

// The fast way through the local stores for whole-account transfers: one read of each store, and
// imports written in one transaction per store and batch, where the repositories would open the
// store and commit once per record. Gives the same records in the same order as reading through
// the repositories.
class LocalTasksStores {
public:
    // The stores behind the repositories when all five are the local ones, seen through the
    // reminders kept over the tasks' store.
    static std::optional<LocalTasksStores> of(const TasksRepositories& repositories);

    // data: TasksSnapshot; see TasksSnapshotReader::Scope.
    ResultEntity read(
        const QUuid& userId, const std::optional<QUuid>& projectId, const QDate& firstDay, const QDate& lastDay) const;

    struct Written {
        qint64 created = 0;
        qint64 skipped = 0;
    };
    // Adds the records whose ids the stores do not hold yet, in batches of batchSize; data:
    // Written. Records must already carry their final owner and parent ids. The reminders of the
    // tasks' lists then follow what the store holds.
    ResultEntity write(const TasksSnapshot& snapshot, TransferControl& control, const QString& cancelledMessage) const;

    // Each batch is one transaction: every commit writes again the pages of the key indexes the
    // batch touched, all over them as records come in random key order, so fewer commits are
    // much faster. Progress and cancelling go by statement within a batch.
    static constexpr qsizetype batchSize = 50000;

private:
    RealmConfiguration m_projects, m_taskLists, m_tasks, m_dailyTasks, m_bitacora;
    std::shared_ptr<RemindingTaskRepository> m_reminding;
};
