#pragma once

#include "backup/StoreBackupEntity.h"
#include "platform/Clock.h"
#include "platform/ResultEntity.h"
#include "storage/RealmConfiguration.h"

#include <QList>

#include <functional>
#include <memory>

// Encrypted copies of the local stores, kept in the folder "Backups" beside them: one folder per
// backup, named after its UTC time, holding a copy of each store file and a "backup.json" that
// records when and why it was made and how many records each copy held.
//
// A copy is taken with SQLite's online backup, so it is one committed state of its store even
// while this or another process writes, and it stays encrypted with the store's own key. A new
// backup only appears once every copy has been opened with the key and passed an integrity check;
// only then are older backups pruned. Restoring copies a backup's pages into the live stores, each
// store in one transaction, after the current state has itself been backed up, so nothing is lost.
class StoreBackups {
public:
    static inline const QString folderName = QStringLiteral("Backups");
    static inline const QString manifestName = QStringLiteral("backup.json");
    static inline const QString dailyReason = QStringLiteral("daily");
    static inline const QString beforeRestoreReason = QStringLiteral("before-restore");
    static inline const QString beforeMigrationReason = QStringLiteral("before-migration");

    // What a store runs before its schema is migrated (RealmConfiguration::beforeMigration): a
    // backup of that store alone, in the backups folder beside it, which pruning never removes.
    static RealmBeforeMigrationBlock backUpBeforeMigration(std::shared_ptr<Clock> clock);

    // stores: the configuration (file and key) of each store to back up; a store whose file does
    // not exist is left out of a backup.
    StoreBackups(QString storesFolder, QList<RealmConfiguration> stores, std::shared_ptr<Clock> clock);

    // Called with each copy's folder after the copies are written and before they are checked.
    void setCopiedHook(std::function<void(const QString& folder)> hook) { m_copiedHook = std::move(hook); }

    QString backupsFolder() const;

    // Makes, checks and records a backup; data: its StoreBackupEntity.
    ResultEntity backUp(const QString& reason);
    // The daily backup, unless one was already made on the clock's local day, then the pruning;
    // data: the new StoreBackupEntity, or nothing when none was due.
    ResultEntity backUpIfDue();
    // Every recorded backup, newest first. Folders without a readable record are not backups.
    QList<StoreBackupEntity> list() const;
    // Removes the daily backups the retention no longer keeps; returns their names.
    QStringList prune();
    // Puts the backup's records back into the live stores after backing up the current state;
    // data: the StoreBackupEntity of that safety backup.
    ResultEntity restore(const QString& name);

private:
    StoreBackupEntity makeBackup(const QString& reason);
    std::optional<StoreBackupEntity> read(const QString& folder) const;
    const RealmConfiguration* storeNamed(const QString& name) const;

    QString m_storesFolder;
    QList<RealmConfiguration> m_stores;
    std::shared_ptr<Clock> m_clock;
    std::function<void(const QString&)> m_copiedHook;
};
