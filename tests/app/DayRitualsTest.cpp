#include "DayRituals.h"

#include "ContentView.h"
#include "MainWindow.h"
#include "rituals/RitualSettings.h"
#include "rituals/RollOver.h"
#include "screens/bitacora/BitacoraProjectRowView.h"
#include "screens/bitacora/BitacoraScheduler.h"
#include "screens/bitacora/BitacoraView.h"
#include "screens/rituals/DayReviewView.h"
#include "screens/rituals/MorningPlanView.h"
#include "screens/schedule/DailyEventsView.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTranslator>

namespace {

// A Wednesday: every project is shown.
const QDate today(2026, 3, 18);

QStringList titlesOf(const TaskResultEntity& listed)
{
    QStringList titles;
    for (const DailyTaskEntity& item : *listed.dataAs<QList<DailyTaskEntity>>())
        titles.append(item.dtaTitle);
    return titles;
}

} // namespace

// The rituals as the window runs them: the plan at the first start of a day, moving by hand and
// by themselves, the review writing to the logbook, opening a day from outside.
class DayRitualsTest : public QObject {
    Q_OBJECT

    QTranslator english;
    std::unique_ptr<AppFixture> app;
    std::optional<TasksApplicationFactory::Applications> apps;
    QUuid user;
    std::shared_ptr<SettableClock> clock;

    void addDaily(const QDate& day, const QString& title, bool done = false)
    {
        const TaskResultEntity created
            = apps->dailyTasks.create({.dtaUserId = user, .dtaDate = RollOver::dateOf(day), .dtaTitle = title});
        QVERIFY(created.result);
        if (done)
            QVERIFY(apps->dailyTasks.setDone(created.dataAs<DailyTaskEntity>()->dtaId, true).result);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void init()
    {
        app = std::make_unique<AppFixture>();
        app->storeLocalUser();
        const AppServices::TasksSession session = app->services().tasksSession();
        QVERIFY(session.user && session.applications.result);
        user = QUuid::fromString(session.user->usrId);
        apps = *session.applications.dataAs<TasksApplicationFactory::Applications>();
        clock = std::make_shared<SettableClock>(QDateTime(today, QTime(8, 15)));
    }

    void cleanup() { app.reset(); }

    void shouldOpenThePlanOnceADayAndMoveWhatIsLeft()
    {
        addDaily(today.addDays(-3), QStringLiteral("call the bank"));
        addDaily(today.addDays(-1), QStringLiteral("book flight"));
        addDaily(today.addDays(-1), QStringLiteral("stretch"), true);
        addDaily(today, QStringLiteral("standup notes"));
        MainWindow window(app->services());
        window.show();
        {
            DayRituals rituals(app->services(), &window, clock);
            rituals.atStart(false);
            QVERIFY(rituals.wasFirstStartOfDay());
            MorningPlanView* plan = rituals.plan();
            QVERIFY(plan && plan->isVisible());
            QTRY_VERIFY(!plan->isLoading());
            const QList<QWidget*> rows = plan->findChildren<QWidget*>(QStringLiteral("planEarlierRow"));
            QCOMPARE(rows.size(), 2);
            QCOMPARE(plan->findChild<QLabel*>(QStringLiteral("planChecklist"))->text(),
                QStringLiteral("\u2022 standup notes"));

            // One by hand, then the rest.
            QPushButton* moveFirst = rows.constFirst()->findChild<QPushButton*>(QStringLiteral("planMoveButton"));
            moveFirst->click();
            QTRY_COMPARE(plan->notice()->text(), QStringLiteral("1 daily task moved to today."));
            QTRY_COMPARE(plan->findChildren<QWidget*>(QStringLiteral("planEarlierRow")).size(), 1);
            QCOMPARE(titlesOf(apps->dailyTasks.list(RollOver::dateOf(today))),
                QStringList({"standup notes", "call the bank"}));
            QTRY_VERIFY(plan->moveAllButton()->isVisible());
            plan->moveToToday(plan->day().earlierUnfinished);
            QTRY_COMPARE(plan->findChildren<QWidget*>(QStringLiteral("planEarlierRow")).size(), 0);
            QCOMPARE(window.statusBar()->currentMessage(), QStringLiteral("1 daily task moved to today."));
            QCOMPARE(titlesOf(apps->dailyTasks.list(RollOver::dateOf(today))),
                QStringList({"standup notes", "call the bank", "book flight"}));
            plan->close();
        }
        // Later the same day: no plan opens by itself; the menu still opens it.
        clock->set(QDateTime(today, QTime(17, 0)));
        DayRituals again(app->services(), &window, clock);
        again.atStart(false);
        QVERIFY(!again.wasFirstStartOfDay());
        QVERIFY(!again.plan());
        window.findChild<QAction*>(QStringLiteral("openPlanAction"))->trigger();
        QVERIFY(again.plan() && again.plan()->isVisible());
        again.plan()->close();
    }

    // The plan lists the project tasks due today and the late ones, with the same query as the
    // workspace's "Today": late first, a day's untimed tasks before its timed ones.
    void shouldListTheTasksDueTodayInThePlan()
    {
        const ProjectEntity home
            = *apps->projects.create({.prjUserId = user, .prjName = QStringLiteral("Home")}).dataAs<ProjectEntity>();
        const TaskListEntity chores
            = *apps->taskLists.create({.prjId = home.prjId, .talName = QStringLiteral("Chores")})
                   .dataAs<TaskListEntity>();
        const auto add = [&](const QString& title, const QDateTime& due, bool hasTime) {
            TaskEntity task {.prjId = home.prjId, .talId = chores.talId, .tasTitle = title, .tasDueDate = due};
            task.tasDueHasTime = hasTime;
            if (!apps->tasks.create(task).result)
                qFatal("task not created");
            return task;
        };
        add(QStringLiteral("dentist"), QDateTime(today, QTime(16, 30)).toUTC(), true);
        add(QStringLiteral("pay rent"), TaskEntity::dueOnDay(today.addDays(-2)), false);
        add(QStringLiteral("buy bread"), TaskEntity::dueOnDay(today), false);
        add(QStringLiteral("later"), TaskEntity::dueOnDay(today.addDays(1)), false);
        QVERIFY(apps->tasks.markDone(add(QStringLiteral("done"), TaskEntity::dueOnDay(today), false).tasId).result);

        MainWindow window(app->services());
        window.show();
        DayRituals rituals(app->services(), &window, clock);
        rituals.atStart(false);
        MorningPlanView* plan = rituals.plan();
        QVERIFY(plan);
        QTRY_VERIFY(!plan->isLoading());
        QCOMPARE(plan->dueTasks()->text(),
            QStringLiteral("\u2022 Overdue: pay rent (Home) \u2014 %1\n\u2022 buy bread (Home)\n\u2022 dentist (Home) "
                           "\u2014 %2")
                .arg(QLocale().toString(today.addDays(-2), QLocale::ShortFormat),
                    QLocale().toString(QTime(16, 30), QLocale::ShortFormat)));
        plan->close();
    }

    void shouldMoveByThemselvesWhenTheUserChoseSo()
    {
        UserDefaults defaults = app->userDefaults();
        defaults.setValue(RitualSettings::autoMoveUnfinishedKey, true);
        defaults.setValue(RitualSettings::morningPlanAtFirstStartKey, false);
        defaults.setValue(RitualSettings::lastStartDayKey, today.addDays(-4).toString(Qt::ISODate));
        addDaily(today.addDays(-4), QStringLiteral("one"));
        addDaily(today.addDays(-2), QStringLiteral("two"));
        addDaily(today.addDays(-2), QStringLiteral("three"));
        MainWindow window(app->services());
        window.show();
        DayRituals rituals(app->services(), &window, clock);
        QSignalSpy rolled(&rituals, &DayRituals::rolledOver);
        rituals.atStart(false);
        QVERIFY(!rituals.plan());
        QVERIFY(!rolled.isEmpty() || rolled.wait(30000));
        QCOMPARE(rolled.constFirst().constFirst().toInt(), 3);
        QCOMPARE(rituals.lastNotice(), QStringLiteral("3 daily tasks moved to today."));
        QCOMPARE(titlesOf(apps->dailyTasks.list(RollOver::dateOf(today))), QStringList({"one", "two", "three"}));
        QCOMPARE(defaults.value(RitualSettings::lastStartDayKey).toString(), QStringLiteral("2026-03-18"));
    }

    void shouldWriteTheEditedReviewAfterWhatWasTyped()
    {
        addDaily(today, QStringLiteral("stretch"), true);
        addDaily(today, QStringLiteral("call mum"));
        const TaskResultEntity created = apps->projects.create({.prjUserId = user, .prjName = QStringLiteral("Home")});
        const ProjectEntity home = *created.dataAs<ProjectEntity>();
        const QString typed = QStringLiteral("18:\n\n\u2022 boiler fixed");
        QVERIFY(apps->bitacora.saveText(home.prjId, RollOver::dateOf(today), typed, user).result);

        // The logbook already open on the day reads the entry again once the review wrote to it.
        BitacoraView logbook(app->services(), BitacoraView::Environment {clock, BitacoraScheduler::timers(), {}});
        QSignalSpy logbookLoaded(&logbook, &BitacoraView::loaded);
        logbook.show();
        QVERIFY(!logbookLoaded.isEmpty() || logbookLoaded.wait(30000));
        QCOMPARE(logbook.findChildren<BitacoraProjectRowView*>().size(), 1);
        QCOMPARE(logbook.findChildren<BitacoraProjectRowView*>().constFirst()->text(), typed);
        logbookLoaded.clear();

        MainWindow window(app->services());
        DayRituals rituals(app->services(), &window, clock);
        window.findChild<QAction*>(QStringLiteral("openReviewAction"))->trigger();
        DayReviewView* review = rituals.review();
        QVERIFY(review);
        QTRY_VERIFY(!review->isLoading());
        QCOMPARE(review->findChild<QLabel*>(QStringLiteral("reviewDone"))->text(), QStringLiteral("\u2022 stretch"));
        QCOMPARE(review->findChild<QLabel*>(QStringLiteral("reviewLeft"))->text(), QStringLiteral("\u2022 call mum"));
        QCOMPARE(review->projectChoices().size(), 1);
        QCOMPARE(review->summaryEditor()->toPlainText(),
            QStringLiteral("Review of the day\nDone:\n- stretch\nLeft for another day:\n- call mum"));

        review->summaryEditor()->appendPlainText(QStringLiteral("Good day."));
        QSignalSpy written(review, &DayReviewView::written);
        review->writeButton()->click();
        QVERIFY(!written.isEmpty() || written.wait(30000));
        QCOMPARE(written.constFirst().constFirst().toInt(), 1);
        QCOMPARE(review->notice()->text(), QStringLiteral("Added to 1 logbook entries."));
        const TaskResultEntity entries = apps->bitacora.entriesOn(RollOver::dateOf(today), {home.prjId});
        const QString expected = typed
            + QStringLiteral("\n\nReview of the day\nDone:\n- stretch\nLeft for another day:\n- call mum\nGood day.");
        using Entries = QHash<QUuid, BitacoraEntryEntity>;
        QCOMPARE(entries.dataAs<Entries>()->value(home.prjId).bteContent, expected);
        QVERIFY(!logbookLoaded.isEmpty() || logbookLoaded.wait(30000));
        QTRY_COMPARE(logbook.findChildren<BitacoraProjectRowView*>().constFirst()->text(), expected);
    }

    void shouldOpenTheScheduleOnADayAskedFromOutside()
    {
        MainWindow window(app->services());
        window.show();
        window.contentView()->openDate(QDate(2026, 12, 1));
        QCOMPARE(window.contentView()->selectedSidebarItem(), std::optional(SidebarItemEnum::schedule));
        auto* schedule = qobject_cast<DailyEventsView*>(window.contentView()->screen(SidebarItemEnum::schedule));
        QVERIFY(schedule);
        QTRY_COMPARE(schedule->selectedDate(), QDate(2026, 12, 1));
        // Once it runs, another day asked moves it there.
        window.contentView()->openDate(QDate(2027, 1, 4));
        QTRY_COMPARE(schedule->selectedDate(), QDate(2027, 1, 4));
    }

    void shouldFireTheNextReminderAtItsHour()
    {
        // 08:15 -> 09:00 the same day; 18:00 -> 09:00 the next; at 09:00 itself, the next day's.
        QCOMPARE(DayRituals::msUntilNextHour(QDateTime(today, QTime(8, 15)), 9), qint64(45 * 60 * 1000));
        QCOMPARE(DayRituals::msUntilNextHour(QDateTime(today, QTime(18, 0)), 9), qint64(15 * 3600 * 1000));
        QCOMPARE(DayRituals::msUntilNextHour(QDateTime(today, QTime(9, 0)), 9), qint64(24 * 3600 * 1000));
    }
};

TOLVANE_GUI_TEST_MAIN(DayRitualsTest)
#include "DayRitualsTest.moc"
