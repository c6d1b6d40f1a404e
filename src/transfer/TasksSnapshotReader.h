#pragma once

#include "platform/ResultEntity.h"
#include "transfer/TasksRepositories.h"
#include "transfer/TasksSnapshot.h"
#include "transfer/TransferControl.h"

#include <QDate>

#include <optional>

// Reads an account's data through its repositories. Daily tasks are kept per day, so they are
// read day by day over a range of dates.
class TasksSnapshotReader {
public:
    struct Scope {
        QUuid userId;
        // Only this project (its lists, tasks and logbook; no daily tasks); all when empty.
        std::optional<QUuid> projectId;
        // The days whose daily tasks are read (local days, both included); none when invalid.
        QDate firstDay;
        QDate lastDay;
    };

    // repositoriesOnly: go through the repositories even where the local stores could be read
    // whole (the path every backend takes).
    explicit TasksSnapshotReader(TasksRepositories repositories, bool repositoriesOnly = false);

    // data: TasksSnapshot. A cancelled read fails with cancelledMessage.
    ResultEntity read(const Scope& scope, TransferControl& control) const;

    static inline const QString cancelledMessage = QStringLiteral("Cancelled");

private:
    TasksRepositories m_repositories;
    bool m_repositoriesOnly;
};
