#include "ContentView.h"
#include "InformationConsoleView.h"
#include "MainWindow.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/ProjectsView.h"
#include "screens/projects/TaskRowView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/settings/UserProfileChipView.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>

#include <stdexcept>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;

namespace {

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

} // namespace

// The projects workspace driven through its real widgets, over real encrypted stores.
class ProjectsWorkspaceTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<MainWindow> window;

    ProjectsView* openProjects()
    {
        window = std::make_unique<MainWindow>(app->services());
        window->show();
        window->contentView()->select(SidebarItemEnum::projects);
        auto* view = waitFor<ProjectsView>(QStringLiteral("projectsView"));
        if (!QTest::qWaitFor([view] { return !view->isLoading(); }, 10000))
            throw std::runtime_error("the projects workspace never finished loading");
        return view;
    }

    template <typename T = QWidget> T* waitFor(const QString& objectName)
    {
        // Thrown, so that QtTest fails the test function that waited.
        T* found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = window->findChild<T*>(objectName)) != nullptr; }, 10000))
            throw std::runtime_error("nothing named " + objectName.toStdString() + " showed up");
        return found;
    }

    void waitGone(const QString& objectName)
    {
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QWidget*>(objectName) == nullptr, 10000);
    }

    void addInline(const QString& rowName, const QString& text)
    {
        auto* row = waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:") + rowName);
        if (!row->isEditing())
            row->findChild<QPushButton*>()->click();
        auto* field = row->findChild<QLineEdit*>();
        QTest::qWaitFor([field] { return field->isEnabled(); }, 10000);
        QTest::keyClicks(field, text);
        QTest::keyClick(field, Qt::Key_Return);
    }

    QString sidebarState() { return waitFor<QLabel>(QStringLiteral("sidebarState"))->text(); }

    // A project with one list, opened in the detail pane.
    void openListOf(const QString& project, const QString& list)
    {
        addInline(QStringLiteral("projects-add-button"), project);
        waitFor(QStringLiteral("project:") + project);
        addInline(QStringLiteral("task-lists-add-button"), list);
        QTest::mouseClick(waitFor(QStringLiteral("list:") + list), Qt::LeftButton);
        QTRY_COMPARE(waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), list);
    }

    TaskResultEntity storedTasksOf(const QString& listName)
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        for (const ProjectEntity& project : listed<ProjectEntity>(apps.projects.list(QUuid::fromString(user.usrId)))) {
            for (const TaskListEntity& list : listed<TaskListEntity>(apps.taskLists.list(project.prjId))) {
                if (list.talName == listName)
                    return apps.tasks.list(list.talId);
            }
        }
        return TaskResultEntity::applicationFailure(QStringLiteral("no list ") + listName);
    }

private Q_SLOTS:
    void init() { app = std::make_unique<AppFixture>(); }

    void cleanup()
    {
        window.reset();
        app.reset();
    }

    void shouldShowTheLogoUntilAWorkspaceIsChosen()
    {
        window = std::make_unique<MainWindow>(app->services());
        window->show();
        // Tabbing into the sidebar makes a row current but chooses nothing.
        QListWidget* sidebar = waitFor<QListWidget>(QStringLiteral("sidebar"));
        sidebar->setFocus();
        QApplication::processEvents();
        QCOMPARE(window->contentView()->selectedSidebarItem(), std::nullopt);
        QVERIFY(waitFor<QLabel>(QStringLiteral("QuorvelLogo"))->isVisible());
        QCOMPARE(waitFor<QLabel>(QStringLiteral("detailSelectOptionText"))->text(), u"detail-select-option-text");
    }

    void shouldLetANewUserStartWithALocalAccount()
    {
        openProjects();
        QCOMPARE(sidebarState(), u"schedule-login-required-state");
        auto* chip = waitFor<UserProfileChipView>(QStringLiteral("profileChip"));

        whenModalAppears([](QWidget* dialog) {
            dialog->findChild<QLineEdit*>(QStringLiteral("lastName"))->setText(QStringLiteral("Lovelace"));
            clickButtonNamed(dialog, QStringLiteral("user-settings-save-button"));
            // A blank first name keeps the dialog open with the reason.
            QCOMPARE(
                dialog->findChild<QLabel*>(QStringLiteral("accountError"))->text(), u"The first name cannot be empty");
            dialog->findChild<QLineEdit*>(QStringLiteral("firstName"))->setText(QStringLiteral("Ada"));
            clickButtonNamed(dialog, QStringLiteral("user-settings-save-button"));
        });
        chip->setUpLocalAccount();

        QTRY_COMPARE_WITH_TIMEOUT(waitFor<QLabel>(QStringLiteral("profileName"))->text(), u"Ada Lovelace", 10000);
        QTRY_COMPARE_WITH_TIMEOUT(sidebarState(), u"projects-empty-state", 10000);
        QVERIFY(!app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrIsGoogleAccount);
    }

    void shouldAddRenameAndTickTasksInPlace()
    {
        app->storeLocalUser();
        openProjects();
        openListOf(QStringLiteral("Home"), QStringLiteral("Chores"));
        QVERIFY(waitFor(QStringLiteral("list:Chores"))->findChild<QLabel*>(QStringLiteral("defaultBadge")));

        addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Laundry"));
        waitFor(QStringLiteral("task:Laundry"));
        addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Dishes"));
        auto* dishes = waitFor<TaskRowView>(QStringLiteral("task:Dishes"));

        QTest::keyClick(dishes, Qt::Key_F2);
        auto* field = dishes->findChild<QLineEdit*>();
        field->clear();
        QTest::keyClicks(field, QStringLiteral("Washing up"));
        QTest::keyClick(field, Qt::Key_Return);
        waitFor(QStringLiteral("task:Washing up"));

        waitFor<TaskRowView>(QStringLiteral("task:Laundry"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        QTRY_VERIFY(waitFor<QToolButton>(QStringLiteral("completedHeader"))->text().contains(u"(1)"));

        QStringList stored;
        for (const TaskEntity& task : listed<TaskEntity>(storedTasksOf(QStringLiteral("Chores"))))
            stored.append(task.tasTitle + (task.tasIsDone ? QStringLiteral(" ✓") : QString()));
        QCOMPARE(stored, (QStringList {"Laundry ✓", "Washing up"}));
    }

    void shouldTagFromTheMenuAndByDroppingOnAQuadrant()
    {
        app->storeLocalUser();
        openProjects();
        openListOf(QStringLiteral("Work"), QStringLiteral("Launch"));
        addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Fix the crash"));
        auto* row = waitFor<TaskRowView>(QStringLiteral("task:Fix the crash"));
        QMenu* menu = row->findChild<LazyMenuButton*>(QStringLiteral("taskTag"))->builtMenu();
        for (QAction* action : menu->actions()) {
            if (action->text() == u"eisenhower-tag-do")
                action->trigger();
        }

        waitFor<QToolButton>(QStringLiteral("viewModeMatrix"))->click();
        QTRY_VERIFY(
            waitFor(QStringLiteral("quadrant-do"))->findChild<TaskRowView*>(QStringLiteral("task:Fix the crash")));

        const TaskEntity task = waitFor<TaskRowView>(QStringLiteral("task:Fix the crash"))->task();
        QWidget* planning = waitFor(QStringLiteral("quadrant-planning"));
        QMimeData mime;
        mime.setData(TaskRowView::dragMimeType, task.tasId.toByteArray());
        QDragEnterEvent enter(QPoint(10, 10), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(planning, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(planning, &drop);

        QTRY_VERIFY_WITH_TIMEOUT(
            waitFor(QStringLiteral("quadrant-planning"))->findChild<TaskRowView*>(QStringLiteral("task:Fix the crash")),
            10000);
        QCOMPARE(listed<TaskEntity>(storedTasksOf(QStringLiteral("Launch"))).constFirst().tasEisenhowerTag,
            EisenhowerTagEnum::planning);
    }

    void shouldDeleteAListOnlyOnceConfirmed()
    {
        app->storeLocalUser();
        openProjects();
        openListOf(QStringLiteral("Trip"), QStringLiteral("Packing"));

        whenModalAppears(
            [](QWidget* box) { clickButtonNamed(box, QStringLiteral("task-lists-delete-cancel-button")); });
        waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        QVERIFY(window->findChild<QWidget*>(QStringLiteral("list:Packing")));

        whenModalAppears(
            [](QWidget* box) { clickButtonNamed(box, QStringLiteral("task-lists-delete-confirm-button")); });
        waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        waitGone(QStringLiteral("list:Packing"));
        // The project the list belonged to stays open, now without lists.
        QTRY_COMPARE(waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"Trip");
        waitFor(QStringLiteral("overviewEmptyState"));
    }

    void shouldRecordAFailedActionInTheConsole()
    {
        app->userDefaults().setValue(ErrorConsoleStore::isEnabledKey, true);
        app->storeLocalUser();
        openProjects();
        openListOf(QStringLiteral("Garden"), QStringLiteral("Spring"));

        whenModalAppears([](QWidget* box) {
            clickButtonNamed(box, QStringLiteral("projects-delete-confirm-button"));
            whenModalAppears([](QWidget* failure) {
                QCOMPARE(static_cast<QMessageBox*>(failure)->text(), u"The project still has task lists");
                static_cast<QMessageBox*>(failure)->accept();
            });
        });
        QMenu* menu = waitFor(QStringLiteral("project:Garden"))
                          ->findChild<LazyMenuButton*>(QStringLiteral("projectMenu"))
                          ->builtMenu();
        for (QAction* action : menu->actions()) {
            if (action->text() == u"projects-delete-button")
                action->trigger();
        }

        QTRY_VERIFY_WITH_TIMEOUT(app->console().consoleText().endsWith(
                                     u"] ProjectsController.delete failed: The project still has task lists"),
            10000);
        QVERIFY(window->findChild<QWidget*>(QStringLiteral("project:Garden")));

        // The console of the settings shows it.
        InformationConsoleView consoleView(app->services());
        QSignalSpy reloaded(&consoleView, &InformationConsoleView::reloaded);
        consoleView.show();
        QVERIFY(reloaded.wait(30000));
        QVERIFY(consoleView.errorConsoleText().endsWith(
            u"ProjectsController.delete failed: The project still has task lists"));
        QVERIFY(consoleView.findChild<QCheckBox*>(QStringLiteral("consoleLogging"))->isChecked());
    }

    void shouldOpenTheScheduleWhenAnAlarmIsOpened()
    {
        app->storeLocalUser();
        openProjects();
        const QDateTime start(QDate(2026, 11, 24), QTime(10, 30));
        app->notificationCenter().post(NotificationName::openMeetFromAlarm,
            QVariant::fromValue(MeetAlarmNavigationPayload {QStringLiteral("Standup"), start}));

        QTRY_COMPARE(window->contentView()->selectedSidebarItem(), SidebarItemEnum::schedule);
        // The schedule takes the request over: it shows that day and clears what was pending.
        QTRY_VERIFY(!window->contentView()->pendingMeetNavigation && !window->contentView()->pendingDateSelection);
        auto* schedule = qobject_cast<DailyEventsView*>(window->contentView()->screen(SidebarItemEnum::schedule));
        QVERIFY(schedule);
        QCOMPARE(schedule->selectedDate(), start.date());
        // Its calendar reads run on workers that need this thread's event loop; let them finish.
        QTRY_VERIFY_WITH_TIMEOUT(!schedule->isLoading(), 30000);
    }

    void shouldKeepEverythingAcrossARestart()
    {
        app->storeLocalUser();
        openProjects();
        openListOf(QStringLiteral("Thesis"), QStringLiteral("Writing"));
        addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Introduction"));
        waitFor(QStringLiteral("task:Introduction"));

        window.reset();
        openProjects();
        QTest::mouseClick(
            waitFor(QStringLiteral("project:Thesis"))->findChild<QToolButton*>(QStringLiteral("projectFold")),
            Qt::LeftButton);
        QTest::mouseClick(waitFor(QStringLiteral("list:Writing")), Qt::LeftButton);
        waitFor(QStringLiteral("task:Introduction"));
    }
};

TOLVANE_GUI_TEST_MAIN(ProjectsWorkspaceTest)
#include "ProjectsWorkspaceTest.moc"
