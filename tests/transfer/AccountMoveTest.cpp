#include "transfer/AccountMove.h"

#include "LocalAccount.h"
#include "support/TestMain.h"
#include "support/server/ServerBackend.h"
#include "tasks/repositories/remote/RemoteBitacoraRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteDailyTaskRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteProjectRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskListRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"
#include "transfer/TasksSnapshotReader.h"

#include <QTest>

// A local account's data moved into another account: another set of local stores, and a Google
// account on the real tolvane-server. Each test moves into a user of its own.
namespace {

const QUuid localUser = QUuid::fromString(QStringLiteral("5d0c7a9e-2b41-4f3e-8c55-0e6f1a2b3c4d"));
const QDate firstDay(2026, 11, 1);
const QDate lastDay(2026, 11, 30);

QDateTime at(int day, int hour)
{
    return QDateTime(QDate(2026, 11, day), QTime(hour, 0));
}

template <typename T> T created(const ResultEntity& result)
{
    if (!result.result)
        qFatal("setup failed: %s", qPrintable(result.firstMessage().value_or(QString())));
    return *result.dataAs<T>();
}

// Two projects, each with lists, tasks in every state and a logbook, and daily tasks on several days.
void fill(const TasksRepositories& account, const QUuid& owner)
{
    for (const QString& name : {QStringLiteral("Home"), QStringLiteral("Work \u00E9\u00F1")}) {
        const auto project = created<ProjectEntity>(account.projects->create(
            {QUuid::createUuid(), owner, name, QStringLiteral("About %1").arg(name), name == QStringLiteral("Home")}));
        for (int l = 0; l < 2; ++l) {
            const auto list = created<TaskListEntity>(account.taskLists->create(
                {QUuid::createUuid(), project.prjId, QStringLiteral("List %1").arg(l), QString(), l == 0}));
            for (int t = 0; t < 5; ++t) {
                TaskEntity task;
                task.prjId = project.prjId;
                task.talId = list.talId;
                task.tasTitle = QStringLiteral("%1 task %2.%3").arg(name).arg(l).arg(t);
                task.tasIsDone = t == 1;
                if (t % 2 == 0)
                    task.tasDueDate = at(3 + t, 9).toUTC();
                if (t < 4)
                    task.tasEisenhowerTag = EisenhowerTag::allCases.at(t);
                created<TaskEntity>(account.tasks->create(task));
            }
        }
        created<BitacoraEntryEntity>(account.bitacora->create(
            {QUuid::createUuid(), owner, project.prjId, at(4, 18), QStringLiteral("What %1 held").arg(name)}));
    }
    for (int d = 0; d < 3; ++d) {
        const auto daily = created<DailyTaskEntity>(account.dailyTasks->create(
            {QUuid::createUuid(), owner, at(2 + d * 5, 8), QStringLiteral("Daily %1").arg(d), false}));
        if (d == 1 && !account.dailyTasks->setDone(daily.dtaId, true).result)
            qFatal("setup failed");
    }
}

TasksSnapshot snapshotOf(const AccountMove::Side& side)
{
    TransferControl control;
    const ResultEntity read
        = TasksSnapshotReader(side.repositories).read({side.userId, std::nullopt, firstDay, lastDay}, control);
    if (!read.result)
        qFatal("read failed: %s", qPrintable(read.firstMessage().value_or(QString())));
    return *read.dataAs<TasksSnapshot>();
}

} // namespace

class AccountMoveTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerBackend> m_backend;
    std::unique_ptr<LocalAccount> m_source;
    std::unique_ptr<LocalAccount> m_localTarget;
    AccountMove::Side m_from;
    AccountMove::Side m_to;

    AccountMove move() const { return AccountMove(m_from, m_to, firstDay, lastDay); }

    // The account the data moves into, as the test row says: other local stores or a new user of
    // the backend.
    AccountMove::Side target(const QString& kind)
    {
        if (kind == QLatin1String("local stores")) {
            m_localTarget = std::make_unique<LocalAccount>('\x42');
            return {m_localTarget->repositories, QUuid::createUuid()};
        }
        const QString subject = QUuid::createUuid().toString(QUuid::WithoutBraces);
        const QUuid user = m_backend->registerUser(subject);
        return {{std::make_shared<RemoteProjectRepositoryImpl>(m_backend->client(subject)),
                    std::make_shared<RemoteTaskListRepositoryImpl>(m_backend->client(subject)),
                    std::make_shared<RemoteTaskRepositoryImpl>(m_backend->client(subject)),
                    std::make_shared<RemoteDailyTaskRepositoryImpl>(m_backend->client(subject)),
                    std::make_shared<RemoteBitacoraRepositoryImpl>(m_backend->client(subject))},
            user};
    }

    void targets()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("local stores") << QStringLiteral("local stores");
        QTest::newRow("backend") << QStringLiteral("backend");
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_backend = std::make_unique<ServerBackend>();
        QVERIFY2(m_backend->isRunning(), qPrintable(m_backend->error()));
    }

    void init()
    {
        QFETCH(QString, kind);
        m_source = std::make_unique<LocalAccount>('\x41');
        fill(m_source->repositories, localUser);
        m_from = {m_source->repositories, localUser};
        m_to = target(kind);
    }

    void cleanupTestCase() { m_backend.reset(); }

    void everythingArrivesWithItsIdsAndNothingIsDeleted_data() { targets(); }
    void everythingArrivesWithItsIdsAndNothingIsDeleted()
    {
        const ProjectEntity already = created<ProjectEntity>(
            m_to.repositories.projects->create({QUuid::createUuid(), m_to.userId, QStringLiteral("Already there")}));
        const TasksSnapshot before = snapshotOf(m_from);
        QCOMPARE(before.itemCount(), 2 + 4 + 20 + 2 + 3);

        TransferControl control;
        const ResultEntity moved = move().run(control);
        QVERIFY2(moved.result, qPrintable(moved.firstMessage().value_or(QString())));
        QCOMPARE(
            *moved.dataAs<AccountMove::Outcome>(), (AccountMove::Outcome {before.itemCount(), 0, before.itemCount()}));

        // Read back here on its own terms: the same ids, the same contents, owned by the new user.
        const TasksSnapshot after = snapshotOf(m_to);
        QCOMPARE(after.projects.size(), 3);
        QVERIFY(after.projects.contains(already));
        for (const TaskEntity& task : before.tasks)
            QVERIFY2(after.tasks.contains(task), qPrintable(task.tasTitle));
        for (const TaskListEntity& list : before.taskLists)
            QVERIFY(after.taskLists.contains(list));
        for (const DailyTaskEntity& daily : before.dailyTasks) {
            const auto found = std::ranges::find(after.dailyTasks, daily.dtaId, &DailyTaskEntity::dtaId);
            QVERIFY(found != after.dailyTasks.end());
            QCOMPARE(found->dtaUserId, m_to.userId);
            QCOMPARE(found->dtaTitle, daily.dtaTitle);
            QCOMPARE(found->dtaIsDone, daily.dtaIsDone);
            QCOMPARE(found->dtaDate.toLocalTime().date(), daily.dtaDate.toLocalTime().date());
        }
        for (const BitacoraEntryEntity& entry : before.bitacora) {
            const auto found = std::ranges::find(after.bitacora, entry.bteId, &BitacoraEntryEntity::bteId);
            QVERIFY(found != after.bitacora.end());
            QCOMPARE(found->bteContent, entry.bteContent);
            QCOMPARE(found->prjId, entry.prjId);
        }
        // The source is left exactly as it was.
        QCOMPARE(snapshotOf(m_from), before);
    }

    void aMoveStoppedHalfwayResumesWithoutDuplicates_data() { targets(); }
    void aMoveStoppedHalfwayResumesWithoutDuplicates()
    {
        const TasksSnapshot source = snapshotOf(m_from);
        // Cancelled once the copy is under way: some records are across, the rest are not.
        TransferControl control([&control](qint64 done, qint64 total) {
            if (done * 2 > total)
                control.cancel();
        });
        const ResultEntity stopped = move().run(control);
        QVERIFY(!stopped.result);
        QCOMPARE(stopped.applicationMessage, std::optional(AccountMove::cancelledMessage));
        const qsizetype across = snapshotOf(m_to).itemCount();
        QVERIFY(across > 0);
        QVERIFY(across < source.itemCount());

        TransferControl again;
        const ResultEntity resumed = move().run(again);
        QVERIFY2(resumed.result, qPrintable(resumed.firstMessage().value_or(QString())));
        QCOMPARE(*resumed.dataAs<AccountMove::Outcome>(),
            (AccountMove::Outcome {source.itemCount() - across, across, source.itemCount()}));
        const TasksSnapshot moved = snapshotOf(m_to);
        QCOMPARE(moved.itemCount(), source.itemCount());
        QVERIFY(AccountMove::differences(source, moved).isEmpty());
    }

    void aRecordChangedOnTheOtherSideIsReportedNotOverwritten_data() { targets(); }
    void aRecordChangedOnTheOtherSideIsReportedNotOverwritten()
    {
        TransferControl control;
        QVERIFY(move().run(control).result);
        const TasksSnapshot source = snapshotOf(m_from);
        TaskEntity edited = source.tasks.at(3);
        edited.tasTitle = QStringLiteral("Renamed over there");
        QVERIFY(m_to.repositories.tasks->update(edited).result);

        const ResultEntity again = move().run(control);
        QVERIFY(!again.result);
        QVERIFY(again.applicationMessage);
        QCOMPARE(AccountMove::differences(source, snapshotOf(m_to)), QStringList {source.tasks.at(3).tasTitle});
        QVERIFY(snapshotOf(m_to).tasks.contains(edited));
    }
};

TOLVANE_TEST_MAIN(AccountMoveTest)
#include "AccountMoveTest.moc"
