#include "../tasks/remote/RemoteRepositoryFixture.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "rituals/DayReview.h"
#include "rituals/QuickAdd.h"
#include "rituals/RollOver.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "tasks/TasksApplicationFactory.h"

#include <QTemporaryDir>
#include <QTranslator>

namespace {

QStringList titlesOf(const TaskResultEntity& listed)
{
    QStringList titles;
    if (const auto* items = listed.dataAs<QList<DailyTaskEntity>>()) {
        for (const DailyTaskEntity& item : *items)
            titles.append(item.dtaTitle + (item.dtaIsDone ? QStringLiteral(" [x]") : QString()));
    }
    return titles;
}

const QString logbookTemplate = QStringLiteral("26:\n\n\u2022 ");

} // namespace

// Rolling daily tasks over, the quick-add and the review's logbook summary, through the use cases
// the program builds: real encrypted stores with keys in the session's keyring, and the fake
// backend on loopback. Every case runs for both kinds of account. The zone is Europe/Madrid
// (set by the test's registration), whose clocks go back on Sunday 25 October 2026.
class RitualsOverTasksTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> stores;
    std::unique_ptr<RemoteFixture::Backend> backend;
    std::optional<TasksApplicationFactory::Applications> apps;
    bool isGoogle = false;
    QUuid user;
    QTranslator english;

    void addDaily(const QDate& day, const QString& title, bool done = false)
    {
        const TaskResultEntity created
            = apps->dailyTasks.create({.dtaUserId = user, .dtaDate = RollOver::dateOf(day), .dtaTitle = title});
        QVERIFY2(created.result, qPrintable(created.firstMessage().value_or(QString())));
        if (done)
            QVERIFY(apps->dailyTasks.setDone(created.dataAs<DailyTaskEntity>()->dtaId, true).result);
    }

    QStringList titlesOn(const QDate& day) const { return titlesOf(apps->dailyTasks.list(RollOver::dateOf(day))); }

    QList<DailyTaskEntity> unfinishedBefore(const QDate& today) const
    {
        const TaskResultEntity found = RollOver::unfinishedBefore(apps->dailyTasks, today);
        if (!found.result)
            qFatal("cannot read earlier days: %s", qPrintable(found.firstMessage().value_or(QString())));
        return *found.dataAs<QList<DailyTaskEntity>>();
    }

    ProjectEntity addProject(const QString& name)
    {
        const TaskResultEntity created = apps->projects.create({.prjUserId = user, .prjName = name});
        if (!created.result)
            qFatal("project not created");
        return *created.dataAs<ProjectEntity>();
    }

    TaskListEntity addList(const ProjectEntity& project, const QString& name, bool isDefault)
    {
        const TaskResultEntity created
            = apps->taskLists.create({.prjId = project.prjId, .talName = name, .talIsDefault = isDefault});
        if (!created.result)
            qFatal("list not created");
        return *created.dataAs<TaskListEntity>();
    }

    QStringList taskTitles(const TaskListEntity& list) const
    {
        QStringList titles;
        const TaskResultEntity listed = apps->tasks.list(list.talId);
        for (const TaskEntity& task : *listed.dataAs<QList<TaskEntity>>())
            titles.append(task.tasTitle);
        return titles;
    }

    QString entryOf(const ProjectEntity& project, const QDate& day) const
    {
        const TaskResultEntity found = apps->bitacora.entriesOn(RollOver::dateOf(day), {project.prjId});
        if (!found.result)
            qFatal("cannot read the logbook");
        return found.dataAs<QHash<QUuid, BitacoraEntryEntity>>()->value(project.prjId).bteContent;
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
        QCOMPARE(QDateTime(QDate(2026, 10, 25), QTime(1, 0)).offsetFromUtc(), 7200);
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void init()
    {
        QFETCH_GLOBAL(bool, google);
        isGoogle = google;
        stores = std::make_unique<QTemporaryDir>();
        backend = std::make_unique<RemoteFixture::Backend>();
        user = google ? FakeBackend::defaultUserId() : QUuid::createUuid();
        RealmConfiguration defaults;
        defaults.fileURL = stores->filePath(QStringLiteral("default.realm"));
        const TaskResultEntity made
            = TasksApplicationFactory(RealmEncryptedConfigurationFactory(std::make_shared<SecretServiceKeychain>(),
                                          std::make_shared<SystemSecureRandom>(), defaults))
                  .make(google, backend->client());
        QVERIFY2(made.result, qPrintable(made.firstMessage().value_or(QString())));
        apps = *made.dataAs<TasksApplicationFactory::Applications>();
    }

    void shouldMoveWhatIsLeftOfSeveralSkippedDaysInOrder()
    {
        const QDate today(2026, 3, 16);
        addDaily(today.addDays(-40), QStringLiteral("too old to look for"));
        addDaily(today.addDays(-6), QStringLiteral("call the bank"));
        addDaily(today.addDays(-3), QStringLiteral("water plants"), true);
        addDaily(today.addDays(-3), QStringLiteral("write report"));
        addDaily(today.addDays(-3), QStringLiteral("pay rent"));
        addDaily(today.addDays(-1), QStringLiteral("book flight"));
        addDaily(today, QStringLiteral("already today"));
        addDaily(today.addDays(1), QStringLiteral("tomorrow's"));

        const QList<DailyTaskEntity> left = unfinishedBefore(today);
        QStringList leftTitles;
        for (const DailyTaskEntity& item : left)
            leftTitles.append(item.dtaTitle);
        QCOMPARE(leftTitles, QStringList({"call the bank", "write report", "pay rent", "book flight"}));

        const RollOver::Outcome outcome = RollOver::moveToToday(apps->dailyTasks, left, today);
        QCOMPARE(outcome.failure, std::nullopt);
        QCOMPARE(outcome.moved, 4);
        QCOMPARE(RollOver::movedNotice(outcome.moved), QStringLiteral("4 daily tasks moved to today."));
        QCOMPARE(titlesOn(today),
            QStringList({"already today", "call the bank", "write report", "pay rent", "book flight"}));
        // What was done stays on its day; nothing is left behind, nothing doubled.
        QCOMPARE(titlesOn(today.addDays(-3)), QStringList({"water plants [x]"}));
        QCOMPARE(titlesOn(today.addDays(-6)), QStringList());
        QCOMPARE(titlesOn(today.addDays(-1)), QStringList());
        QCOMPARE(titlesOn(today.addDays(1)), QStringList({"tomorrow's"}));
        QVERIFY(unfinishedBefore(today).isEmpty());
        // Moving them again finds nothing to move.
        QCOMPARE(RollOver::moveToToday(apps->dailyTasks, unfinishedBefore(today), today).moved, 0);
    }

    void shouldMoveAcrossTheNightTheClocksGoBack()
    {
        // Saturday in summer time, Sunday of 25 hours, Monday in winter time.
        const QDate saturday(2026, 10, 24);
        const QDate sunday(2026, 10, 25);
        const QDate monday(2026, 10, 26);
        addDaily(saturday, QStringLiteral("summer time"));
        addDaily(sunday, QStringLiteral("the long day"));
        addDaily(sunday, QStringLiteral("the long day, done"), true);

        const RollOver::Outcome outcome = RollOver::moveToToday(apps->dailyTasks, unfinishedBefore(monday), monday);
        QCOMPARE(outcome.moved, 2);
        QCOMPARE(titlesOn(monday), QStringList({"summer time", "the long day"}));
        QCOMPARE(titlesOn(sunday), QStringList({"the long day, done [x]"}));
        QCOMPARE(titlesOn(saturday), QStringList());
        // Moved items carry today's noon in winter time.
        const TaskResultEntity listed = apps->dailyTasks.list(RollOver::dateOf(monday));
        const auto* moved = listed.dataAs<QList<DailyTaskEntity>>();
        QVERIFY(moved && !moved->isEmpty());
        QCOMPARE(moved->constFirst().dtaDate.toLocalTime(), QDateTime(monday, QTime(12, 0)));
        QCOMPARE(moved->constFirst().dtaDate.toLocalTime().offsetFromUtc(), 3600);
    }

    void shouldStopAtAFailedMoveWithoutLosingAnything()
    {
        if (!isGoogle)
            QSKIP("the local store moves in one transaction");
        const QDate today(2026, 5, 4);
        addDaily(today.addDays(-2), QStringLiteral("first"));
        addDaily(today.addDays(-1), QStringLiteral("second"));
        const QList<DailyTaskEntity> left = unfinishedBefore(today);
        // The old copy of the second cannot be deleted: it stays where it was and also shows
        // today, rather than being lost.
        backend->http.enqueue(FakeResponse::empty(500), "DELETE",
            QStringLiteral("/v0/daily-tasks/") + RemoteFixture::upper(left.at(1).dtaId));

        const RollOver::Outcome outcome = RollOver::moveToToday(apps->dailyTasks, left, today);
        QCOMPARE(outcome.moved, 1);
        QVERIFY(outcome.failure.has_value());
        QCOMPARE(titlesOn(today), QStringList({"first", "second"}));
        QCOMPARE(titlesOn(today.addDays(-1)), QStringList({"second"}));
        QCOMPARE(titlesOn(today.addDays(-2)), QStringList());
    }

    void shouldQuickAddToTheDefaultListOfTheFirstProject()
    {
        const QuickAdd::Outcome nowhere = QuickAdd::add(*apps, user, QStringLiteral("buy milk"));
        QVERIFY(!nowhere.added);
        QCOMPARE(nowhere.notice,
            QStringLiteral("The task \u201cbuy milk\u201d was not added: you have no project yet. Create one in "
                           "Projects first."));

        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const QuickAdd::Outcome noList = QuickAdd::add(*apps, user, QStringLiteral("buy milk"));
        QVERIFY(!noList.added);
        QCOMPARE(noList.notice,
            QStringLiteral(
                "The task \u201cbuy milk\u201d was not added: the project \u201cHome\u201d has no task list."));

        const TaskListEntity chores = addList(home, QStringLiteral("Chores"), false);
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        const ProjectEntity work = addProject(QStringLiteral("Work"));
        const TaskListEntity inbox = addList(work, QStringLiteral("Inbox"), true);

        const QuickAdd::Outcome added = QuickAdd::add(*apps, user, QStringLiteral("buy milk"));
        QVERIFY(added.added);
        QCOMPARE(added.notice, QStringLiteral("Added \u201cbuy milk\u201d to Home / Errands."));
        QCOMPARE(taskTitles(errands), QStringList({"buy milk"}));
        QCOMPARE(taskTitles(chores), QStringList());

        const QuickAdd::Outcome preferred = QuickAdd::add(*apps, user, QStringLiteral("send invoice"), {work.prjId});
        QCOMPARE(preferred.notice, QStringLiteral("Added \u201csend invoice\u201d to Work / Inbox."));
        QCOMPARE(taskTitles(inbox), QStringList({"send invoice"}));
    }

    void shouldQuickAddIntoTheRightOneOfProjectsNamedAlike()
    {
        const ProjectEntity first = addProject(QStringLiteral("Home"));
        const TaskListEntity inbox = addList(first, QStringLiteral("Inbox"), true);
        const ProjectEntity second = addProject(QStringLiteral("Home"));
        const TaskListEntity chores = addList(second, QStringLiteral("Chores"), true);
        const TaskListEntity garden = addList(second, QStringLiteral("Garden"), false);
        const QuickAdd::OpenPlace open {second.prjId, garden.talId};

        QVERIFY(QuickAdd::add(*apps, user, QStringLiteral("rake leaves"), open).added);
        QVERIFY(QuickAdd::add(*apps, user, QStringLiteral("fix the gate #Home"), open).added);
        // Only the other Home has an Inbox: the line goes there rather than to a list it did not name.
        QVERIFY(QuickAdd::add(*apps, user, QStringLiteral("post the letter #Home /inbox"), open).added);
        QVERIFY(QuickAdd::add(*apps, user, QStringLiteral("read the mail /inbox"), open).added);
        QCOMPARE(taskTitles(garden), QStringList({"rake leaves"}));
        QCOMPARE(taskTitles(chores), QStringList({"fix the gate"}));
        QStringList inInbox = taskTitles(inbox);
        inInbox.sort();
        QCOMPARE(inInbox, QStringList({"post the letter", "read the mail"}));
    }

    void shouldQuickAddWhereTheLineSays()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity chores = addList(home, QStringLiteral("Chores"), false);
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        const ProjectEntity work = addProject(QStringLiteral("Side Work"));
        const TaskListEntity inbox = addList(work, QStringLiteral("Inbox"), true);
        // Monday 16 March 2026.
        QuickAddParser::Options monday;
        monday.now = QDateTime(QDate(2026, 3, 16), QTime(10, 0));

        const QuickAdd::Outcome rent
            = QuickAdd::add(*apps, user, QStringLiteral("Pay rent tomorrow #home !1"), {}, monday);
        QVERIFY2(rent.added, qPrintable(rent.notice));
        QCOMPARE(rent.notice, QStringLiteral("Added \u201cPay rent\u201d to Home / Errands."));
        const QList<TaskEntity> storedRent = *apps->tasks.list(errands.talId).dataAs<QList<TaskEntity>>();
        QCOMPARE(storedRent.size(), 1);
        QCOMPARE(storedRent.constFirst().tasTitle, QStringLiteral("Pay rent"));
        QCOMPARE(storedRent.constFirst().tasDueDate, QDateTime(QDate(2026, 3, 17), QTime(0, 0), Qt::UTC));
        QCOMPARE(storedRent.constFirst().tasEisenhowerTag, EisenhowerTagEnum::doIt);

        // A list names its project; the rule and the reminder go to the store with the task.
        const QuickAdd::Outcome standup = QuickAdd::add(*apps, user,
            QStringLiteral("Standup every weekday at 9:30 /inbox remind me 10m before"), {home.prjId}, monday);
        QVERIFY2(standup.added, qPrintable(standup.notice));
        QCOMPARE(standup.notice, QStringLiteral("Added \u201cStandup\u201d to Side Work / Inbox."));
        QCOMPARE(standup.task->talId, inbox.talId);
        QCOMPARE(standup.task->tasRecurrence->weekdays, QList<int>({1, 2, 3, 4, 5}));
        QCOMPARE(standup.task->tasReminderMinutesBefore, 10);
        const QList<TaskEntity> storedStandup = *apps->tasks.list(inbox.talId).dataAs<QList<TaskEntity>>();
        QCOMPARE(storedStandup.size(), 1);
        QCOMPARE(storedStandup.constFirst().tasDueDate, QDateTime(QDate(2026, 3, 16), QTime(9, 30)));

        // Nothing is filed by guesswork: each of these adds nothing and says why.
        const QStringList refused {
            QuickAdd::add(*apps, user, QStringLiteral("Prune #Garden"), {}, monday).notice,
            QuickAdd::add(*apps, user, QStringLiteral("Prune #Home /Roses"), {}, monday).notice,
            QuickAdd::add(*apps, user, QStringLiteral("tomorrow !2"), {}, monday).notice,
        };
        QCOMPARE(refused,
            QStringList({"The task \u201cPrune #Garden\u201d was not added: you have no project named "
                         "\u201cGarden\u201d.",
                "The task \u201cPrune #Home /Roses\u201d was not added: the project \u201cHome\u201d has no list named "
                "\u201cRoses\u201d.",
                "The task \u201ctomorrow !2\u201d was not added: it needs a title besides the day, time and other "
                "details."}));
        QCOMPARE(taskTitles(errands), QStringList({"Pay rent"}));
        QCOMPARE(taskTitles(chores), QStringList());
        QCOMPARE(taskTitles(inbox), QStringList({"Standup"}));
    }

    void shouldAppendTheReviewWithoutTouchingWhatWasTyped_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("summary");
        QTest::newRow("English") << "en"
                                 << "Review of the day\nDone:\n- stretch\nTasks completed:\n- Home\n  - fix the tap\n"
                                    "  - water plants\n- Work\n  - send report\nMeets:\n- 09:30 Standup\nLeft for "
                                    "another day:\n- call mum";
        QTest::newRow("Spanish") << "es"
                                 << "Repaso del día\nHecho:\n- stretch\nTareas completadas:\n- Home\n  - fix the tap\n"
                                    "  - water plants\n- Work\n  - send report\nReuniones:\n- 09:30 Standup\n"
                                    "Pendiente para otro día:\n- call mum";
    }

    void shouldAppendTheReviewWithoutTouchingWhatWasTyped()
    {
        QFETCH(QString, language);
        QFETCH(QString, summary);
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/i18n/tolvane_") + language));
        QCoreApplication::installTranslator(&translator);
        const auto removeTranslator = qScopeGuard([&translator] { QCoreApplication::removeTranslator(&translator); });

        const QDate day(2026, 10, 26);
        // Project tasks done that day (and around it, by the local clock), grouped by project in
        // the projects' order, each project's in the order they were done.
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const ProjectEntity work = addProject(QStringLiteral("Work"));
        addProject(QStringLiteral("Idle"));
        const TaskListEntity chores = addList(home, QStringLiteral("Chores"), true);
        const TaskListEntity office = addList(work, QStringLiteral("Office"), true);
        auto clock = std::make_shared<SettableClock>(QDateTime());
        apps->tasks.clock = clock;
        const auto doneAt = [&](const TaskListEntity& list, const QString& title, const QDateTime& when) {
            TaskEntity task {.prjId = list.prjId, .talId = list.talId, .tasTitle = title};
            QVERIFY(apps->tasks.create(task).result);
            clock->set(when);
            QVERIFY(apps->tasks.markDone(task.tasId).result);
        };
        doneAt(office, QStringLiteral("send report"), QDateTime(day, QTime(0, 30)));
        doneAt(chores, QStringLiteral("fix the tap"), QDateTime(day, QTime(9, 0)));
        doneAt(chores, QStringLiteral("water plants"), QDateTime(day, QTime(23, 50)));
        doneAt(chores, QStringLiteral("yesterday's"), QDateTime(day, QTime(0, 0)).addSecs(-60));
        QVERIFY(apps->tasks.create({.prjId = home.prjId, .talId = chores.talId, .tasTitle = QStringLiteral("open")})
                    .result);
        const TaskResultEntity completed = apps->agenda.completedOn(user, day);
        QVERIFY(completed.result);
        const TaskResultEntity projects = apps->projects.list(user);
        const QString text = DayReview::summary({day,
            {{.dtaTitle = QStringLiteral("stretch"), .dtaIsDone = true}, {.dtaTitle = QStringLiteral("call mum")}},
            {QStringLiteral("09:30 Standup")},
            DayReview::byProject(*completed.dataAs<QList<TaskEntity>>(), *projects.dataAs<QList<ProjectEntity>>())});
        QCOMPARE(text, summary);

        const ProjectEntity& typed = home;
        const ProjectEntity& empty = work;
        // Trailing spaces and no final line break: kept to the character.
        const QString mine = QStringLiteral("26:\n\n\u2022 fixed the boiler  \n\u2022 ideas: ");
        QVERIFY(apps->bitacora.saveText(typed.prjId, RollOver::dateOf(day), mine, user).result);

        QVERIFY(DayReview::writeToLogbook(apps->bitacora, typed.prjId, user, day, text, logbookTemplate).result);
        QVERIFY(DayReview::writeToLogbook(apps->bitacora, empty.prjId, user, day, text, logbookTemplate).result);
        QCOMPARE(entryOf(typed, day), mine + QStringLiteral("\n\n") + summary);
        QCOMPARE(entryOf(empty, day), logbookTemplate + summary);

        // Written twice, it is there once; an edited summary is added after the first.
        QVERIFY(DayReview::writeToLogbook(apps->bitacora, typed.prjId, user, day, text, logbookTemplate).result);
        QCOMPARE(entryOf(typed, day), mine + QStringLiteral("\n\n") + summary);
        QVERIFY(DayReview::writeToLogbook(
            apps->bitacora, typed.prjId, user, day, QStringLiteral("late call"), logbookTemplate)
                    .result);
        QCOMPARE(entryOf(typed, day), mine + QStringLiteral("\n\n") + summary + QStringLiteral("\n\nlate call"));
        // The day before has no entry made for it.
        QCOMPARE(entryOf(typed, day.addDays(-1)), QString());
    }
};

TOLVANE_TEST_MAIN(RitualsOverTasksTest)
#include "RitualsOverTasksTest.moc"
