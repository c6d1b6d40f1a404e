#include "FaultyVfs.h"
#include "storage/RealmDatabase.h"
#include "support/TestMain.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <sqlite3.h>

namespace {

using FaultyVfs::Operation;

struct Fault {
    Operation operation;
    int code;
};

// A failing disk at every kind of call, and a full one while writing.
const QList<Fault> faults {
    {Operation::read, SQLITE_IOERR_READ},
    {Operation::write, SQLITE_IOERR_WRITE},
    {Operation::write, SQLITE_FULL},
    {Operation::sync, SQLITE_IOERR_FSYNC},
    {Operation::lock, SQLITE_IOERR_LOCK},
};

template <typename Database> Database storeIn(const QTemporaryDir& folder, char key)
{
    RealmConfiguration configuration;
    configuration.fileURL = folder.filePath(Database::Store::name + QStringLiteral(".realm"));
    configuration.encryptionKey = QByteArray(64, key);
    configuration.schemaVersion = 1;
    configuration.objectTypes = Database::Store::objectTypes();
    return Database {configuration};
}

QStringList setAside(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList({QStringLiteral("*.unreadable-*")}, QDir::Files);
}

QList<TaskEntity> tasksOf(LocalTaskRepositoryImpl& tasks, const QUuid& list)
{
    const TaskResultEntity listed = tasks.list(list);
    if (!listed.result)
        qFatal("the store cannot be listed: %s", qPrintable(listed.firstMessage().value_or(QString())));
    return *listed.dataAs<QList<TaskEntity>>();
}

QString integrity(const RealmConfiguration& configuration)
{
    QStringList lines;
    for (const RealmRow& row : RealmDatabase::open(configuration)->query(QStringLiteral("PRAGMA integrity_check")))
        lines.append(row.value(0).toString());
    return lines.join(QLatin1Char('\n'));
}

} // namespace

// Every read, write, sync and lock of an operation fails in turn, once: the operation says so in
// words, leaves nothing half-done behind, and the next operation on the store works. A store must
// never be set aside for a fault of the disk: its file is sound.
class IoFaultTest : public QObject {
    Q_OBJECT

    // Arms the fault just before the operation and says afterwards whether it was injected.
    class Injection {
    public:
        Injection(const Fault& fault, int nth)
            : m_fault(fault)
            , m_nth(nth)
        {
        }
        void arm() { FaultyVfs::arm(m_fault.operation, m_nth, m_fault.code); }
        bool disarm() { return m_injected = FaultyVfs::disarm(); }
        bool injected() const { return m_injected; }
        // The operation reported the fault: in words a user can read.
        void failed(const ResultEntity& result)
        {
            m_reported = true;
            QVERIFY2(!result.firstMessage().value_or(QString()).trimmed().isEmpty(), "a failure without words");
        }
        bool reported() const { return m_reported; }

    private:
        Fault m_fault;
        int m_nth;
        bool m_injected = false;
        bool m_reported = false;
    };

    // Runs scenario once per call of every kind its operation makes, that call failing; the
    // scenario checks the outcome itself.
    void everyFault(const std::function<void(const QTemporaryDir&, Injection&)>& scenario)
    {
        int reported = 0;
        for (const Fault& fault : faults) {
            int nth = 1;
            for (;; ++nth) {
                QTemporaryDir folder;
                Injection injection(fault, nth);
                scenario(folder, injection);
                reported += injection.reported() ? 1 : 0;
                if (QTest::currentTestFailed()) {
                    qWarning("with the %s call %d failing (%s)", FaultyVfs::name(fault.operation), nth,
                        sqlite3_errstr(fault.code));
                    return;
                }
                if (!injection.injected())
                    break;
                QVERIFY(nth < 5000);
            }
            qInfo("%s failing with \"%s\": %d calls, each failed once", FaultyVfs::name(fault.operation),
                sqlite3_errstr(fault.code), nth - 1);
            QVERIFY(nth > 1);
        }
        qInfo("%d of the faults were reported as a failed operation", reported);
        QVERIFY(reported > 0);
    }

private Q_SLOTS:
    void initTestCase() { FaultyVfs::install(); }

    void shouldCreateTheStoreOrFailCleanly()
    {
        everyFault([](const QTemporaryDir& folder, Injection& injection) {
            const TasksDatabase database = storeIn<TasksDatabase>(folder, '\x07');
            LocalTaskRepositoryImpl tasks(database);
            const QUuid list = QUuid::createUuid();
            const TaskEntity first {.talId = list, .tasTitle = QStringLiteral("First")};
            injection.arm();
            const TaskResultEntity created = tasks.create(first);
            const bool injected = injection.disarm();
            if (!injected)
                QVERIFY(created.result);
            else if (!created.result)
                injection.failed(created);

            const TaskEntity second {.talId = list, .tasTitle = QStringLiteral("Second")};
            const TaskResultEntity next = tasks.create(second);
            QVERIFY2(next.result, qPrintable(next.firstMessage().value_or(QString())));
            QList<TaskEntity> expected {second};
            if (created.result)
                expected.prepend(first);
            QCOMPARE(tasksOf(tasks, list), expected);
            QCOMPARE(setAside(folder), QStringList());
            QCOMPARE(integrity(database.configuration), QStringLiteral("ok"));
        });
    }

    void shouldAddATaskOrNothing()
    {
        everyFault([](const QTemporaryDir& folder, Injection& injection) {
            const TasksDatabase database = storeIn<TasksDatabase>(folder, '\x07');
            LocalTaskRepositoryImpl tasks(database);
            const QUuid list = QUuid::createUuid();
            QList<TaskEntity> expected;
            for (int i = 0; i < 3; ++i) {
                expected.append(TaskEntity {.talId = list, .tasTitle = QStringLiteral("Kept %1").arg(i)});
                QVERIFY(tasks.create(expected.constLast()).result);
            }

            const TaskEntity added {.talId = list, .tasTitle = QStringLiteral("Added"), .tasIsDone = true};
            injection.arm();
            const TaskResultEntity created = tasks.create(added);
            const bool injected = injection.disarm();
            if (!injected || created.result)
                expected.append(added);
            else
                injection.failed(created);
            QCOMPARE(tasksOf(tasks, list), expected);

            const TaskEntity next {.talId = list, .tasTitle = QStringLiteral("Next")};
            QVERIFY(tasks.create(next).result);
            QCOMPARE(tasksOf(tasks, list), expected << next);
            QCOMPARE(setAside(folder), QStringList());
            QCOMPARE(integrity(database.configuration), QStringLiteral("ok"));
        });
    }

    void shouldDeleteAProjectOrKeepItWhole()
    {
        everyFault([](const QTemporaryDir& folder, Injection& injection) {
            const ProjectsDatabase database = storeIn<ProjectsDatabase>(folder, '\x07');
            LocalProjectRepositoryImpl projects(database);
            const QUuid user = QUuid::createUuid();
            const ProjectEntity doomed {
                .prjUserId = user, .prjName = QStringLiteral("Doomed"), .prjDescription = QStringLiteral("Long text")};
            const ProjectEntity kept {.prjUserId = user, .prjName = QStringLiteral("Kept")};
            QVERIFY(projects.create(doomed).result);
            QVERIFY(projects.create(kept).result);

            injection.arm();
            const TaskResultEntity deleted = projects.delete_(doomed.prjId);
            const bool injected = injection.disarm();
            QList<ProjectEntity> expected {kept};
            if (injected && !deleted.result) {
                injection.failed(deleted);
                expected.prepend(doomed);
            }
            const TaskResultEntity listed = projects.list(user);
            QVERIFY(listed.result);
            QCOMPARE(*listed.dataAs<QList<ProjectEntity>>(), expected);

            QVERIFY(projects.delete_(kept.prjId).result);
            QCOMPARE(setAside(folder), QStringList());
            QCOMPARE(integrity(database.configuration), QStringLiteral("ok"));
        });
    }

    // The key was lost: the store is set aside and started anew under the new key. A fault on the
    // way may fail the operation, but the old file must still be somewhere and the next
    // operation must find a working store.
    void shouldRecoverUnderANewKeyDespiteAFault()
    {
        everyFault([](const QTemporaryDir& folder, Injection& injection) {
            const QUuid list = QUuid::createUuid();
            {
                LocalTaskRepositoryImpl old(storeIn<TasksDatabase>(folder, '\x07'));
                QVERIFY(old.create(TaskEntity {.talId = list, .tasTitle = QStringLiteral("Old")}).result);
            }
            const TasksDatabase database = storeIn<TasksDatabase>(folder, '\x09');
            LocalTaskRepositoryImpl tasks(database);
            const TaskEntity added {.talId = list, .tasTitle = QStringLiteral("New")};
            injection.arm();
            const TaskResultEntity created = tasks.create(added);
            const bool injected = injection.disarm();
            if (injected && !created.result)
                injection.failed(created);
            else
                QVERIFY(created.result);

            const TaskEntity next {.talId = list, .tasTitle = QStringLiteral("Next")};
            QVERIFY2(tasks.create(next).result, "the store does not work after the fault");
            QList<TaskEntity> expected {next};
            if (created.result)
                expected.prepend(added);
            QCOMPARE(tasksOf(tasks, list), expected);
            // The unreadable old file is kept, never deleted.
            QCOMPARE(setAside(folder).size(), 1);
            QCOMPARE(integrity(database.configuration), QStringLiteral("ok"));
        });
    }
};

TOLVANE_TEST_MAIN(IoFaultTest)
#include "IoFaultTest.moc"
