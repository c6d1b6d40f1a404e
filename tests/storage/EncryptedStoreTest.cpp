#include "platform/AppPaths.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmDatabaseOpener.h"
#include "storage/StoreFiles.h"
#include "storage/StoreFolderLock.h"
#include "support/TestMain.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

namespace {

const QString account = QStringLiteral("RealmEncryptionKey");

template <typename Database> RealmConfiguration configurationOf(const RealmEncryptedConfigurationFactory& factory)
{
    const ResultEntity made = Database::make(factory);
    if (!made.result)
        qFatal("no configuration: %s", qPrintable(made.firstMessage().value_or(QString())));
    return made.template dataAs<Database>()->configuration;
}

bool opensDirectly(const RealmConfiguration& configuration)
{
    try {
        RealmDatabase::open(configuration);
        return true;
    } catch (const RealmError&) {
        return false;
    }
}

} // namespace

// The stores as the program uses them: keys in the session's real keyring, files in the real
// data directory.
class EncryptedStoreTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SecretServiceKeychain> keychain = std::make_shared<SecretServiceKeychain>();

    RealmEncryptedConfigurationFactory factory() const
    {
        return RealmEncryptedConfigurationFactory(
            keychain, std::make_shared<SystemSecureRandom>(), RealmConfiguration::defaultConfiguration());
    }

private Q_SLOTS:
    void init()
    {
        for (const QString& store : {ProjectsDatabaseSchema::name, TasksDatabaseSchema::name}) {
            keychain->remove(store, account);
            QFile::remove(AppPaths::tolvaneDataDirectory() + QLatin1Char('/') + store + QStringLiteral(".realm"));
        }
    }

    void shouldMakeTheKeyOnceAndReuseIt()
    {
        const RealmConfiguration first = configurationOf<ProjectsDatabase>(factory());
        const RealmConfiguration second = configurationOf<ProjectsDatabase>(factory());

        QCOMPARE(first.encryptionKey.size(), 64);
        QCOMPARE(second.encryptionKey, first.encryptionKey);
        QCOMPARE(keychain->copyMatching(ProjectsDatabaseSchema::name, account).data, first.encryptionKey);
    }

    void shouldKeepEachStoreInItsOwnFileWithItsOwnKey()
    {
        const RealmConfiguration projects = configurationOf<ProjectsDatabase>(factory());
        const RealmConfiguration tasks = configurationOf<TasksDatabase>(factory());

        QVERIFY(projects.encryptionKey != tasks.encryptionKey);
        QCOMPARE(*projects.fileURL, AppPaths::tolvaneDataDirectory() + QStringLiteral("/Tasks.Projects.realm"));
        QCOMPARE(*tasks.fileURL, AppPaths::tolvaneDataDirectory() + QStringLiteral("/Tasks.Tasks.realm"));

        StoreFiles::addProject(projects, QStringLiteral("Garden"));
        QVERIFY(RealmDatabaseOpener::open(tasks).result);
        RealmConfiguration projectsFileWithTasksKey = projects;
        projectsFileWithTasksKey.encryptionKey = tasks.encryptionKey;
        QVERIFY(!opensDirectly(projectsFileWithTasksKey));
    }

    void shouldNeverWriteARecordInClear()
    {
        const RealmConfiguration projects = configurationOf<ProjectsDatabase>(factory());
        const QString name = QStringLiteral("Prune the orchard before the frost");
        StoreFiles::addProject(projects, name);

        const QByteArray bytes = StoreFiles::read(*projects.fileURL);
        QVERIFY(bytes.size() >= 1024);
        QVERIFY(!bytes.contains(name.toUtf8()));
        QVERIFY(!bytes.contains(QByteArray(reinterpret_cast<const char*>(name.utf16()), name.size() * 2)));
        QVERIFY(!bytes.contains("SQLite format 3"));
        QVERIFY(!bytes.contains("ProjectRealmModel"));
        QCOMPARE(StoreFiles::projectNames(projects), QStringList {name});
    }

    void shouldKeepTheFilesPrivate()
    {
        const RealmConfiguration projects = configurationOf<ProjectsDatabase>(factory());
        StoreFiles::addProject(projects, QStringLiteral("Private"));

        QCOMPARE(StoreFiles::mode(AppPaths::tolvaneDataDirectory()), 0700);
        QCOMPARE(StoreFiles::mode(*projects.fileURL), 0600);
    }

    void shouldTakeTheKeyThatAnotherProcessIsMakingMeanwhile()
    {
        // Another Tolvane on its first start: it has found no key and is about to save its own.
        const QByteArray theirs(64, '\x42');
        std::atomic<bool> looking = false;
        std::thread other([&] {
            const StoreFolderLock lock(AppPaths::tolvaneDataDirectory());
            QCOMPARE(
                keychain->copyMatching(ProjectsDatabaseSchema::name, account).status, KeychainStatus::itemNotFound);
            looking = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            keychain->add(ProjectsDatabaseSchema::name, account, theirs);
        });
        while (!looking)
            std::this_thread::yield();

        const RealmConfiguration ours = configurationOf<ProjectsDatabase>(factory());
        other.join();

        QCOMPARE(ours.encryptionKey, theirs);
        QCOMPARE(keychain->copyMatching(ProjectsDatabaseSchema::name, account).data, theirs);
    }

    void shouldStartAnEmptyStoreWhenItsKeyIsLost()
    {
        const RealmConfiguration before = configurationOf<ProjectsDatabase>(factory());
        StoreFiles::addProject(before, QStringLiteral("Written with the lost key"));
        QCOMPARE(keychain->remove(ProjectsDatabaseSchema::name, account), KeychainStatus::success);

        const RealmConfiguration after = configurationOf<ProjectsDatabase>(factory());
        QVERIFY(after.encryptionKey != before.encryptionKey);
        QVERIFY(!opensDirectly(after));

        const ResultEntity opened = RealmDatabaseOpener::open(after);
        QVERIFY(opened.result);
        QVERIFY(opened.dataAs<std::shared_ptr<RealmDatabase>>());
        QCOMPARE(StoreFiles::projectNames(after), QStringList());
        StoreFiles::addProject(after, QStringLiteral("Written with the new key"));
        QCOMPARE(StoreFiles::projectNames(after), QStringList {QStringLiteral("Written with the new key")});
    }

    void shouldRecreateADamagedFile()
    {
        const RealmConfiguration projects = configurationOf<ProjectsDatabase>(factory());
        StoreFiles::addProject(projects, QStringLiteral("Before the damage"));
        StoreFiles::overwrite(*projects.fileURL, 0, QByteArray(512, '\x5a'));
        QVERIFY(!opensDirectly(projects));

        QVERIFY(RealmDatabaseOpener::open(projects).result);
        QCOMPARE(StoreFiles::projectNames(projects), QStringList());
    }
};

// The opener on its own, over files in a scratch directory.
class StoreOpenerTest : public QObject {
    Q_OBJECT

    QTemporaryDir scratch;

    RealmConfiguration storeAt(const QString& path, quint64 schemaVersion = 1) const
    {
        RealmConfiguration configuration;
        configuration.fileURL = path;
        configuration.encryptionKey = QByteArray(64, '\x11');
        configuration.schemaVersion = schemaVersion;
        configuration.objectTypes = ProjectsDatabaseSchema::objectTypes();
        return configuration;
    }

private Q_SLOTS:
    void shouldSayBothErrorsWhenTheFileCannotBeSetAside()
    {
        // A directory stands where the file should be: it opens as nothing and is not ours to move.
        const QString path = scratch.filePath(QStringLiteral("occupied.realm"));
        QVERIFY(QDir().mkpath(path + QStringLiteral("/inside")));

        const ResultEntity opened = RealmDatabaseOpener::open(storeAt(path));

        QVERIFY(!opened.result);
        QCOMPARE(opened.infrastructureMessage, std::nullopt);
        const QString text = opened.databaseMessage.value_or(QString());
        QVERIFY2(text.startsWith(QStringLiteral("Open failed (")), qPrintable(text));
        QVERIFY2(text.endsWith(QStringLiteral(") and setting the file aside also failed: Unable to set '%1' aside: Is "
                                              "a directory")
                                   .arg(path)),
            qPrintable(text));
        QVERIFY(QFileInfo::exists(path + QStringLiteral("/inside")));
    }

    void shouldSayBothErrorsWhenTheRecreatedFileStillFails()
    {
        const QString path = scratch.filePath(QStringLiteral("missing/folder.realm"));

        const ResultEntity opened = RealmDatabaseOpener::open(storeAt(path));

        const QString cause
            = QStringLiteral("Unable to open a realm at path '%1': No such file or directory").arg(path);
        QVERIFY(!opened.result);
        QCOMPARE(opened.databaseMessage,
            QStringLiteral("Open failed (%1); recreated the file but it still failed to open: %1").arg(cause));
    }

    void shouldRefuseAKeyOfTheWrongLengthWithoutWriting()
    {
        RealmConfiguration configuration = storeAt(scratch.filePath(QStringLiteral("short-key.realm")));
        configuration.encryptionKey = QByteArray(32, '\x11');

        QVERIFY(!opensDirectly(configuration));
        QVERIFY(!QFile::exists(*configuration.fileURL));
    }

    // A newer program's store is refused and left exactly as it is, not set aside or started anew:
    // the newer program still reads it.
    void shouldRefuseAStoreWrittenByANewerVersionAndLeaveIt()
    {
        const RealmConfiguration newer = storeAt(scratch.filePath(QStringLiteral("newer.realm")), 2);
        StoreFiles::addProject(newer, QStringLiteral("From the future"));
        const RealmConfiguration current = storeAt(*newer.fileURL, 1);
        QFile file(*newer.fileURL);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray before = file.readAll();
        file.close();

        const ResultEntity opened = RealmDatabaseOpener::open(current);
        QVERIFY(!opened.result);
        QVERIFY(opened.firstMessage().value_or(QString()).contains(QStringLiteral("newer version")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), before);
        QCOMPARE(QDir(scratch.path()).entryList({QStringLiteral("newer.realm*")}, QDir::Files),
            QStringList {QStringLiteral("newer.realm")});
        QCOMPARE(StoreFiles::projectNames(newer), QStringList {QStringLiteral("From the future")});
    }

    void shouldMigrateAnOlderStoreAndKeepItsRecords()
    {
        const RealmConfiguration older = storeAt(scratch.filePath(QStringLiteral("older.realm")), 1);
        StoreFiles::addProject(older, QStringLiteral("Kept"));

        RealmConfiguration current = storeAt(*older.fileURL, 2);
        current.objectTypes.append({QStringLiteral("NoteRealmModel"), QStringLiteral("id TEXT PRIMARY KEY")});
        QList<quint64> migratedFrom;
        current.migrationBlock = [&](RealmDatabase&, quint64 oldVersion) { migratedFrom.append(oldVersion); };

        const auto database = RealmDatabase::open(current);
        QCOMPARE(migratedFrom, QList<quint64> {1});
        QCOMPARE(database->query(QStringLiteral("SELECT count(*) FROM NoteRealmModel")).constFirst().constFirst(),
            QVariant(qlonglong(0)));
        QCOMPARE(StoreFiles::projectNames(current), QStringList {QStringLiteral("Kept")});
        RealmDatabase::open(current);
        QCOMPARE(migratedFrom.size(), 1);
    }

    void shouldRollBackAWriteThatThrows()
    {
        const RealmConfiguration configuration = storeAt(scratch.filePath(QStringLiteral("rollback.realm")));
        const auto database = RealmDatabase::open(configuration);
        QVERIFY_THROWS_EXCEPTION(RealmError, database->write([&] {
            database->execute(QStringLiteral("INSERT INTO ProjectRealmModel VALUES ('A', 'U', 'Lost', '', 0)"));
            database->execute(QStringLiteral("INSERT INTO ProjectRealmModel VALUES ('A', 'U', 'Duplicate', '', 0)"));
        }));
        QVERIFY(!database->isInTransaction());
        QCOMPARE(StoreFiles::projectNames(configuration), QStringList());
    }

    void shouldRefuseTextThatWouldNotComeBackAsWritten()
    {
        const RealmConfiguration configuration = storeAt(scratch.filePath(QStringLiteral("surrogate.realm")));
        const QString halfPair = QStringLiteral("Call mum ") + QChar(0xD83D);

        QVERIFY_THROWS_EXCEPTION(RealmError, StoreFiles::addProject(configuration, halfPair));
        QCOMPARE(StoreFiles::projectNames(configuration), QStringList());
    }

    void shouldWaitForAStoreThatIsBeingCreatedElsewhere()
    {
        // A handle keyed while the file is still empty takes a salt of its own and reads the
        // file written meanwhile by its creator as foreign.
        const RealmConfiguration configuration = storeAt(scratch.filePath(QStringLiteral("Tasks.Projects.realm")));
        std::atomic<bool> creating = false;
        std::thread creator([&] {
            const StoreFolderLock lock(scratch.path());
            QFile file(*configuration.fileURL);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.close();
            const auto database = RealmDatabase::openKeyed(configuration);
            database->execute(QStringLiteral("BEGIN EXCLUSIVE"));
            const RealmObjectType projects = configuration.objectTypes.constFirst();
            database->execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(projects.name, projects.columns));
            database->execute(QStringLiteral("PRAGMA user_version = 1"));
            database->execute(
                QStringLiteral("INSERT INTO ProjectRealmModel VALUES ('A', 'U', 'Made elsewhere', '', 0)"));
            creating = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            database->commitWrite();
        });
        while (!creating)
            std::this_thread::yield();

        const ResultEntity opened = RealmDatabaseOpener::open(configuration);
        creator.join();

        QVERIFY(opened.result);
        QCOMPARE(StoreFiles::projectNames(configuration), QStringList {QStringLiteral("Made elsewhere")});
        QCOMPARE(QDir(scratch.path()).entryList({QStringLiteral("Tasks.Projects.realm.unreadable-*")}), QStringList());
    }

    void shouldRoundTripEveryValueKind()
    {
        const auto database = RealmDatabase::open(storeAt(scratch.filePath(QStringLiteral("values.realm"))));
        database->execute(QStringLiteral("CREATE TABLE v (t TEXT, b BLOB, i INTEGER, r REAL, n TEXT)"));
        const QByteArray blob("\0\1\2", 3);
        database->execute(QStringLiteral("INSERT INTO v VALUES (?, ?, ?, ?, ?)"),
            {QStringLiteral("día ☀"), blob, true, 2.5, QVariant()});
        const RealmRow row = database->query(QStringLiteral("SELECT * FROM v")).constFirst();
        QCOMPARE(row, (RealmRow {QStringLiteral("día ☀"), blob, qlonglong(1), 2.5, QVariant()}));
    }
};

int main(int argc, char* argv[])
{
    TestEnvironment::pinBeforeApplication();
    QCoreApplication application(argc, argv);
    TestEnvironment::pinAfterApplication();
    EncryptedStoreTest stores;
    StoreOpenerTest opener;
    return QTest::qExec(&stores, argc, argv) | QTest::qExec(&opener, argc, argv);
}

#include "EncryptedStoreTest.moc"
