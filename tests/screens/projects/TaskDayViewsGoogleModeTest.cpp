#include "MainWindow.h"
#include "screens/projects/TaskDayViewSidebarRowView.h"
#include "screens/projects/TaskRowView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/WindowSteps.h"

#include <QCheckBox>
#include <QLabel>

// "Today" and "Upcoming" for a Google account: the tasks live on the real server (over a
// throwaway PostgreSQL), which answers by list, so the views gather them list by list; day-only
// and timed tasks, counts, and a tick that the server keeps and the counts follow.
class TaskDayViewsGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 15000};
    std::optional<TasksApplicationFactory::Applications> apps;
    QDate today;

    TaskDayViewSidebarRowView* dayView(const QString& name)
    {
        return steps.waitFor<TaskDayViewSidebarRowView>(QStringLiteral("dayView:") + name);
    }

    QLabel* countLabel(const QString& name)
    {
        return dayView(name)->findChild<QLabel*>(QStringLiteral("dayViewCount"));
    }
    QString countOf(const QString& name) { return countLabel(name)->text(); }

    QStringList shownRows()
    {
        QStringList shown;
        QWidget* body = steps.waitFor(QStringLiteral("taskDays"));
        for (QObject* child : body->children()) {
            if (auto* row = qobject_cast<TaskRowView*>(child))
                shown.append(row->task().tasTitle);
            else if (child->objectName() == QLatin1String("dayGroup"))
                shown.append(QStringLiteral("# ") + static_cast<QLabel*>(child)->text());
        }
        return shown;
    }

    // A day-only task on that day, or, with a time, a timed one at that local time of that day.
    TaskEntity addTask(const TaskListEntity& list, const QString& title, std::optional<QDate> due,
        std::optional<QTime> at = std::nullopt)
    {
        TaskEntity task {.prjId = list.prjId, .talId = list.talId, .tasTitle = title};
        if (due && at) {
            task.tasDueDate = QDateTime(*due, *at).toUTC();
            task.tasDueHasTime = true;
        } else if (due) {
            task.tasDueDate = TaskEntity::dueOnDay(*due);
        }
        return stored<TaskEntity>(apps->tasks.create(task));
    }

private Q_SLOTS:
    void initTestCase()
    {
        google = std::make_unique<GoogleAccountFixture>();
        QVERIFY(google->signIn().result);
        const AppServices::TasksSession session = google->app().services().tasksSession();
        QVERIFY(session.user && session.user->usrIsGoogleAccount && session.applications.result);
        apps = *session.applications.dataAs<TasksApplicationFactory::Applications>();
    }

    void cleanupTestCase()
    {
        window.reset();
        apps.reset();
        google.reset();
    }

    void shouldCountAndListTheServersTasksAndFollowATick()
    {
        today = QDate::currentDate();
        const QUuid user = google->backendUser();
        const auto home = stored<ProjectEntity>(apps->projects.create({.prjUserId = user, .prjName = "Home"}));
        const auto work = stored<ProjectEntity>(apps->projects.create({.prjUserId = user, .prjName = "Work"}));
        const auto chores = stored<TaskListEntity>(apps->taskLists.create({.prjId = home.prjId, .talName = "Chores"}));
        const auto office = stored<TaskListEntity>(apps->taskLists.create({.prjId = work.prjId, .talName = "Office"}));
        const auto errands
            = stored<TaskListEntity>(apps->taskLists.create({.prjId = work.prjId, .talName = "Errands"}));
        // Noon and the small hours: times of the day itself, whatever the hour the test runs.
        addTask(chores, QStringLiteral("buy bread"), today);
        addTask(office, QStringLiteral("standup"), today, QTime(12, 0));
        addTask(office, QStringLiteral("pay rent"), today.addDays(-3));
        addTask(errands, QStringLiteral("return parcel"), today.addDays(-1), QTime(9, 30));
        const TaskEntity call = addTask(chores, QStringLiteral("call Ana"), today.addDays(1), QTime(1, 0));
        addTask(errands, QStringLiteral("plan trip"), today.addDays(7));
        addTask(office, QStringLiteral("far away"), today.addDays(8));
        addTask(office, QStringLiteral("no date"), std::nullopt);
        const TaskEntity done = addTask(chores, QStringLiteral("already done"), today);
        QVERIFY(apps->tasks.markDone(done.tasId).result);

        steps.show(google->app().services())->resize(1100, 750);
        steps.openProjects(google->app().services());
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("today")), QStringLiteral("4"), 20000);
        QCOMPARE(countOf(QStringLiteral("upcoming")), QStringLiteral("2"));
        QVERIFY(countLabel(QStringLiteral("today"))->property("overdue").toBool());

        QTest::mouseClick(dayView(QStringLiteral("today")), Qt::LeftButton);
        QTRY_COMPARE(steps.waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"tasks-day-view-today");
        // Overdue first, oldest first; then today's, the day-only one before the timed one.
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(),
            (QStringList {"# tasks-due-overdue", "pay rent", "return parcel",
                "# " + QLocale().toString(today, QLocale::LongFormat), "buy bread", "standup"}),
            20000);

        // Ticked in the view: the server keeps it, and both the rows and the count follow.
        TaskRowView* rent = steps.waitFor<TaskRowView>(QStringLiteral("task:pay rent"));
        rent->findChild<QCheckBox*>(QStringLiteral("taskDone"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(),
            (QStringList {"# tasks-due-overdue", "return parcel", "# " + QLocale().toString(today, QLocale::LongFormat),
                "buy bread", "standup"}),
            20000);
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("today")), QStringLiteral("3"), 20000);
        QVERIFY(countLabel(QStringLiteral("today"))->property("overdue").toBool());
        for (const TaskEntity& task : stored<QList<TaskEntity>>(apps->tasks.list(office.talId)))
            QCOMPARE(task.tasIsDone, task.tasTitle == u"pay rent");

        // The one overdue left, ticked too: nothing is late any more.
        steps.waitFor<TaskRowView>(QStringLiteral("task:return parcel"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("today")), QStringLiteral("2"), 20000);
        QTRY_VERIFY(!countLabel(QStringLiteral("today"))->property("overdue").toBool());

        QTest::mouseClick(dayView(QStringLiteral("upcoming")), Qt::LeftButton);
        QTRY_COMPARE(steps.waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"tasks-day-view-upcoming");
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(),
            (QStringList {"# tasks-day-view-tomorrow · " + QLocale().toString(today.addDays(1), QLocale::LongFormat),
                "call Ana", "# " + QLocale().toString(today.addDays(7), QLocale::LongFormat), "plan trip"}),
            20000);
        steps.waitFor<TaskRowView>(QStringLiteral("task:call Ana"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("upcoming")), QStringLiteral("1"), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(),
            (QStringList {"# " + QLocale().toString(today.addDays(7), QLocale::LongFormat), "plan trip"}), 20000);
        QVERIFY(stored<TaskEntity>(apps->tasks.find(call.tasId)).tasIsDone);
        QCOMPARE(countOf(QStringLiteral("today")), QStringLiteral("2"));
    }
};

TOLVANE_GUI_TEST_MAIN(TaskDayViewsGoogleModeTest)
#include "TaskDayViewsGoogleModeTest.moc"
