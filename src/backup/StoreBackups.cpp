#include "backup/StoreBackups.h"

#include "backup/BackupRetention.h"
#include "backup/StoreCopy.h"
#include "platform/Logging.h"
#include "storage/RealmError.h"
#include "storage/StoreFolderLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace {

const QString incompletePrefix = QStringLiteral(".incomplete-");
const QString nameFormat = QStringLiteral("yyyyMMdd'T'HHmmss'Z'");

QString storeNameOf(const RealmConfiguration& store)
{
    return QFileInfo(store.files().constFirst()).completeBaseName();
}

QString fileNameOf(const RealmConfiguration& store)
{
    return QFileInfo(store.files().constFirst()).fileName();
}

void writeManifest(const StoreBackupEntity& backup, const QString& folder)
{
    QJsonObject counts;
    for (auto it = backup.counts.cbegin(); it != backup.counts.cend(); ++it)
        counts.insert(it.key(), it.value());
    const QJsonObject manifest {{QStringLiteral("createdAt"), backup.createdAt.toString(Qt::ISODateWithMs)},
        {QStringLiteral("reason"), backup.reason}, {QStringLiteral("counts"), counts}};
    QSaveFile file(QDir(folder).filePath(StoreBackups::manifestName));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(manifest).toJson()) < 0 || !file.commit())
        throw RealmError(QStringLiteral("Unable to write the backup record in '%1'").arg(folder));
}

} // namespace

StoreBackups::StoreBackups(QString storesFolder, QList<RealmConfiguration> stores, std::shared_ptr<Clock> clock)
    : m_storesFolder(std::move(storesFolder))
    , m_stores(std::move(stores))
    , m_clock(std::move(clock))
{
}

RealmBeforeMigrationBlock StoreBackups::backUpBeforeMigration(std::shared_ptr<Clock> clock)
{
    return [clock](const RealmConfiguration& store, quint64) {
        RealmConfiguration copied = store;
        // The copy must not start another migration of its own.
        copied.beforeMigration = nullptr;
        copied.migrationWatch = nullptr;
        StoreBackups backups(QFileInfo(store.files().constFirst()).absolutePath(), {copied}, clock);
        const ResultEntity made = backups.backUp(beforeMigrationReason);
        if (!made.result)
            throw RealmError(made.firstMessage().value_or(QString()));
    };
}

QString StoreBackups::backupsFolder() const
{
    return QDir(m_storesFolder).filePath(folderName);
}

ResultEntity StoreBackups::backUp(const QString& reason)
{
    try {
        return ResultEntity::success(makeBackup(reason));
    } catch (const RealmError& error) {
        qCWarning(lcStorage) << "backup failed:" << error.localizedDescription();
        return ResultEntity::infrastructureFailure(error.localizedDescription());
    }
}

StoreBackupEntity StoreBackups::makeBackup(const QString& reason)
{
    if (!QDir().mkpath(backupsFolder()))
        throw RealmError(QStringLiteral("Unable to create the backups folder '%1'").arg(backupsFolder()));
    QFile::setPermissions(backupsFolder(), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);

    StoreBackupEntity backup;
    backup.createdAt = m_clock->now().toUTC();
    backup.reason = reason;
    // Two backups within one second get distinct names.
    while (QFileInfo::exists(QDir(backupsFolder()).filePath(backup.createdAt.toString(nameFormat))))
        backup.createdAt = backup.createdAt.addSecs(1);
    backup.name = backup.createdAt.toString(nameFormat);
    backup.folder = QDir(backupsFolder()).filePath(backup.name);

    // Built under a name list() ignores, so a backup that fails halfway never looks like one.
    const QString building = QDir(backupsFolder()).filePath(incompletePrefix + backup.name);
    QDir(building).removeRecursively();
    if (!QDir().mkdir(building)
        || !QFile::setPermissions(building, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner))
        throw RealmError(QStringLiteral("Unable to create the backup folder '%1'").arg(building));
    try {
        for (const RealmConfiguration& store : m_stores) {
            if (QFileInfo::exists(store.files().constFirst()))
                StoreCopy::copyStore(store, QDir(building).filePath(fileNameOf(store)));
        }
        if (m_copiedHook)
            m_copiedHook(building);
        for (const RealmConfiguration& store : m_stores) {
            const QString copy = QDir(building).filePath(fileNameOf(store));
            if (QFileInfo::exists(copy))
                backup.counts.insert(storeNameOf(store), StoreCopy::checkedCount(copy, store.encryptionKey));
        }
        writeManifest(backup, building);
        if (!QDir().rename(building, backup.folder))
            throw RealmError(QStringLiteral("Unable to put the backup '%1' in place").arg(backup.folder));
    } catch (...) {
        // Only copies live here; the stores themselves are untouched.
        QDir(building).removeRecursively();
        throw;
    }
    qCInfo(lcStorage) << "backed up the stores to" << backup.folder << "(" << backup.totalCount() << "records )";
    return backup;
}

ResultEntity StoreBackups::backUpIfDue()
{
    const QDate today = m_clock->now().toLocalTime().date();
    const QList<StoreBackupEntity> existing = list();
    const bool done = std::any_of(existing.cbegin(), existing.cend(), [&](const StoreBackupEntity& backup) {
        return backup.reason == dailyReason && backup.createdAt.toLocalTime().date() == today;
    });
    if (done)
        return ResultEntity::success();
    ResultEntity made = backUp(dailyReason);
    // Nothing is pruned unless the new backup was checked and recorded.
    if (made.result)
        prune();
    return made;
}

std::optional<StoreBackupEntity> StoreBackups::read(const QString& folder) const
{
    QFile file(QDir(folder).filePath(manifestName));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QJsonObject manifest = QJsonDocument::fromJson(file.readAll()).object();
    StoreBackupEntity backup;
    backup.name = QFileInfo(folder).fileName();
    backup.folder = folder;
    backup.createdAt = QDateTime::fromString(manifest.value(QStringLiteral("createdAt")).toString(), Qt::ISODateWithMs);
    backup.reason = manifest.value(QStringLiteral("reason")).toString();
    const QJsonObject counts = manifest.value(QStringLiteral("counts")).toObject();
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it)
        backup.counts.insert(it.key(), it.value().toInteger());
    if (!backup.createdAt.isValid())
        return std::nullopt;
    return backup;
}

QList<StoreBackupEntity> StoreBackups::list() const
{
    QList<StoreBackupEntity> backups;
    const QDir folder(backupsFolder());
    for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (name.startsWith(QLatin1Char('.')))
            continue;
        if (std::optional<StoreBackupEntity> backup = read(folder.filePath(name)))
            backups.append(*backup);
    }
    std::sort(backups.begin(), backups.end(),
        [](const StoreBackupEntity& a, const StoreBackupEntity& b) { return a.createdAt > b.createdAt; });
    return backups;
}

QStringList StoreBackups::prune()
{
    QStringList removed;
    for (const QString& name : BackupRetention::expired(list())) {
        if (QDir(QDir(backupsFolder()).filePath(name)).removeRecursively())
            removed.append(name);
    }
    removed.sort();
    return removed;
}

const RealmConfiguration* StoreBackups::storeNamed(const QString& name) const
{
    const auto found = std::find_if(m_stores.cbegin(), m_stores.cend(),
        [&](const RealmConfiguration& store) { return storeNameOf(store) == name; });
    return found == m_stores.cend() ? nullptr : &*found;
}

ResultEntity StoreBackups::restore(const QString& name)
{
    const std::optional<StoreBackupEntity> chosen = read(QDir(backupsFolder()).filePath(name));
    if (!chosen)
        return ResultEntity::applicationFailure(QStringLiteral("There is no backup named '%1'").arg(name));
    try {
        // One restore at a time across processes; another process's ordinary reads and writes
        // wait on each store's own lock while its pages are replaced.
        const StoreFolderLock lock(m_storesFolder);
        // The backup is checked whole before anything is replaced.
        for (auto it = chosen->counts.cbegin(); it != chosen->counts.cend(); ++it) {
            const RealmConfiguration* store = storeNamed(it.key());
            if (!store)
                continue;
            const QString copy = QDir(chosen->folder).filePath(fileNameOf(*store));
            if (StoreCopy::checkedCount(copy, store->encryptionKey) != it.value()) {
                throw RealmError(QStringLiteral("The backup '%1' no longer holds what it held").arg(name),
                    RealmError::Kind::damaged);
            }
        }
        // The state being replaced is kept as a backup of its own, which pruning never removes.
        const StoreBackupEntity safety = makeBackup(beforeRestoreReason);
        for (auto it = chosen->counts.cbegin(); it != chosen->counts.cend(); ++it) {
            if (const RealmConfiguration* store = storeNamed(it.key()))
                StoreCopy::replaceStore(QDir(chosen->folder).filePath(fileNameOf(*store)), *store);
        }
        qCInfo(lcStorage) << "restored the stores from" << chosen->folder << "; the previous state is in"
                          << safety.folder;
        return ResultEntity::success(safety);
    } catch (const RealmError& error) {
        qCWarning(lcStorage) << "restore failed:" << error.localizedDescription();
        return ResultEntity::infrastructureFailure(error.localizedDescription());
    }
}
