#pragma once

#include "platform/ResultEntity.h"
#include "transfer/TasksRepositories.h"
#include "transfer/TasksSnapshot.h"
#include "transfer/TransferControl.h"

#include <QDate>

// Copies everything of one account (projects, lists, tasks, daily tasks, logbook) into another:
// from the local stores into a Google account, or back. Every record keeps its id, parents are
// created before their children, and the copy is then read back from the other side and compared
// with what was sent, field by field. Nothing is deleted on either side. A move that stopped
// halfway (a failure, a cancel, the program quit) is simply run again: records the target already
// has are skipped, so nothing is duplicated.
class AccountMove {
public:
    struct Side {
        TasksRepositories repositories;
        QUuid userId;
    };

    struct Outcome {
        qint64 created = 0;
        qint64 skipped = 0;
        // Records found on the other side exactly as they were sent.
        qint64 verified = 0;

        friend bool operator==(const Outcome&, const Outcome&) = default;
    };

    // Daily tasks are kept per day: those from firstDay to lastDay (local days) are moved.
    AccountMove(Side source, Side target, QDate firstDay, QDate lastDay);

    // data: Outcome. Stops at the first failing call, at a cancel (cancelledMessage), or when the
    // copy read back differs from the source (a message naming the first record that differs).
    ResultEntity run(TransferControl& control) const;

    // The names (titles; the day for a logbook entry) of the records of expected that found lacks
    // or holds differently; found may hold more. Owners are not compared: each side has its own.
    static QStringList differences(const TasksSnapshot& expected, const TasksSnapshot& found);

    static inline const QString cancelledMessage = QStringLiteral("Cancelled");

private:
    Side m_source;
    Side m_target;
    QDate m_firstDay;
    QDate m_lastDay;
};
