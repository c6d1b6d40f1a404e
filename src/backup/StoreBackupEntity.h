#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>

// One backup of the local stores: a folder holding an encrypted copy of each store, all taken
// within one run, and what the copies held when they were checked.
struct StoreBackupEntity {
    // The folder's name, which is also the backup's identity: its UTC time, "20261122T170658Z".
    QString name;
    QString folder;
    QDateTime createdAt;
    // Why it was made: StoreBackups::dailyReason, beforeRestoreReason or beforeMigrationReason.
    QString reason;
    // Records per store name.
    QMap<QString, qint64> counts;

    qint64 totalCount() const
    {
        qint64 total = 0;
        for (const qint64 count : counts)
            total += count;
        return total;
    }

    friend bool operator==(const StoreBackupEntity&, const StoreBackupEntity&) = default;
};
