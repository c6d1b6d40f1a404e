#include "backup/StoreBackups.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmDatabaseOpener.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace {

// A store the previous version wrote (schema version 1: no time flag, rule, occurrence,
// reminder or completion time), with the key it was made with.
const QString fixtureStore = QStringLiteral(TOLVANE_TASKS_FIXTURES "/Tasks.Tasks.v1.realm");
const QString fixtureKey = QStringLiteral(TOLVANE_TASKS_FIXTURES "/Tasks.Tasks.v1.key.hex");
const QUuid fixtureList(QStringLiteral("{6f1c3d52-0a55-4c4e-9a0e-1b2f3c4d5e02}"));

QUuid fixtureTask(int n)
{
    return QUuid(QStringLiteral("{0c0a0000-0000-4000-8000-00000000000%1}").arg(n));
}

// Every file of the folder with a digest of its bytes, so "untouched" means byte for byte.
QMap<QString, QByteArray> contentsOf(const QString& folder)
{
    QMap<QString, QByteArray> files;
    for (const QFileInfo& entry : QDir(folder).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(entry.absoluteFilePath());
        QByteArray digest;
        if (entry.isFile() && file.open(QIODevice::ReadOnly))
            digest = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
        files.insert(entry.fileName(), digest);
    }
    return files;
}

quint64 versionOf(const RealmConfiguration& configuration)
{
    return RealmDatabase::openKeyed(configuration)
        ->query(QStringLiteral("PRAGMA user_version"))
        .constFirst()
        .constFirst()
        .toULongLong();
}

} // namespace

class TaskStoreMigrationTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<SecretServiceKeychain> keychain;
    std::shared_ptr<SettableClock> clock;

    QString storeFile() const { return folder->filePath(TasksDatabaseSchema::name + QStringLiteral(".realm")); }

    RealmEncryptedConfigurationFactory factory() const
    {
        RealmConfiguration defaults;
        defaults.fileURL = folder->filePath(QStringLiteral("default.realm"));
        RealmEncryptedConfigurationFactory made(keychain, std::make_shared<SystemSecureRandom>(), defaults);
        made.setBeforeMigration(StoreBackups::backUpBeforeMigration(clock));
        return made;
    }

    TasksDatabase database() const { return *TasksDatabase::make(factory()).dataAs<TasksDatabase>(); }

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        clock = std::make_shared<SettableClock>(QDateTime(QDate(2026, 11, 22), QTime(12, 0), Qt::UTC));
        keychain = std::make_shared<SecretServiceKeychain>();
        QVERIFY(QFile::copy(fixtureStore, storeFile()));
        QFile::setPermissions(storeFile(), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        QFile key(fixtureKey);
        QVERIFY(key.open(QIODevice::ReadOnly));
        keychain->remove(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount);
        QCOMPARE(keychain->add(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount,
                     QByteArray::fromHex(key.readAll().trimmed())),
            KeychainStatus::success);
    }

    void cleanup() { keychain->remove(TasksDatabaseSchema::name, RealmEncryptedConfigurationFactory::keychainAccount); }

    void anOldStoreGainsTheNewFieldsAndKeepsEveryTask()
    {
        const TasksDatabase tasks = database();
        QCOMPARE(versionOf(tasks.configuration), quint64(1));

        LocalTaskRepositoryImpl repository(tasks);
        const TaskResultEntity listed = repository.list(fixtureList);
        QVERIFY2(listed.result, qPrintable(listed.firstMessage().value_or(QString())));
        const QList<TaskEntity> found = *listed.dataAs<QList<TaskEntity>>();
        QCOMPARE(versionOf(tasks.configuration), TasksDatabase::schemaVersion);

        // Every task, field by field, in the order they were added.
        QCOMPARE(found.size(), 5);
        const QStringList titles {QStringLiteral("Pay the rent"), QStringLiteral("Call the dentist at 9"),
            QString::fromUtf8("Read the contract – cláusulas"), QStringLiteral("Someday: learn the cello"),
            QStringLiteral("Water the plants")};
        const QList<std::optional<EisenhowerTagEnum>> tags {EisenhowerTagEnum::doIt, EisenhowerTagEnum::delegate,
            EisenhowerTagEnum::planning, EisenhowerTagEnum::delete_, std::nullopt};
        for (int i = 0; i < found.size(); ++i) {
            const TaskEntity& task = found.at(i);
            QCOMPARE(task.tasId, fixtureTask(i + 1));
            QCOMPARE(task.talId, fixtureList);
            QCOMPARE(task.prjId, QUuid(QStringLiteral("{6f1c3d52-0a55-4c4e-9a0e-1b2f3c4d5e01}")));
            QCOMPARE(task.tasTitle, titles.at(i));
            QCOMPARE(task.tasIsDone, i == 2);
            QCOMPARE(task.tasEisenhowerTag, tags.at(i));
            // Nothing new is invented for them.
            QCOMPARE(task.tasRecurrence, std::nullopt);
            QCOMPARE(task.tasOccurrence, 1);
            QCOMPARE(task.tasReminderMinutesBefore, std::nullopt);
            QCOMPARE(task.tasCompletedAt, std::nullopt);
        }
        // A day at midnight UTC stays that day; the one with a time keeps its instant and a time.
        QCOMPARE(found.at(0).dueDay(), QDate(2026, 12, 1));
        QVERIFY(!found.at(0).tasDueHasTime);
        QCOMPARE(found.at(1).tasDueDate->toUTC(), QDateTime(QDate(2026, 11, 23), QTime(14, 0), Qt::UTC));
        QVERIFY(found.at(1).tasDueHasTime);
        QCOMPARE(found.at(2).dueDay(), QDate(2026, 11, 2));
        QCOMPARE(found.at(3).tasDueDate, std::nullopt);

        // The new fields are stored from now on.
        TaskEntity repeating = found.at(4);
        repeating.tasDueDate = TaskEntity::dueOnDay(QDate(2026, 11, 24));
        repeating.tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::weekly,
            .interval = 2,
            .weekdays = {Qt::Tuesday},
            .anchor = RecurrenceAnchorEnum::completion,
            .endAfterCount = 4};
        repeating.tasOccurrence = 2;
        repeating.tasReminderMinutesBefore = 15;
        repeating.tasCompletedAt = QDateTime(QDate(2026, 11, 22), QTime(8, 30), Qt::UTC);
        QVERIFY(repository.update(repeating).result);
        QCOMPARE(*repository.find(repeating.tasId).dataAs<TaskEntity>(), repeating);
    }

    // The previous version's CSV import kept a day without a time as local midnight: it stays
    // that local day.
    void aDayAtLocalMidnightStaysThatDay()
    {
        RealmConfiguration old = database().configuration;
        const QUuid id = QUuid::createUuid();
        {
            const auto handle = RealmDatabase::openKeyed(old);
            handle->execute(QStringLiteral("INSERT INTO TaskRealmModel VALUES (?, ?, ?, ?, 0, ?, NULL)"),
                {id.toString(QUuid::WithoutBraces).toUpper(), fixtureList.toString(QUuid::WithoutBraces).toUpper(),
                    fixtureList.toString(QUuid::WithoutBraces).toUpper(), QStringLiteral("Imported"),
                    QDateTime(QDate(2026, 11, 25), QTime(0, 0)).toMSecsSinceEpoch()});
        }
        QCOMPARE(versionOf(old), quint64(1));

        const TaskEntity imported = *LocalTaskRepositoryImpl(database()).find(id).dataAs<TaskEntity>();
        QVERIFY(!imported.tasDueHasTime);
        QCOMPARE(imported.dueDay(), QDate(2026, 11, 25));
        QCOMPARE(imported.tasDueDate->toUTC(), QDateTime(QDate(2026, 11, 25), QTime(0, 0), Qt::UTC));
    }

    void theOldStoreIsBackedUpBeforeItIsMigrated()
    {
        const TasksDatabase tasks = database();
        QVERIFY(LocalTaskRepositoryImpl(tasks).list(fixtureList).result);

        StoreBackups backups(folder->path(), {}, clock);
        const QList<StoreBackupEntity> made = backups.list();
        QCOMPARE(made.size(), 1);
        QCOMPARE(made.constFirst().reason, StoreBackups::beforeMigrationReason);
        QCOMPARE(made.constFirst().counts.value(TasksDatabaseSchema::name), 5);
        // The copy is the store as the old version left it.
        RealmConfiguration copy = tasks.configuration;
        copy.fileURL = QDir(made.constFirst().folder).filePath(TasksDatabaseSchema::name + QStringLiteral(".realm"));
        QCOMPARE(versionOf(copy), quint64(1));

        // A second opening has nothing left to migrate and makes no second backup.
        QVERIFY(LocalTaskRepositoryImpl(database()).list(fixtureList).result);
        QCOMPARE(backups.list().size(), 1);
    }

    void aStoreFromANewerVersionIsRefusedAndLeftAlone()
    {
        // The store as a later version would leave it: a higher schema version, a column we do
        // not know.
        RealmConfiguration later = database().configuration;
        later.schemaVersion = TasksDatabase::schemaVersion + 1;
        later.migrationBlock = [](RealmDatabase& handle, quint64) {
            handle.execute(QStringLiteral("ALTER TABLE TaskRealmModel ADD COLUMN tasFromTheFuture TEXT"));
        };
        later.beforeMigration = nullptr;
        RealmDatabase::open(later);
        const QMap<QString, QByteArray> before = contentsOf(folder->path());

        const TaskResultEntity listed = LocalTaskRepositoryImpl(database()).list(fixtureList);
        QVERIFY(!listed.result);
        const QString message = listed.firstMessage().value_or(QString());
        QVERIFY2(message.contains(QStringLiteral("newer version of Tolvane")), qPrintable(message));
        QVERIFY2(message.contains(QStringLiteral("left untouched")), qPrintable(message));
        QVERIFY(!LocalTaskRepositoryImpl(database())
                     .create({.talId = fixtureList, .tasTitle = QStringLiteral("x")})
                     .result);

        const ResultEntity opened = RealmDatabaseOpener::open(database().configuration);
        QVERIFY(!opened.result);
        QCOMPARE(opened.databaseMessage, std::optional<QString>(message));

        // Not set aside, not backed up, not started anew: the same files, byte for byte.
        QCOMPARE(contentsOf(folder->path()), before);
        QCOMPARE(versionOf(later), later.schemaVersion);
    }
};

TOLVANE_TEST_MAIN(TaskStoreMigrationTest)
#include "TaskStoreMigrationTest.moc"
