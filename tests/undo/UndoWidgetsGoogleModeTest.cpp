#include "ContentView.h"
#include "MainWindow.h"
#include "UndoTestSupport.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/TaskRowView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/ModalAnswers.h"
#include "support/ui/WindowSteps.h"
#include "undo/UndoControls.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolButton>
#include <QTranslator>

#include <algorithm>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;
using namespace UndoTestSupport;

namespace {

QList<TaskEntity> byId(QList<TaskEntity> tasks)
{
    std::sort(tasks.begin(), tasks.end(), [](const TaskEntity& a, const TaskEntity& b) { return a.tasId < b.tasId; });
    return tasks;
}

} // namespace

// Undo and redo in a Google account through the real window: its Edit menu, its shortcuts, the
// notices after a delete and the schedule's notice, with the data on the real server over a
// throwaway PostgreSQL. Deletes come back under the same identifiers.
class UndoWidgetsGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 15000};
    QTranslator english;

    AppServices& services() { return google->app().services(); }
    UndoHistory& history() { return services().undoHistory(); }

    // Another client of the same account: what it reads is what the server keeps, and what it
    // does is nobody's to undo here.
    TasksApplicationFactory::Applications elsewhere()
    {
        const TaskResultEntity made
            = TasksApplicationFactory(services().storeConfigurations()).make(true, services().apiClient());
        return *made.dataAs<TasksApplicationFactory::Applications>();
    }

    std::optional<ProjectEntity> storedProject(const QString& name)
    {
        for (const ProjectEntity& project : listed<ProjectEntity>(elsewhere().projects.list(google->backendUser()))) {
            if (project.prjName == name)
                return project;
        }
        return std::nullopt;
    }

    std::optional<TaskListEntity> storedList(const QString& name)
    {
        return storedListNamed(elsewhere(), google->backendUser(), name);
    }

    QList<TaskEntity> storedTasks(const QUuid& listId)
    {
        return byId(listed<TaskEntity>(elsewhere().tasks.list(listId)));
    }

    QAction* editAction(const QString& name) { return window->menuBar()->findChild<QAction*>(name); }

    // The keys as the user presses them, with the focus out of any text field (which would
    // take Ctrl+Z for its own text).
    void press(QKeyCombination keys)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        if (QWidget* focused = QApplication::focusWidget())
            focused->clearFocus();
        QTest::keyClick(window.get(), keys.key(), keys.keyboardModifiers());
    }

    // Waits until the Edit menu offers to undo text, and the history is idle.
    void waitForUndo(const QString& text)
    {
        QTRY_COMPARE_WITH_TIMEOUT(editAction(QStringLiteral("undoAction"))->text(), text, 15000);
        QTRY_VERIFY_WITH_TIMEOUT(!history().isBusy(), 15000);
    }

    // Waits for the step a key or a click asked for; its message, empty on success.
    QString outcomeOf(const std::function<void()>& ask)
    {
        QSignalSpy finished(&history(), &UndoHistory::finished);
        ask();
        if (finished.isEmpty() && !finished.wait(30000))
            return QStringLiteral("no outcome");
        return finished.constFirst().at(1).toString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
        google = std::make_unique<GoogleAccountFixture>();
        QVERIFY(google->signIn().result);
    }

    void cleanup() { window.reset(); }
    void cleanupTestCase() { google.reset(); }

    void shouldBringBackADeletedTaskFromTheNoticeTheKeysAndTheMenu()
    {
        steps.openProjects(services());
        steps.openListOf(QStringLiteral("Home"), QStringLiteral("Bills"));
        steps.addAndWait(QStringLiteral("tasks-add-button"), QStringLiteral("Pay rent"));
        steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        waitForUndo(QStringLiteral("Undo complete task 'Pay rent'"));
        const TaskListEntity bills = *storedList(QStringLiteral("Bills"));
        const QList<TaskEntity> kept = storedTasks(bills.talId);
        QCOMPARE(kept.size(), 1);
        QVERIFY(kept.constFirst().tasIsDone);

        steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
            ->findChild<QToolButton*>(QStringLiteral("taskDelete"))
            ->click();
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("task:Pay rent")), 15000);
        waitForUndo(QStringLiteral("Undo delete task 'Pay rent'"));
        QVERIFY(storedTasks(bills.talId).isEmpty());
        auto* notice = steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"));
        QTRY_VERIFY(notice->isVisible());
        QCOMPARE(notice->label()->text(), u"Deleted task 'Pay rent'");
        QCOMPARE(outcomeOf([notice] { notice->undoButton()->click(); }), QString());
        QCOMPARE(storedTasks(bills.talId), kept);
        steps.waitFor(QStringLiteral("task:Pay rent"));

        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z); }), QString());
        QVERIFY(storedTasks(bills.talId).isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("task:Pay rent")), 15000);
        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::Key_Z); }), QString());
        QCOMPARE(storedTasks(bills.talId), kept);
        QCOMPARE(editAction(QStringLiteral("redoAction"))->text(), u"Redo delete task 'Pay rent'");
        QCOMPARE(outcomeOf([this] { editAction(QStringLiteral("redoAction"))->trigger(); }), QString());
        QVERIFY(storedTasks(bills.talId).isEmpty());
        QCOMPARE(outcomeOf([this] { editAction(QStringLiteral("undoAction"))->trigger(); }), QString());
        QCOMPARE(storedTasks(bills.talId), kept);
        QTRY_VERIFY_WITH_TIMEOUT(steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
                                     ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
                                     ->isChecked(),
            15000);
    }

    void shouldBringBackADeletedListWithItsTasks()
    {
        steps.openProjects(services());
        steps.openListOf(QStringLiteral("Trip"), QStringLiteral("Packing"));
        for (const QString& title : {QStringLiteral("Passport"), QStringLiteral("Tickets"), QStringLiteral("Charger")})
            steps.addAndWait(QStringLiteral("tasks-add-button"), title);
        waitForUndo(QStringLiteral("Undo add task 'Charger'"));
        const TaskListEntity packing = *storedList(QStringLiteral("Packing"));
        const QList<TaskEntity> tasks = storedTasks(packing.talId);
        QCOMPARE(tasks.size(), 3);

        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("list:Packing")), 15000);
        waitForUndo(QStringLiteral("Undo delete list 'Packing'"));
        QTRY_COMPARE(
            steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(), u"Deleted list 'Packing'");
        QVERIFY(!storedList(QStringLiteral("Packing")));

        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::Key_Z); }), QString());
        QCOMPARE(storedList(QStringLiteral("Packing")), packing);
        QCOMPARE(storedTasks(packing.talId), tasks);
        steps.waitFor(QStringLiteral("list:Packing"));

        QCOMPARE(outcomeOf([this] { editAction(QStringLiteral("redoAction"))->trigger(); }), QString());
        QVERIFY(!storedList(QStringLiteral("Packing")));
        QVERIFY(storedTasks(packing.talId).isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("list:Packing")), 15000);
        QCOMPARE(outcomeOf([this] { editAction(QStringLiteral("undoAction"))->trigger(); }), QString());
        QCOMPARE(storedTasks(packing.talId), tasks);
        steps.waitFor(QStringLiteral("list:Packing"));
    }

    void shouldBringBackADeletedProject()
    {
        steps.openProjects(services());
        steps.openListOf(QStringLiteral("Work"), QStringLiteral("Launch"));
        steps.addAndWait(QStringLiteral("tasks-add-button"), QStringLiteral("Ship it"));
        waitForUndo(QStringLiteral("Undo add task 'Ship it'"));
        const ProjectEntity work = *storedProject(QStringLiteral("Work"));
        const TaskListEntity launch = *storedList(QStringLiteral("Launch"));
        const QList<TaskEntity> tasks = storedTasks(launch.talId);

        // A project goes once its lists are gone.
        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        waitForUndo(QStringLiteral("Undo delete list 'Launch'"));
        QMenu* menu = steps.waitFor(QStringLiteral("project:Work"))
                          ->findChild<LazyMenuButton*>(QStringLiteral("projectMenu"))
                          ->builtMenu();
        QAction* remove = nullptr;
        for (QAction* action : menu->actions()) {
            if (action->text() == u"Delete project")
                remove = action;
        }
        QVERIFY(remove);
        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        remove->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("project:Work")), 15000);
        waitForUndo(QStringLiteral("Undo delete project 'Work'"));
        QTRY_COMPARE(
            steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(), u"Deleted project 'Work'");
        QVERIFY(!storedProject(QStringLiteral("Work")));

        // The menu's Undo brings the project back, Ctrl+Z its list with the task.
        QCOMPARE(outcomeOf([this] { editAction(QStringLiteral("undoAction"))->trigger(); }), QString());
        QCOMPARE(storedProject(QStringLiteral("Work")), work);
        steps.waitFor(QStringLiteral("project:Work"));
        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::Key_Z); }), QString());
        QCOMPARE(storedList(QStringLiteral("Launch")), launch);
        QCOMPARE(storedTasks(launch.talId), tasks);
        steps.waitFor(QStringLiteral("list:Launch"));

        // Forward again: the list, then the project, go.
        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z); }), QString());
        QVERIFY(!storedList(QStringLiteral("Launch")));
        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z); }), QString());
        QVERIFY(!storedProject(QStringLiteral("Work")));
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("project:Work")), 15000);
    }

    // A backend event moved on the schedule, then deleted: each notice's Undo puts it back as it
    // was, under its own identifier, and the screen shows it there.
    void shouldUndoAMoveAndADeleteOfABackendEventFromTheSchedulesNotice()
    {
        const std::optional<UserEntity> user = services().tasksSession().user;
        QVERIFY(user && user->usrIsGoogleAccount);
        // Morning hours a few days ahead: a quarter later is still the same day in any zone.
        const QDate day = QDate::currentDate().addDays(3);
        MeetDraft draft {QStringLiteral("Review"), QStringLiteral("Room 4"), QDateTime(day, QTime(10, 0)),
            QDateTime(day, QTime(11, 0))};
        draft.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        const MeetEntity made = DailyEventsController(services(), user).create(draft);
        QCOMPARE(made.metSource, MeetSource::backend);
        RemoteEventRepositoryImpl server(*services().apiClient());
        const auto before = server.event(made.metOriginalIdentifier);
        QVERIFY(before);

        steps.show(services())->contentView()->select(SidebarItemEnum::schedule);
        auto* view = steps.waitFor<DailyEventsView>(QStringLiteral("dailyEventsView"));
        QTRY_VERIFY_WITH_TIMEOUT(!view->isLoading(), 45000);
        view->setSelectedDate(day);
        const auto review = [view] {
            for (const MeetEntity& meet : view->events()) {
                if (meet.metName == u"Review")
                    return std::optional(meet);
            }
            return std::optional<MeetEntity>();
        };
        QTRY_VERIFY_WITH_TIMEOUT(review() && !view->timeline()->cards().isEmpty(), 45000);
        QCOMPARE(review()->metDate, draft.start);

        // A quarter of an hour later, from the keyboard.
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        card->setFocus();
        QTest::keyClick(card, Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(view->notice()->isVisible() && view->undoButton()->isVisible(), 15000);
        QCOMPARE(history().undoText(), u"move event 'Review'");
        QCOMPARE(server.event(made.metOriginalIdentifier)->evtSchedule, draft.start.addSecs(15 * 60));
        QTRY_COMPARE_WITH_TIMEOUT(review()->metDate, draft.start.addSecs(15 * 60), 15000);
        QCOMPARE(outcomeOf([view] { view->undoButton()->click(); }), QString());
        QCOMPARE(server.event(made.metOriginalIdentifier), before);
        QTRY_COMPARE_WITH_TIMEOUT(review()->metDate, draft.start, 15000);

        // Deleted after confirming; the notice brings it back whole.
        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        view->deleteMeet(*review());
        QTRY_VERIFY_WITH_TIMEOUT(
            view->notice()->isVisible() && history().undoText() == u"delete event 'Review'", 15000);
        QVERIFY(!server.event(made.metOriginalIdentifier));
        QTRY_VERIFY_WITH_TIMEOUT(!review(), 15000);
        QTRY_VERIFY(view->undoButton()->isVisible());
        QCOMPARE(outcomeOf([view] { view->undoButton()->click(); }), QString());
        QCOMPARE(server.event(made.metOriginalIdentifier), before);
        QTRY_VERIFY_WITH_TIMEOUT(review().has_value(), 15000);
        QCOMPARE(review()->metId, made.metId);
        QCOMPARE(review()->metDate, draft.start);

        // Ctrl+Shift+Z deletes it again.
        QCOMPARE(outcomeOf([this] { press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z); }), QString());
        QVERIFY(!server.event(made.metOriginalIdentifier));
        QTRY_VERIFY_WITH_TIMEOUT(!review(), 15000);
    }
};

TOLVANE_GUI_TEST_MAIN(UndoWidgetsGoogleModeTest)
#include "UndoWidgetsGoogleModeTest.moc"
