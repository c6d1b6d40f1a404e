#pragma once

#include "platform/ResultEntity.h"
#include "transfer/TasksRepositories.h"
#include "transfer/TasksSnapshot.h"
#include "transfer/TransferControl.h"

#include <QHash>

// Creates a snapshot's records in an account through its repositories, parents before children.
// A record whose id the account already has is skipped and counted, so an import that stopped
// halfway (a failure, a cancel) can simply be run again. Records take the importing user as
// their owner. Where the account gives a created record another id (the backend chooses its
// own), its children follow it.
class TasksImporter {
public:
    struct Outcome {
        qint64 created = 0;
        qint64 skipped = 0;

        friend bool operator==(const Outcome&, const Outcome&) = default;
    };

    // repositoriesOnly: one repository call per record even where the local stores could be
    // written in batches (the path every backend takes).
    TasksImporter(TasksRepositories target, QUuid userId, bool repositoriesOnly = false);

    // data: Outcome. A failure stops the import where it is; what was created stays.
    ResultEntity import(const TasksSnapshot& snapshot, TransferControl& control) const;

    static inline const QString cancelledMessage = QStringLiteral("Cancelled");

private:
    ResultEntity importIntoStores(const TasksSnapshot& snapshot, TransferControl& control) const;

    TasksRepositories m_target;
    QUuid m_userId;
    bool m_repositoriesOnly;
};
