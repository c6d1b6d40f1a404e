#include "storage/RealmDatabaseOpener.h"

#include "platform/Logging.h"
#include "platform/NotificationCenter.h"
#include "storage/RealmStoreSalvage.h"
#include "storage/RealmStoreSetAside.h"
#include "storage/StoreFolderLock.h"

#include <QFileInfo>

namespace {

// Damage found inside an operation may lie anywhere in the file; a store that another process
// has already replaced passes this check.
bool isWhole(RealmDatabase& database)
{
    const QList<RealmRow> rows = database.query(QStringLiteral("PRAGMA quick_check"));
    return rows.size() == 1 && rows.constFirst().constFirst().toString() == QStringLiteral("ok");
}

void announce(const QString& file, const QString& cause, const std::optional<QString>& movedTo, int kept)
{
    if (!movedTo)
        return;
    const QString store = QFileInfo(file).completeBaseName();
    const QString line = QStringLiteral("The store %1 could not be read (%2); it was moved to %3 and started anew "
                                        "with the %4 records that could still be read")
                             .arg(store, cause, *movedTo)
                             .arg(kept);
    qCWarning(lcStorage).noquote() << line;
    NotificationCenter::defaultCenter().post(NotificationName::storeSetAside, line);
}

} // namespace

ResultEntity RealmDatabaseOpener::open(const RealmConfiguration& configuration)
{
    try {
        return ResultEntity::success(RealmDatabase::open(configuration));
    } catch (const RealmError& error) {
        if (error.kind() == RealmError::Kind::busy || error.kind() == RealmError::Kind::newerVersion)
            return ResultEntity::databaseFailure(error.localizedDescription());
        return recover(configuration, error.localizedDescription(), false);
    }
}

ResultEntity RealmDatabaseOpener::recoverDamaged(const RealmConfiguration& configuration, const QString& damage)
{
    return recover(configuration, damage, true);
}

ResultEntity RealmDatabaseOpener::recover(
    const RealmConfiguration& configuration, const QString& firstError, bool checkWhole)
{
    const QString file = configuration.files().constFirst();
    qCWarning(lcStorage) << "store" << file << "unreadable:" << firstError;
    try {
        const StoreFolderLock lock(StoreFolderLock::folderOf(file));
        // Whoever held the lock before may have set the file aside and started it anew already.
        try {
            const auto database = RealmDatabase::open(configuration);
            if (!checkWhole || isWhole(*database))
                return ResultEntity::success(database);
        } catch (const RealmError& error) {
            if (error.kind() == RealmError::Kind::busy || error.kind() == RealmError::Kind::newerVersion)
                return ResultEntity::databaseFailure(error.localizedDescription());
        }

        std::optional<QString> movedTo;
        try {
            movedTo = RealmStoreSetAside::move(file);
        } catch (const RealmError& error) {
            return ResultEntity::databaseFailure(QStringLiteral("Open failed (%1) and setting the file aside also "
                                                                "failed: %2")
                                                     .arg(firstError, error.localizedDescription()));
        }

        try {
            const auto database = RealmDatabase::open(configuration);
            int kept = 0;
            if (movedTo) {
                RealmConfiguration damaged = configuration;
                damaged.fileURL = *movedTo;
                kept = RealmStoreSalvage::copyReadable(damaged, *database);
                RealmStoreSetAside::prune(file);
            }
            announce(file, firstError, movedTo, kept);
            return ResultEntity::success(database);
        } catch (const RealmError& error) {
            return ResultEntity::databaseFailure(
                QStringLiteral("Open failed (%1); recreated the file but it still failed to open: %2")
                    .arg(firstError, error.localizedDescription()));
        }
    } catch (const RealmError& error) {
        return ResultEntity::databaseFailure(
            QStringLiteral("Open failed (%1): %2").arg(firstError, error.localizedDescription()));
    }
}
