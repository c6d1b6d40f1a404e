#include "MainWindow.h"
#include "screens/projects/TaskDayViewSidebarRowView.h"
#include "screens/projects/TaskRowView.h"
#include "screens/projects/TaskScheduleEditor.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/WindowSteps.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

// "Today" and "Upcoming" in the projects workspace, driven through the real widgets over real
// encrypted stores: their counts, their rows (ticked and rescheduled as anywhere else), and the
// counts following every change.
class TaskDayViewsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 10000};
    std::optional<TasksApplicationFactory::Applications> apps;
    QUuid user;
    QDate today;

    TaskDayViewSidebarRowView* dayView(const QString& name)
    {
        return steps.waitFor<TaskDayViewSidebarRowView>(QStringLiteral("dayView:") + name);
    }

    QString countOf(const QString& name)
    {
        return dayView(name)->findChild<QLabel*>(QStringLiteral("dayViewCount"))->text();
    }

    // The task rows the detail pane shows now, top to bottom, with the group headings.
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

    void addTask(const TaskListEntity& list, const QString& title, std::optional<QDate> due)
    {
        TaskEntity task {.prjId = list.prjId, .talId = list.talId, .tasTitle = title};
        if (due)
            task.tasDueDate = TaskEntity::dueOnDay(*due);
        QVERIFY(apps->tasks.create(task).result);
    }

private Q_SLOTS:
    void init()
    {
        app = std::make_unique<AppFixture>();
        app->storeLocalUser();
        const AppFixture::Tasks tasks = app->signedInTasks();
        apps = tasks.applications;
        user = tasks.userId;
        today = QDate::currentDate();
    }

    void cleanup()
    {
        window.reset();
        app.reset();
    }

    void shouldCountAndListWhatIsDueAndFollowEveryChange()
    {
        const auto home = stored<ProjectEntity>(apps->projects.create({.prjUserId = user, .prjName = "Home"}));
        const auto work = stored<ProjectEntity>(apps->projects.create({.prjUserId = user, .prjName = "Work"}));
        const auto chores = stored<TaskListEntity>(apps->taskLists.create({.prjId = home.prjId, .talName = "Chores"}));
        const auto office = stored<TaskListEntity>(apps->taskLists.create({.prjId = work.prjId, .talName = "Office"}));
        addTask(chores, QStringLiteral("buy bread"), today);
        addTask(office, QStringLiteral("pay rent"), today.addDays(-2));
        addTask(chores, QStringLiteral("call Ana"), today.addDays(1));
        addTask(office, QStringLiteral("plan trip"), today.addDays(7));
        addTask(office, QStringLiteral("far away"), today.addDays(8));
        addTask(chores, QStringLiteral("no date"), std::nullopt);

        steps.openProjects(app->services());
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("today")), QStringLiteral("2"), 10000);
        QCOMPARE(countOf(QStringLiteral("upcoming")), QStringLiteral("2"));
        // One of today's is late, which the count says.
        QVERIFY(dayView(QStringLiteral("today"))
                    ->findChild<QLabel*>(QStringLiteral("dayViewCount"))
                    ->property("overdue")
                    .toBool());

        QTest::mouseClick(dayView(QStringLiteral("today")), Qt::LeftButton);
        QTRY_COMPARE(steps.waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"tasks-day-view-today");
        QTRY_COMPARE(shownRows(),
            (QStringList {"# tasks-due-overdue", "pay rent", "# " + QLocale().toString(today, QLocale::LongFormat),
                "buy bread"}));
        // Each row says where the task lives.
        QStringList places;
        for (QLabel* place :
            steps.waitFor(QStringLiteral("taskDays"))->findChildren<QLabel*>(QStringLiteral("taskPlace")))
            places.append(place->text());
        QCOMPARE(places, (QStringList {"Work \u203a Office", "Home \u203a Chores"}));

        // Ticked in the view, as in a list: gone from it and from the count.
        TaskRowView* bread = steps.waitFor<TaskRowView>(QStringLiteral("task:buy bread"));
        bread->findChild<QCheckBox*>(QStringLiteral("taskDone"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(), (QStringList {"# tasks-due-overdue", "pay rent"}), 10000);
        QCOMPARE(countOf(QStringLiteral("today")), QStringLiteral("1"));
        for (const TaskEntity& task : *apps->tasks.list(chores.talId).dataAs<QList<TaskEntity>>())
            QCOMPARE(task.tasIsDone, task.tasTitle == u"buy bread");

        // Upcoming by keyboard: one group per day that has tasks.
        dayView(QStringLiteral("upcoming"))->setFocus();
        QTest::keyClick(dayView(QStringLiteral("upcoming")), Qt::Key_Return);
        QTRY_COMPARE(steps.waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"tasks-day-view-upcoming");
        QTRY_COMPARE(shownRows(),
            (QStringList {"# tasks-day-view-tomorrow · " + QLocale().toString(today.addDays(1), QLocale::LongFormat),
                "call Ana", "# " + QLocale().toString(today.addDays(7), QLocale::LongFormat), "plan trip"}));

        // Moved to today through the row's schedule popover: both counts follow.
        TaskRowView* call = steps.waitFor<TaskRowView>(QStringLiteral("task:call Ana"));
        call->findChild<QToolButton*>(QStringLiteral("taskSchedule"))->click();
        auto* editor = call->findChild<TaskScheduleEditor*>(QStringLiteral("taskScheduleEditor"));
        QVERIFY(editor);
        editor->findChild<QDateEdit*>(QStringLiteral("scheduleDay"))->setDate(today);
        editor->findChild<QPushButton*>(QStringLiteral("scheduleSave"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(shownRows(),
            (QStringList {"# " + QLocale().toString(today.addDays(7), QLocale::LongFormat), "plan trip"}), 10000);
        QCOMPARE(countOf(QStringLiteral("upcoming")), QStringLiteral("1"));
        QCOMPARE(countOf(QStringLiteral("today")), QStringLiteral("2"));

        // A change made elsewhere (an undo, a quick add) reaches the counts through the
        // workspace's notification.
        TaskEntity late {.prjId = home.prjId, .talId = chores.talId, .tasTitle = QStringLiteral("late")};
        late.tasDueDate = TaskEntity::dueOnDay(today.addDays(-1));
        QVERIFY(apps->tasks.create(late).result);
        app->notificationCenter().post(NotificationName::tasksDidChange, {});
        QTRY_COMPARE_WITH_TIMEOUT(countOf(QStringLiteral("today")), QStringLiteral("3"), 10000);
    }
};

TOLVANE_GUI_TEST_MAIN(TaskDayViewsTest)

#include "TaskDayViewsTest.moc"
