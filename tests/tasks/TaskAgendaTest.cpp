#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/ZoneScope.h"
#include "support/server/ServerBackend.h"
#include "tasks/TasksApplicationFactory.h"

#include <QTemporaryDir>

#include <ctime>

namespace {

template <typename T> QList<T> listed(const TaskResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

QStringList titlesOf(const TaskResultEntity& result)
{
    QStringList titles;
    for (const TaskEntity& task : listed<TaskEntity>(result))
        titles.append(task.tasTitle);
    return titles;
}

const QDate day(2026, 11, 23);

} // namespace

// Tasks found by their days across the user's projects, through the factory's applications:
// the encrypted local stores (one query on the due date) and a Google account on the real
// server (read list by list). Both must give the same answer in any zone, at the day's edges.
class TaskAgendaTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerBackend> backend;
    std::unique_ptr<QTemporaryDir> stores;
    std::optional<TasksApplicationFactory::Applications> apps;
    std::shared_ptr<SettableClock> clock;
    QUuid user;
    bool isGoogle = false;
    int subjects = 0;

    ProjectEntity addProject(const QString& name, const QUuid& owner)
    {
        const TaskResultEntity created = apps->projects.create({.prjUserId = owner, .prjName = name});
        if (!created.result)
            qFatal("project not created: %s", qPrintable(created.firstMessage().value_or(QString())));
        return *created.dataAs<ProjectEntity>();
    }

    TaskListEntity addList(const ProjectEntity& project, const QString& name)
    {
        const TaskResultEntity created = apps->taskLists.create({.prjId = project.prjId, .talName = name});
        if (!created.result)
            qFatal("list not created: %s", qPrintable(created.firstMessage().value_or(QString())));
        return *created.dataAs<TaskListEntity>();
    }

    TaskEntity addTask(const TaskListEntity& list, const QString& title, std::optional<QDateTime> due, bool hasTime)
    {
        TaskEntity task {.prjId = list.prjId, .talId = list.talId, .tasTitle = title, .tasDueDate = due};
        task.tasDueHasTime = hasTime;
        const TaskResultEntity created = apps->tasks.create(task);
        if (!created.result)
            qFatal("task not created: %s", qPrintable(created.firstMessage().value_or(QString())));
        return task;
    }

    TaskEntity addDayTask(const TaskListEntity& list, const QString& title, const QDate& due)
    {
        return addTask(list, title, TaskEntity::dueOnDay(due), false);
    }

    // A timed task at that local time of the current zone.
    TaskEntity addTimedTask(const TaskListEntity& list, const QString& title, const QDate& date, const QTime& time)
    {
        return addTask(list, title, QDateTime(date, time).toUTC(), true);
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("google");
        QTest::newRow("local account") << false;
        QTest::newRow("Google account") << true;
    }

    void initTestCase()
    {
        backend = std::make_unique<ServerBackend>();
        QVERIFY2(backend->isRunning(), qPrintable(backend->error()));
    }

    void cleanupTestCase() { backend.reset(); }

    void init()
    {
        QFETCH_GLOBAL(bool, google);
        isGoogle = google;
        stores = std::make_unique<QTemporaryDir>();
        RealmConfiguration defaults;
        defaults.fileURL = stores->filePath(QStringLiteral("default.realm"));
        const TasksApplicationFactory factory(RealmEncryptedConfigurationFactory(
            std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), defaults));
        // Every test a user of its own, so that they share one server without seeing each other.
        const QString subject = QStringLiteral("agenda-%1").arg(++subjects);
        user = google ? backend->registerUser(subject) : QUuid::createUuid();
        const TaskResultEntity made = factory.make(google, backend->client(subject));
        QVERIFY2(made.result, qPrintable(made.firstMessage().value_or(QString())));
        apps = *made.dataAs<TasksApplicationFactory::Applications>();
        clock = std::make_shared<SettableClock>(QDateTime(day, QTime(12, 0), Qt::UTC));
        apps->tasks.clock = clock;
    }

    void dueUpTo_takesTimedTasksByLocalDayAndDayOnlyTasksByCalendarDay_data()
    {
        QTest::addColumn<QByteArray>("zone");
        // Far enough either side of UTC that a day kept as midnight UTC reads as another local day.
        QTest::newRow("Auckland, UTC+13") << QByteArray("Pacific/Auckland");
        QTest::newRow("Los Angeles, UTC-8") << QByteArray("America/Los_Angeles");
    }

    void dueUpTo_takesTimedTasksByLocalDayAndDayOnlyTasksByCalendarDay()
    {
        QFETCH(QByteArray, zone);
        const ZoneScope scope(zone);
        const ProjectEntity home = addProject(QStringLiteral("Home"), user);
        const TaskListEntity chores = addList(home, QStringLiteral("Chores"));
        const TaskListEntity errands = addList(addProject(QStringLiteral("Work"), user), QStringLiteral("Errands"));

        addDayTask(chores, QStringLiteral("late"), day.addDays(-3));
        addTimedTask(errands, QStringLiteral("before midnight"), day, QTime(23, 30));
        addDayTask(errands, QStringLiteral("today, no time"), day);
        addTimedTask(chores, QStringLiteral("early"), day, QTime(0, 5));
        addTimedTask(chores, QStringLiteral("just after midnight"), day.addDays(1), QTime(0, 10));
        addDayTask(chores, QStringLiteral("tomorrow"), day.addDays(1));
        addDayTask(chores, QStringLiteral("in a week"), day.addDays(7));
        addTask(chores, QStringLiteral("whenever"), std::nullopt, false);
        const TaskEntity done = addDayTask(chores, QStringLiteral("done already"), day);
        QVERIFY(apps->tasks.markDone(done.tasId).result);
        if (!isGoogle) {
            // In the local stores every user's tasks share a file: another user's are not this one's.
            const ProjectEntity others = addProject(QStringLiteral("Someone else's"), QUuid::createUuid());
            addDayTask(addList(others, QStringLiteral("Theirs")), QStringLiteral("not mine"), day);
        }

        // Late first, a day's tasks without a time before its timed ones.
        QCOMPARE(titlesOf(apps->agenda.dueUpTo(user, day)),
            (QStringList {"late", "today, no time", "early", "before midnight"}));
        // The day before: a day-only task stays on its own day however far the zone is from UTC.
        QCOMPARE(titlesOf(apps->agenda.dueUpTo(user, day.addDays(-1))), QStringList {"late"});
        QCOMPARE(titlesOf(apps->agenda.dueUpTo(user, day.addDays(6))),
            (QStringList {"late", "today, no time", "early", "before midnight", "tomorrow", "just after midnight"}));
        QCOMPARE(apps->agenda.dueUpTo(user, day.addDays(7)).dataAs<QList<TaskEntity>>()->size(), 7);
        // Both stores answer by day themselves, in one read instead of one per list.
        QVERIFY(apps->tasks.taskRepository->listOpenDueBefore(TaskAgendaApplication::dueBound(day)).result);
        // Every task found says where it lives.
        for (const TaskEntity& task : listed<TaskEntity>(apps->agenda.dueUpTo(user, day)))
            QVERIFY(task.talId == chores.talId || task.talId == errands.talId);
    }

    void completedOn_takesTheTasksDoneDuringTheLocalDay()
    {
        const ZoneScope scope("Europe/Madrid");
        const TaskListEntity list = addList(addProject(QStringLiteral("Home"), user), QStringLiteral("Chores"));
        const auto doneAt = [&](const QString& title, const QDateTime& when) {
            const TaskEntity task = addTask(list, title, std::nullopt, false);
            clock->set(when);
            if (!apps->tasks.markDone(task.tasId).result)
                qFatal("not marked done");
            return task;
        };
        doneAt(QStringLiteral("last night"), QDateTime(day.addDays(-1), QTime(23, 59)));
        doneAt(QStringLiteral("late evening"), QDateTime(day, QTime(23, 58)));
        doneAt(QStringLiteral("first thing"), QDateTime(day, QTime(0, 1)));
        doneAt(QStringLiteral("next morning"), QDateTime(day.addDays(1), QTime(0, 0)));
        const TaskEntity reopened = doneAt(QStringLiteral("reopened"), QDateTime(day, QTime(10, 0)));
        QVERIFY(apps->tasks.markNotDone(reopened.tasId).result);
        addTask(list, QStringLiteral("open"), TaskEntity::dueOnDay(day), false);

        // In the order they were done, not the order they were written.
        QCOMPARE(titlesOf(apps->agenda.completedOn(user, day)), (QStringList {"first thing", "late evening"}));
        QCOMPARE(titlesOf(apps->agenda.completedOn(user, day.addDays(1))), QStringList {"next morning"});
        QVERIFY(
            apps->tasks.taskRepository->listCompletedBetween(QDateTime(day, QTime(0, 0)), QDateTime(day, QTime(1, 0)))
                .result);
    }
};

TOLVANE_TEST_MAIN(TaskAgendaTest)

#include "TaskAgendaTest.moc"
