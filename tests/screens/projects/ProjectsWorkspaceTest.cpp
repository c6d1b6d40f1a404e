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
#include "support/ui/WindowSteps.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

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
    WindowSteps steps {window, 10000};

    void waitGone(const QString& objectName)
    {
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QWidget*>(objectName) == nullptr, 10000);
    }

    // Keys as a keyboard sends them: to whatever has the focus at that moment.
    static void typeIntoFocus(const QString& text)
    {
        QTest::keyClicks(static_cast<QWidget*>(nullptr), text);
        QTest::keyClick(static_cast<QWidget*>(nullptr), Qt::Key_Return);
    }

    void openAndFocus(InlineAddRowView* row)
    {
        steps.activate();
        row->findChild<QPushButton*>()->click();
        QTRY_VERIFY(row->isAncestorOf(QApplication::focusWidget()));
    }

    static void waitIdle(InlineAddRowView* row)
    {
        QTRY_VERIFY_WITH_TIMEOUT(!row->isAdding() && row->waitingCount() == 0, 180000);
    }

    // Whether the whole of widget shows in the scroll area's viewport.
    static bool inView(QWidget* widget, QScrollArea* scroll)
    {
        const QRect area(widget->mapTo(scroll->viewport(), QPoint(0, 0)), widget->size());
        return widget->isVisible() && scroll->viewport()->rect().contains(area);
    }

    QString sidebarState() { return steps.waitFor<QLabel>(QStringLiteral("sidebarState"))->text(); }

    TaskResultEntity storedTasksOf(const QString& listName)
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        if (const auto list = storedListNamed(apps, QUuid::fromString(user.usrId), listName))
            return apps.tasks.list(list->talId);
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
        steps.show(app->services());
        // Tabbing into the sidebar makes a row current but chooses nothing.
        QListWidget* sidebar = steps.waitFor<QListWidget>(QStringLiteral("sidebar"));
        sidebar->setFocus();
        QApplication::processEvents();
        QCOMPARE(window->contentView()->selectedSidebarItem(), std::nullopt);
        QVERIFY(steps.waitFor<QLabel>(QStringLiteral("QuorvelLogo"))->isVisible());
        QCOMPARE(steps.waitFor<QLabel>(QStringLiteral("detailSelectOptionText"))->text(), u"detail-select-option-text");
    }

    void shouldLetANewUserStartWithALocalAccount()
    {
        steps.openProjects(app->services());
        QCOMPARE(sidebarState(), u"schedule-login-required-state");

        QSize dialogSize;
        whenModalAppears([&dialogSize](QWidget* dialog) {
            dialogSize = dialog->size();
            dialog->findChild<QLineEdit*>(QStringLiteral("lastName"))->setText(QStringLiteral("Lovelace"));
            clickButtonNamed(dialog, QStringLiteral("user-settings-save-button"));
            // A blank first name keeps the dialog open with the reason.
            auto* error = dialog->findChild<QLabel*>(QStringLiteral("accountError"));
            QCOMPARE(error->text(), u"The first name cannot be empty");
            dialog->findChild<QLineEdit*>(QStringLiteral("firstName"))->setText(QStringLiteral("Ada"));
            // So does an address that cannot be one.
            dialog->findChild<QLineEdit*>(QStringLiteral("email"))->setText(QStringLiteral("ada.example.org"));
            clickButtonNamed(dialog, QStringLiteral("user-settings-save-button"));
            QCOMPARE(error->text(), u"user-settings-email-invalid-text");
            dialog->findChild<QLineEdit*>(QStringLiteral("email"))->setText(QStringLiteral("ada@example.org"));
            clickButtonNamed(dialog, QStringLiteral("user-settings-save-button"));
        });
        // The chip's "Set up your account" is a real button that starts it.
        steps.waitFor<QPushButton>(QStringLiteral("setUpAccount"))->click();
        QVERIFY(dialogSize.width() >= 400);

        QTRY_COMPARE_WITH_TIMEOUT(steps.waitFor<QLabel>(QStringLiteral("profileName"))->text(), u"Ada Lovelace", 10000);
        QVERIFY(!steps.waitFor<QPushButton>(QStringLiteral("setUpAccount"))->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(sidebarState(), u"projects-empty-state", 10000);
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        QVERIFY(!user.usrIsGoogleAccount);
        QCOMPARE(user.usrEmail, u"ada@example.org");
    }

    void shouldAddRenameAndTickTasksInPlace()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Home"), QStringLiteral("Chores"));
        QVERIFY(steps.waitFor(QStringLiteral("list:Chores"))->findChild<QLabel*>(QStringLiteral("defaultBadge")));

        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Laundry"));
        steps.waitFor(QStringLiteral("task:Laundry"));
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Dishes"));
        auto* dishes = steps.waitFor<TaskRowView>(QStringLiteral("task:Dishes"));

        QTest::keyClick(dishes, Qt::Key_F2);
        auto* field = dishes->findChild<QLineEdit*>();
        field->clear();
        QTest::keyClicks(field, QStringLiteral("Washing up"));
        QTest::keyClick(field, Qt::Key_Return);
        steps.waitFor(QStringLiteral("task:Washing up"));

        steps.waitFor<TaskRowView>(QStringLiteral("task:Laundry"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        QTRY_VERIFY(steps.waitFor<QToolButton>(QStringLiteral("completedHeader"))->text().contains(u"(1)"));

        QStringList stored;
        for (const TaskEntity& task : listed<TaskEntity>(storedTasksOf(QStringLiteral("Chores"))))
            stored.append(task.tasTitle + (task.tasIsDone ? QStringLiteral(" ✓") : QString()));
        QCOMPARE(stored, (QStringList {"Laundry ✓", "Washing up"}));
    }

    void shouldStoreEveryTaskTypedQuicklyInOrderAndKeepTheRowInView()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        window->resize(800, 600);
        steps.openListOf(QStringLiteral("Errands"), QStringLiteral("Week"));
        auto* row = steps.waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:tasks-add-button"));
        openAndFocus(row);

        // Typed without waiting for the store: every task goes in, in order, none ticked.
        QStringList typed;
        for (int number = 1; number <= 200; ++number) {
            typed.append(QStringLiteral("Task %1").arg(number));
            typeIntoFocus(typed.constLast());
        }
        QVERIFY(row->isAncestorOf(QApplication::focusWidget()));
        waitIdle(row);
        QStringList stored;
        for (const TaskEntity& task : listed<TaskEntity>(storedTasksOf(QStringLiteral("Week"))))
            stored.append(task.tasTitle + (task.tasIsDone ? QStringLiteral(" ✓") : QString()));
        QCOMPARE(stored, typed);

        // The list grew under the row: the row and the last task stay in view, the focus in the row.
        auto* scroll = steps.waitFor<QScrollArea>(QStringLiteral("taskListScroll"));
        auto* last = steps.waitFor<TaskRowView>(QStringLiteral("task:Task 200"));
        QTRY_VERIFY_WITH_TIMEOUT(
            scroll->verticalScrollBar()->value() > 0 && inView(row, scroll) && inView(last, scroll), 30000);
        QVERIFY(row->isAncestorOf(QApplication::focusWidget()));

        // Enter on the empty row adds nothing and leaves it open.
        typeIntoFocus(QString());
        QVERIFY(row->isEditing());
        QVERIFY(!row->isAdding());
        QCOMPARE(listed<TaskEntity>(storedTasksOf(QStringLiteral("Week"))).size(), 200);
    }

    void shouldKeepEveryAddRowOpenForTheNextEntry()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        auto* addProject = steps.waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:projects-add-button"));
        openAndFocus(addProject);
        typeIntoFocus(QStringLiteral("Home"));
        typeIntoFocus(QStringLiteral("Work"));
        waitIdle(addProject);
        steps.waitFor(QStringLiteral("project:Work"));
        QVERIFY(addProject->isEditing());

        // A new project opens with its add-list row.
        auto* home = steps.waitFor(QStringLiteral("project:Home"));
        auto* addList = home->findChild<InlineAddRowView*>(QStringLiteral("inlineAdd:task-lists-add-button"));
        QTRY_VERIFY(addList->isVisible());
        openAndFocus(addList);
        typeIntoFocus(QStringLiteral("Chores"));
        typeIntoFocus(QStringLiteral("Garden"));
        typeIntoFocus(QStringLiteral("Repairs"));
        waitIdle(addList);
        steps.waitFor(QStringLiteral("list:Repairs"));
        // The same row, still open, still holding the focus, under the three lists.
        QCOMPARE(home->findChild<InlineAddRowView*>(QStringLiteral("inlineAdd:task-lists-add-button")), addList);
        QVERIFY(addList->isEditing());
        QVERIFY(addList->isAncestorOf(QApplication::focusWidget()));
        QStringList lists;
        for (QWidget* list : home->findChildren<QWidget*>(QRegularExpression(QStringLiteral("^list:")))) {
            if (list->isVisible())
                lists.append(list->objectName());
        }
        QCOMPARE(lists, (QStringList {"list:Chores", "list:Garden", "list:Repairs"}));
    }

    void shouldShowAnAmpersandInANameAsTyped()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Home & Garden"), QStringLiteral("Bills &Taxes"));
        QTest::mouseClick(steps.waitFor(QStringLiteral("project:Home & Garden"))
                              ->findChild<QWidget*>(QStringLiteral("projectHeader")),
            Qt::LeftButton);
        auto* title = steps.waitFor<QPushButton>(QStringLiteral("overviewListTitle"));
        // A button reads "&T" as an accelerator; the name must not become one.
        QVERIFY(title->text().startsWith(u"Bills &&Taxes"));
        QCOMPARE(QKeySequence::mnemonic(title->text()), QKeySequence());
        QCOMPARE(title->toolTip(), u"Bills &Taxes");
    }

    void shouldTagFromTheMenuAndByDroppingOnAQuadrant()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Work"), QStringLiteral("Launch"));
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Fix the crash"));
        auto* row = steps.waitFor<TaskRowView>(QStringLiteral("task:Fix the crash"));
        QMenu* menu = row->findChild<LazyMenuButton*>(QStringLiteral("taskTag"))->builtMenu();
        for (QAction* action : menu->actions()) {
            if (action->text() == u"eisenhower-tag-do")
                action->trigger();
        }

        steps.waitFor<QToolButton>(QStringLiteral("viewModeMatrix"))->click();
        QTRY_VERIFY(steps.waitFor(QStringLiteral("quadrant-do"))
                        ->findChild<TaskRowView*>(QStringLiteral("task:Fix the crash")));

        const TaskEntity task = steps.waitFor<TaskRowView>(QStringLiteral("task:Fix the crash"))->task();
        QWidget* planning = steps.waitFor(QStringLiteral("quadrant-planning"));
        QMimeData mime;
        mime.setData(TaskRowView::dragMimeType, task.tasId.toByteArray());
        QDragEnterEvent enter(QPoint(10, 10), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(planning, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(10, 10), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(planning, &drop);

        QTRY_VERIFY_WITH_TIMEOUT(steps.waitFor(QStringLiteral("quadrant-planning"))
                                     ->findChild<TaskRowView*>(QStringLiteral("task:Fix the crash")),
            10000);
        QCOMPARE(listed<TaskEntity>(storedTasksOf(QStringLiteral("Launch"))).constFirst().tasEisenhowerTag,
            EisenhowerTagEnum::planning);
    }

    void shouldDeleteAListOnlyOnceConfirmed()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Trip"), QStringLiteral("Packing"));

        whenModalAppears(
            [](QWidget* box) { clickButtonNamed(box, QStringLiteral("task-lists-delete-cancel-button")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        QVERIFY(window->findChild<QWidget*>(QStringLiteral("list:Packing")));

        whenModalAppears(
            [](QWidget* box) { clickButtonNamed(box, QStringLiteral("task-lists-delete-confirm-button")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        waitGone(QStringLiteral("list:Packing"));
        // The project the list belonged to stays open, now without lists.
        QTRY_COMPARE(steps.waitFor<QLabel>(QStringLiteral("detailTitle"))->text(), u"Trip");
        steps.waitFor(QStringLiteral("overviewEmptyState"));
    }

    void triggerProjectMenu(const QString& project, const QString& actionText)
    {
        QMenu* menu = steps.waitFor(QStringLiteral("project:") + project)
                          ->findChild<LazyMenuButton*>(QStringLiteral("projectMenu"))
                          ->builtMenu();
        for (QAction* action : menu->actions()) {
            if (action->text() == actionText)
                action->trigger();
        }
    }

    void shouldRecordAFailedActionInTheConsole()
    {
        app->userDefaults().setValue(ErrorConsoleStore::isEnabledKey, true);
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.addInline(QStringLiteral("projects-add-button"), QStringLiteral("Garden"));
        steps.waitFor(QStringLiteral("project:Garden"));
        // Another window gives the project a list this one has not seen yet: the store refuses.
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        const ProjectEntity garden
            = listed<ProjectEntity>(apps.projects.list(QUuid::fromString(user.usrId))).constFirst();
        QVERIFY(apps.taskLists.create({.prjId = garden.prjId, .talName = QStringLiteral("Spring")}).result);

        whenModalAppears([](QWidget* box) {
            clickButtonNamed(box, QStringLiteral("projects-delete-confirm-button"));
            whenModalAppears([](QWidget* failure) {
                QCOMPARE(static_cast<QMessageBox*>(failure)->text(), u"The project still has task lists");
                static_cast<QMessageBox*>(failure)->accept();
            });
        });
        triggerProjectMenu(QStringLiteral("Garden"), QStringLiteral("projects-delete-button"));

        QTRY_VERIFY_WITH_TIMEOUT(app->console().consoleText().endsWith(
                                     u"] ProjectsController.delete failed: The project still has task lists"),
            10000);
        QVERIFY(window->findChild<QWidget*>(QStringLiteral("project:Garden")));

        // The console of the settings shows it.
        InformationConsoleView consoleView(app->services());
        QSignalSpy reloaded(&consoleView, &InformationConsoleView::reloaded);
        consoleView.show();
        QVERIFY(!reloaded.isEmpty() || reloaded.wait(30000));
        QVERIFY(consoleView.errorConsoleText().endsWith(
            u"ProjectsController.delete failed: The project still has task lists"));
        QVERIFY(consoleView.findChild<QCheckBox*>(QStringLiteral("consoleLogging"))->isChecked());
    }

    void shouldSayWhatADeletionWouldDoBeforeAsking()
    {
        QTranslator english;
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
        const auto restore = qScopeGuard([&english] { QCoreApplication::removeTranslator(&english); });
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Garden"), QStringLiteral("Spring"));

        // A project that still has lists cannot be deleted: explained at once, nothing asked.
        QString shown;
        whenModalAppears([&shown](QWidget* box) {
            shown = box->objectName() + QLatin1Char('|') + static_cast<QMessageBox*>(box)->text();
            static_cast<QMessageBox*>(box)->accept();
        });
        triggerProjectMenu(QStringLiteral("Garden"), QStringLiteral("Delete project"));
        QCOMPARE(shown, u"projectHasLists|“Garden” still has lists");
        QVERIFY(window->findChild<QWidget*>(QStringLiteral("project:Garden")));

        // Deleting completed tasks says how many.
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Seed"));
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Water"));
        for (const QString& task : {QStringLiteral("task:Seed"), QStringLiteral("task:Water")})
            steps.waitFor<TaskRowView>(task)->findChild<QCheckBox*>(QStringLiteral("taskDone"))->click();
        QTRY_VERIFY(steps.waitFor<QToolButton>(QStringLiteral("completedHeader"))->text().contains(u"(2)"));
        QString question;
        whenModalAppears([&question](QWidget* box) {
            question = static_cast<QMessageBox*>(box)->text();
            clickButtonNamed(box, QStringLiteral("Cancel"));
        });
        steps.waitFor<QToolButton>(QStringLiteral("deleteCompleted"))->click();
        QCOMPARE(question, u"Delete 2 completed tasks?");
    }

    void shouldGiveTheMatrixColumnsEqualWidths()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        window->resize(1000, 700);
        steps.openListOf(QStringLiteral("Work"), QStringLiteral("Launch"));
        const QString longTitle = QStringLiteral("Write the release notes for every platform, with screenshots");
        steps.addInline(QStringLiteral("tasks-add-button"), longTitle);
        QMenu* menu = steps.waitFor<TaskRowView>(QStringLiteral("task:") + longTitle)
                          ->findChild<LazyMenuButton*>(QStringLiteral("taskTag"))
                          ->builtMenu();
        for (QAction* action : menu->actions()) {
            if (action->text() == u"eisenhower-tag-do")
                action->trigger();
        }
        steps.waitFor<QToolButton>(QStringLiteral("viewModeMatrix"))->click();
        QTRY_VERIFY(steps.waitFor(QStringLiteral("quadrant-do"))->findChild<TaskRowView*>());
        // Its neighbour is empty; the two still split the width.
        QWidget* doIt = steps.waitFor(QStringLiteral("quadrant-do"));
        QWidget* planning = steps.waitFor(QStringLiteral("quadrant-planning"));
        QTRY_VERIFY(doIt->isVisible() && planning->isVisible());
        QVERIFY(qAbs(doIt->width() - planning->width()) <= 1);
    }

    void shouldFitASmallWindow()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        window->resize(800, 600);
        QTRY_COMPARE(window->size(), QSize(800, 600));
        const QString longName = QStringLiteral("Renovation of the summer house by the lake, second floor");
        steps.openListOf(longName, QStringLiteral("Electrical work and lighting for every single room"));
        steps.addInline(QStringLiteral("tasks-add-button"),
            QStringLiteral("Ask the electrician whether the old wiring in the attic can stay as it is"));
        steps.waitFor(QStringLiteral("task:Ask the electrician whether the old wiring in the attic can stay as it is"));

        // A name too long for the sidebar is cut short, and shows in full on hover.
        auto* name = steps.waitFor(QStringLiteral("project:") + longName)
                         ->findChild<QWidget*>(QStringLiteral("projectHeader"))
                         ->findChild<QLabel*>(QStringLiteral("editableText"));
        QTRY_VERIFY(name->text().endsWith(QChar(0x2026)));
        QCOMPARE(name->toolTip(), longName);
        QVERIFY(name->width() > 0);
        // Nothing needs scrolling sideways.
        for (QScrollArea* scroll : window->findChildren<QScrollArea*>()) {
            if (scroll->isVisible())
                QVERIFY2(!scroll->horizontalScrollBar()->isVisible(), qPrintable(scroll->objectName()));
        }
        auto* content = steps.waitFor(QStringLiteral("taskListScroll"));
        auto* row = steps.waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:tasks-add-button"));
        QVERIFY(content->rect().contains(QRect(row->mapTo(content, QPoint(0, 0)), row->size())));
    }

    void shouldOpenTheScheduleWhenAnAlarmIsOpened()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
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
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Thesis"), QStringLiteral("Writing"));
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Introduction"));
        steps.waitFor(QStringLiteral("task:Introduction"));

        window.reset();
        steps.openProjects(app->services());
        QTest::mouseClick(
            steps.waitFor(QStringLiteral("project:Thesis"))->findChild<QToolButton*>(QStringLiteral("projectFold")),
            Qt::LeftButton);
        QTest::mouseClick(steps.waitFor(QStringLiteral("list:Writing")), Qt::LeftButton);
        steps.waitFor(QStringLiteral("task:Introduction"));
    }
};

TOLVANE_GUI_TEST_MAIN(ProjectsWorkspaceTest)
#include "ProjectsWorkspaceTest.moc"
