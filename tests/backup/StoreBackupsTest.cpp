#include "backup/StoreBackups.h"

#include "backup/BackupRetention.h"
#include "backup/LocalStoreBackups.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace {

const QDateTime noon(QDate(2026, 11, 25), QTime(12, 0));

RealmConfiguration storeIn(
    const QTemporaryDir& folder, const QString& name, const QList<RealmObjectType>& types, char keyByte)
{
    RealmConfiguration configuration;
    configuration.fileURL = folder.filePath(name + QStringLiteral(".realm"));
    configuration.encryptionKey = QByteArray(64, keyByte);
    configuration.schemaVersion = 1;
    configuration.objectTypes = types;
    return configuration;
}

QList<TaskEntity> tasksIn(const RealmConfiguration& store)
{
    const auto database = RealmDatabase::open(store);
    QList<TaskEntity> tasks;
    for (const TaskRealmModel& record : RealmTable<TaskRealmModel>(*database).objects(QStringLiteral("1"), {}))
        tasks.append(record.toEntity());
    return tasks;
}

RealmConfiguration copyOf(const RealmConfiguration& store, const StoreBackupEntity& backup)
{
    RealmConfiguration copy = store;
    copy.fileURL = QDir(backup.folder).filePath(QFileInfo(*store.fileURL).fileName());
    return copy;
}

// Overwrites the middle of the file's second page: a copy damaged on its way to the disk.
void damage(const QString& file)
{
    QFile data(file);
    QVERIFY(data.open(QIODevice::ReadWrite));
    QVERIFY(data.size() > 4096 + 2048);
    data.seek(4096 + 1024);
    data.write(QByteArray(512, '\x5a'));
}

} // namespace

class StoreBackupsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<SettableClock> clock;
    RealmConfiguration projects;
    RealmConfiguration tasks;
    QUuid list = QUuid::createUuid();

    StoreBackups backups() const { return StoreBackups(folder->path(), {projects, tasks}, clock); }

    void addTasks(int count, const QString& prefix)
    {
        LocalTaskRepositoryImpl repository(TasksDatabase {tasks});
        for (int i = 0; i < count; ++i) {
            QVERIFY(repository.create({.prjId = list, .talId = list, .tasTitle = prefix + QString::number(i)}).result);
        }
    }

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        clock = std::make_shared<SettableClock>(noon);
        projects = storeIn(*folder, ProjectsDatabaseSchema::name, ProjectsDatabaseSchema::objectTypes(), '\x11');
        tasks = storeIn(*folder, TasksDatabaseSchema::name, TasksDatabaseSchema::objectTypes(), '\x22');
        LocalProjectRepositoryImpl(ProjectsDatabase {projects}).create({.prjName = QStringLiteral("Home")});
        addTasks(200, QStringLiteral("before "));
    }

    // A copy taken while another thread keeps adding tasks is one committed state: it opens with
    // the store's key, passes its check, holds a prefix of what the store holds, and stays
    // encrypted on disk.
    void backupWhileAnotherThreadWritesIsConsistent()
    {
        std::atomic<bool> stop = false;
        std::atomic<int> written = 0;
        std::thread writer([&] {
            LocalTaskRepositoryImpl repository(TasksDatabase {tasks});
            while (!stop) {
                if (repository.create({.prjId = list, .talId = list, .tasTitle = QStringLiteral("during")}).result)
                    ++written;
            }
        });
        while (written < 20)
            std::this_thread::yield();
        StoreBackups store = backups();
        const ResultEntity made = store.backUp(StoreBackups::dailyReason);
        const int atBackup = written;
        while (written < atBackup + 5)
            std::this_thread::yield();
        stop = true;
        writer.join();
        QVERIFY2(made.result, qPrintable(made.firstMessage().value_or(QString())));
        const StoreBackupEntity backup = *made.dataAs<StoreBackupEntity>();

        const QList<TaskEntity> copied = tasksIn(copyOf(tasks, backup));
        const QList<TaskEntity> live = tasksIn(tasks);
        QCOMPARE(backup.counts.value(TasksDatabaseSchema::name), copied.size());
        QCOMPARE(backup.counts.value(ProjectsDatabaseSchema::name), 1);
        QVERIFY(copied.size() >= 220);
        QVERIFY(live.size() > copied.size());
        QCOMPARE(live.size(), 200 + written);
        QCOMPARE(live.mid(0, copied.size()), copied);

        QFile file(copyOf(tasks, backup).files().constFirst());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(!bytes.startsWith("SQLite format 3"));
        QVERIFY(!bytes.contains("before 1"));
        QCOMPARE(QFile(backup.folder).permissions() & (QFileDevice::ReadOther | QFileDevice::ReadGroup),
            QFileDevice::Permissions());
        QCOMPARE(store.list(), QList<StoreBackupEntity> {backup});
    }

    // One backup a day, whatever the number of starts; 7 daily and 4 weekly ones are kept, and
    // backups made before a restore are never pruned.
    void retentionKeepsSevenDaysAndFourWeeks()
    {
        StoreBackups store = backups();
        clock->set(QDateTime(QDate(2026, 9, 1), QTime(10, 0)));
        QVERIFY(store.backUp(StoreBackups::beforeRestoreReason).result);
        for (QDate day(2026, 9, 20); day <= QDate(2026, 11, 25); day = day.addDays(1)) {
            clock->set(QDateTime(day, QTime(9, 0)));
            QVERIFY(store.backUpIfDue().result);
            clock->set(QDateTime(day, QTime(18, 0)));
            const ResultEntity second = store.backUpIfDue();
            QVERIFY(second.result);
            QVERIFY(!second.data.has_value());
        }
        QList<QDate> kept;
        for (const StoreBackupEntity& backup : store.list())
            kept.prepend(backup.createdAt.toLocalTime().date());
        // Wednesday 25 November: the last 7 days, and the newest of the weeks of 2, 9 and 16
        // November (the week of 23 November is already kept through its days).
        const QList<QDate> expected {QDate(2026, 9, 1), QDate(2026, 11, 8), QDate(2026, 11, 15), QDate(2026, 11, 19),
            QDate(2026, 11, 20), QDate(2026, 11, 21), QDate(2026, 11, 22), QDate(2026, 11, 23), QDate(2026, 11, 24),
            QDate(2026, 11, 25)};
        QCOMPARE(kept, expected);
        QCOMPARE(QDir(store.backupsFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden).size(),
            expected.size());
    }

    // A copy that does not pass its check is no backup: it is reported, nothing is pruned, and
    // no half-made folder is left to be listed or restored.
    void damagedBackupIsDetectedBeforePruning()
    {
        StoreBackups store = backups();
        for (int day = 20; day >= 1; --day) {
            clock->set(noon.addDays(-day));
            QVERIFY(store.backUp(StoreBackups::dailyReason).result);
        }
        const QList<StoreBackupEntity> before = store.list();
        QCOMPARE(before.size(), 20);

        clock->set(noon);
        store.setCopiedHook(
            [&](const QString& building) { damage(QDir(building).filePath(QFileInfo(*tasks.fileURL).fileName())); });
        const ResultEntity made = store.backUpIfDue();
        QVERIFY(!made.result);
        QVERIFY(made.infrastructureMessage.has_value());
        QCOMPARE(store.list(), before);
        QCOMPARE(QDir(store.backupsFolder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden).size(), 20);

        store.setCopiedHook({});
        QVERIFY(store.backUpIfDue().result);
        QCOMPARE(store.list().size(), 9);
    }

    // Restoring puts back exactly what the backup held, keeps the replaced state as a backup of
    // its own, and refuses a backup that was damaged after it was made.
    void restoreRoundTrip()
    {
        StoreBackups store = backups();
        const StoreBackupEntity backup = *store.backUp(StoreBackups::dailyReason).dataAs<StoreBackupEntity>();
        const QList<TaskEntity> original = tasksIn(tasks);

        LocalTaskRepositoryImpl repository(TasksDatabase {tasks});
        QVERIFY(repository.delete_(original.at(3).tasId).result);
        QVERIFY(repository.setDone(original.at(5).tasId, true).result);
        addTasks(7, QStringLiteral("after "));
        const QList<TaskEntity> changed = tasksIn(tasks);

        clock->advance(60);
        const ResultEntity restored = store.restore(backup.name);
        QVERIFY2(restored.result, qPrintable(restored.firstMessage().value_or(QString())));
        QCOMPARE(tasksIn(tasks), original);
        const StoreBackupEntity safety = *restored.dataAs<StoreBackupEntity>();
        QCOMPARE(safety.reason, StoreBackups::beforeRestoreReason);
        QCOMPARE(tasksIn(copyOf(tasks, safety)), changed);
        // The program's own repositories carry on with the restored store.
        QVERIFY(repository.create({.prjId = list, .talId = list, .tasTitle = QStringLiteral("next")}).result);

        // And back again: restoring the safety copy undoes the restore.
        clock->advance(60);
        QVERIFY(store.restore(safety.name).result);
        QCOMPARE(tasksIn(tasks), changed);

        damage(copyOf(tasks, backup).files().constFirst());
        const ResultEntity refused = store.restore(backup.name);
        QVERIFY(!refused.result);
        QCOMPARE(tasksIn(tasks), changed);
        QVERIFY(!store.restore(QStringLiteral("20200101T000000Z")).result);
    }

    // A restore while another thread keeps writing leaves a sound store holding the whole backup.
    void restoreWhileAnotherThreadWrites()
    {
        StoreBackups store = backups();
        const StoreBackupEntity backup = *store.backUp(StoreBackups::dailyReason).dataAs<StoreBackupEntity>();
        const QList<TaskEntity> original = tasksIn(tasks);
        std::atomic<bool> stop = false;
        std::atomic<int> written = 0;
        std::thread writer([&] {
            LocalTaskRepositoryImpl repository(TasksDatabase {tasks});
            while (!stop) {
                if (repository.create({.prjId = list, .talId = list, .tasTitle = QStringLiteral("racing")}).result)
                    ++written;
            }
        });
        while (written < 10)
            std::this_thread::yield();
        clock->advance(60);
        const ResultEntity restored = store.restore(backup.name);
        const int atRestore = written;
        while (written < atRestore + 10)
            std::this_thread::yield();
        stop = true;
        writer.join();
        QVERIFY2(restored.result, qPrintable(restored.firstMessage().value_or(QString())));
        const QList<TaskEntity> live = tasksIn(tasks);
        QCOMPARE(live.mid(0, original.size()), original);
        for (const TaskEntity& task : live.mid(original.size()))
            QCOMPARE(task.tasTitle, QStringLiteral("racing"));
        QVERIFY(live.size() >= original.size() + 10);
    }

    // A store about to move to a newer schema is copied first, as it was; the copy is listed
    // and survives pruning.
    void storeIsBackedUpBeforeItsSchemaMigrates()
    {
        const QList<TaskEntity> before = tasksIn(tasks);
        RealmConfiguration newer = tasks;
        newer.schemaVersion = 2;
        newer.migrationBlock = [](RealmDatabase& database, quint64) {
            database.execute(QStringLiteral("DELETE FROM TaskRealmModel WHERE tasTitle LIKE 'before 1%'"));
        };
        newer.beforeMigration = StoreBackups::backUpBeforeMigration(clock);
        RealmDatabase::open(newer);
        QCOMPARE(tasksIn(newer).size(), before.size() - 111);

        StoreBackups store = backups();
        const QList<StoreBackupEntity> listed = store.list();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.constFirst().reason, StoreBackups::beforeMigrationReason);
        QCOMPARE(listed.constFirst().counts, (QMap<QString, qint64> {{TasksDatabaseSchema::name, before.size()}}));
        QCOMPARE(tasksIn(copyOf(tasks, listed.constFirst())), before);
        // Opening again migrates nothing and copies nothing.
        RealmDatabase::open(newer);
        QCOMPARE(store.list().size(), 1);
        clock->advance(86400 * 60);
        QVERIFY(store.backUpIfDue().result);
        QCOMPARE(store.list().size(), 2);
    }

    // The program's own stores, keyed from the session's keyring: only stores that exist are
    // copied, and no key is made for one that does not.
    void localStoresAreBackedUpWithTheirKeychainKeys()
    {
        auto keychain = std::make_shared<SecretServiceKeychain>();
        RealmConfiguration defaults;
        defaults.fileURL = folder->filePath(QStringLiteral("default.realm"));
        const RealmEncryptedConfigurationFactory factory(keychain, std::make_shared<SystemSecureRandom>(), defaults);
        for (const QString& name : LocalStoreBackups::storeNames())
            keychain->remove(name, RealmEncryptedConfigurationFactory::keychainAccount);
        QFile::remove(*projects.fileURL);
        QFile::remove(*tasks.fileURL);
        const ProjectsDatabase live = *ProjectsDatabase::make(factory).dataAs<ProjectsDatabase>();
        QVERIFY(LocalProjectRepositoryImpl(live).create({.prjName = QStringLiteral("Keyed")}).result);

        std::optional<StoreBackups> store = LocalStoreBackups::make(factory, defaults, clock);
        QVERIFY(store);
        const ResultEntity made = store->backUp(StoreBackups::dailyReason);
        QVERIFY(made.result);
        const StoreBackupEntity backup = *made.dataAs<StoreBackupEntity>();
        QCOMPARE(backup.counts, (QMap<QString, qint64> {{ProjectsDatabaseSchema::name, 1}}));
        QCOMPARE(keychain->copyMatching(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount)
                     .status,
            KeychainStatus::itemNotFound);
        QCOMPARE(LocalProjectRepositoryImpl(ProjectsDatabase {copyOf(live.configuration, backup)})
                     .list(QUuid())
                     .dataAs<QList<ProjectEntity>>()
                     ->constFirst()
                     .prjName,
            QStringLiteral("Keyed"));
        for (const QString& name : LocalStoreBackups::storeNames())
            keychain->remove(name, RealmEncryptedConfigurationFactory::keychainAccount);
    }
};

TOLVANE_TEST_MAIN(StoreBackupsTest)

#include "StoreBackupsTest.moc"
