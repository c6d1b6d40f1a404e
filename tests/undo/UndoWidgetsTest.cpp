#include "MainWindow.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/TaskRowView.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"
#include "support/ui/WindowSteps.h"
#include "undo/UndoControls.h"
#include "undo/UndoHistory.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QToolButton>
#include <QTranslator>
#include <QUndoStack>

#include <algorithm>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;

namespace {

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

template <typename T> std::optional<T> foundEntity(const ResultEntity& result)
{
    const T* item = result.result ? result.dataAs<T>() : nullptr;
    return item ? std::optional<T>(*item) : std::nullopt;
}

QList<TaskEntity> byId(QList<TaskEntity> tasks)
{
    std::sort(tasks.begin(), tasks.end(), [](const TaskEntity& a, const TaskEntity& b) { return a.tasId < b.tasId; });
    return tasks;
}

} // namespace

// Undo and redo of the user's changes through the real window (its Edit menu, its shortcuts and
// the notice after a delete), over real encrypted stores.
class UndoWidgetsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 10000};
    QTranslator english;

    UndoHistory& history() { return app->services().undoHistory(); }

    // Another instance of the stores, as another window of the program would have: what it does
    // is nobody's to undo here.
    TasksApplicationFactory::Applications elsewhere()
    {
        const TaskResultEntity made
            = TasksApplicationFactory(app->services().storeConfigurations()).make(false, std::nullopt);
        return *made.dataAs<TasksApplicationFactory::Applications>();
    }

    std::optional<TaskListEntity> storedList(const QString& name)
    {
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        return storedListNamed(elsewhere(), QUuid::fromString(user.usrId), name);
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
        QTRY_COMPARE_WITH_TIMEOUT(editAction(QStringLiteral("undoAction"))->text(), text, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!history().isBusy(), 10000);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void init() { app = std::make_unique<AppFixture>(); }

    void cleanup()
    {
        window.reset();
        app.reset();
    }

    void shouldUndoAndRedoEachChangeToATaskFromTheKeyboardAndTheMenu()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Home"), QStringLiteral("Bills"));
        steps.addAndWait(QStringLiteral("tasks-add-button"), QStringLiteral("Pay rent"));
        steps.waitFor(QStringLiteral("task:Pay rent"));
        waitForUndo(QStringLiteral("Undo add task 'Pay rent'"));
        const TaskListEntity bills = *storedList(QStringLiteral("Bills"));
        const TaskEntity added = storedTasks(bills.talId).constFirst();

        // Done, then the quadrant.
        steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        waitForUndo(QStringLiteral("Undo complete task 'Pay rent'"));
        QMenu* tags = steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
                          ->findChild<LazyMenuButton*>(QStringLiteral("taskTag"))
                          ->builtMenu();
        for (QAction* action : tags->actions()) {
            if (action->text() == u"Do now")
                action->trigger();
        }
        waitForUndo(QStringLiteral("Undo change quadrant of task 'Pay rent'"));
        const TaskEntity tagged = storedTasks(bills.talId).constFirst();
        QVERIFY(tagged.tasIsDone);
        QCOMPARE(tagged.tasEisenhowerTag, EisenhowerTagEnum::doIt);

        // Ctrl+Z twice: the quadrant, then the done flag, go back; the task is whole again.
        press(Qt::CTRL | Qt::Key_Z);
        QTRY_VERIFY_WITH_TIMEOUT(!storedTasks(bills.talId).constFirst().tasEisenhowerTag, 10000);
        QTRY_VERIFY(!history().isBusy());
        QCOMPARE(editAction(QStringLiteral("redoAction"))->text(), u"Redo change quadrant of task 'Pay rent'");
        press(Qt::CTRL | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedTasks(bills.talId).constFirst(), added, 10000);
        QTRY_VERIFY(!steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
                         ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
                         ->isChecked());

        // Ctrl+Shift+Z twice, then the menu's Undo once.
        press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        QTRY_VERIFY_WITH_TIMEOUT(storedTasks(bills.talId).constFirst().tasIsDone, 10000);
        QTRY_VERIFY(!history().isBusy());
        press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedTasks(bills.talId).constFirst(), tagged, 10000);
        QTRY_VERIFY(!history().isBusy());
        QVERIFY(!editAction(QStringLiteral("redoAction"))->isEnabled());
        QCOMPARE(editAction(QStringLiteral("redoAction"))->text(), u"Redo");

        // A delete says so, with an Undo that brings back the whole task under its id.
        steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"))
            ->findChild<QToolButton*>(QStringLiteral("taskDelete"))
            ->click();
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("task:Pay rent")), 10000);
        waitForUndo(QStringLiteral("Undo delete task 'Pay rent'"));
        QVERIFY(storedTasks(bills.talId).isEmpty());
        auto* notice = steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"));
        QTRY_VERIFY(notice->isVisible());
        QCOMPARE(notice->label()->text(), u"Deleted task 'Pay rent'");
        notice->undoButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(storedTasks(bills.talId), QList<TaskEntity> {tagged}, 10000);
        steps.waitFor<TaskRowView>(QStringLiteral("task:Pay rent"));
        QVERIFY(!notice->isVisible());

        // The menu's Redo deletes it again.
        QTRY_VERIFY(editAction(QStringLiteral("redoAction"))->isEnabled());
        editAction(QStringLiteral("redoAction"))->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(storedTasks(bills.talId).isEmpty(), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("task:Pay rent")), 10000);
    }

    void shouldBringBackADeletedListWithAllItsTasksUnderTheirIds()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Trip"), QStringLiteral("Packing"));
        for (const QString& title : {QStringLiteral("Passport"), QStringLiteral("Tickets"), QStringLiteral("Charger")})
            steps.addAndWait(QStringLiteral("tasks-add-button"), title);
        steps.waitFor<TaskRowView>(QStringLiteral("task:Tickets"))
            ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
            ->click();
        waitForUndo(QStringLiteral("Undo complete task 'Tickets'"));
        const TaskListEntity packing = *storedList(QStringLiteral("Packing"));
        const QList<TaskEntity> tasks = storedTasks(packing.talId);
        QCOMPARE(tasks.size(), 3);

        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteList"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("list:Packing")), 10000);
        waitForUndo(QStringLiteral("Undo delete list 'Packing'"));
        QCOMPARE(
            steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(), u"Deleted list 'Packing'");
        QVERIFY(!storedList(QStringLiteral("Packing")));
        QVERIFY(storedTasks(packing.talId).isEmpty());

        press(Qt::CTRL | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedList(QStringLiteral("Packing")), packing, 10000);
        QCOMPARE(storedTasks(packing.talId), tasks);
        steps.waitFor(QStringLiteral("list:Packing"));

        press(Qt::CTRL | Qt::SHIFT | Qt::Key_Z);
        QTRY_VERIFY_WITH_TIMEOUT(!storedList(QStringLiteral("Packing")), 10000);
        QVERIFY(storedTasks(packing.talId).isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!steps.shows(QStringLiteral("list:Packing")), 10000);
    }

    void shouldBringBackDeletedCompletedTasks()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Garden"), QStringLiteral("Spring"));
        for (const QString& title : {QStringLiteral("Seed"), QStringLiteral("Water"), QStringLiteral("Weed")})
            steps.addAndWait(QStringLiteral("tasks-add-button"), title);
        for (const QString& task : {QStringLiteral("Seed"), QStringLiteral("Water")}) {
            steps.waitFor<TaskRowView>(QStringLiteral("task:") + task)
                ->findChild<QCheckBox*>(QStringLiteral("taskDone"))
                ->click();
            waitForUndo(QStringLiteral("Undo complete task '%1'").arg(task));
        }
        const TaskListEntity spring = *storedList(QStringLiteral("Spring"));
        const QList<TaskEntity> tasks = storedTasks(spring.talId);

        whenModalAppears([](QWidget* box) { clickButtonNamed(box, QStringLiteral("Delete")); });
        steps.waitFor<QToolButton>(QStringLiteral("deleteCompleted"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(storedTasks(spring.talId).size(), 1, 10000);
        QTRY_COMPARE_WITH_TIMEOUT(steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(),
            u"Deleted completed tasks (2)", 10000);
        QTRY_COMPARE(editAction(QStringLiteral("undoAction"))->text(), u"Undo delete completed tasks (2)");

        editAction(QStringLiteral("undoAction"))->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(storedTasks(spring.talId), tasks, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(
            steps.shows(QStringLiteral("task:Seed")) && steps.shows(QStringLiteral("task:Water")), 10000);
    }

    void shouldUndoProjectsAndListsAndTheDefaultList()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Work"), QStringLiteral("Launch"));
        steps.addAndWait(QStringLiteral("task-lists-add-button"), QStringLiteral("Later"));
        steps.waitFor(QStringLiteral("list:Later"));
        waitForUndo(QStringLiteral("Undo add list 'Later'"));
        const TaskListEntity launch = *storedList(QStringLiteral("Launch"));
        const TaskListEntity later = *storedList(QStringLiteral("Later"));
        QVERIFY(launch.talIsDefault);
        QVERIFY(!later.talIsDefault);

        // Making the second list the default rewrites both; the undo puts both back.
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        QVERIFY(apps.taskLists.setDefault(later).result);
        waitForUndo(QStringLiteral("Undo make default list 'Later'"));
        QVERIFY(storedList(QStringLiteral("Later"))->talIsDefault);
        press(Qt::CTRL | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedList(QStringLiteral("Later")), later, 10000);
        QCOMPARE(storedList(QStringLiteral("Launch")), launch);

        // A project deleted once empty comes back under its id; the workspace shows it again.
        QVERIFY(apps.taskLists.delete_(launch.talId).result);
        QVERIFY(apps.taskLists.delete_(later.talId).result);
        const ProjectEntity work
            = *foundEntity<ProjectEntity>(elsewhere().projects.projectRepository->find(launch.prjId));
        QVERIFY(apps.projects.delete_(work.prjId, work.prjUserId).result);
        QTRY_COMPARE_WITH_TIMEOUT(
            editAction(QStringLiteral("undoAction"))->text(), u"Undo delete project 'Work'", 10000);
        QTRY_COMPARE(
            steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(), u"Deleted project 'Work'");
        QTRY_VERIFY(!history().isBusy());
        QSignalSpy finished(&history(), &UndoHistory::finished);
        press(Qt::CTRL | Qt::Key_Z);
        QVERIFY(!finished.isEmpty() || finished.wait(10000));
        QCOMPARE(finished.constFirst().at(1).toString(), QString());
        QTRY_COMPARE_WITH_TIMEOUT(
            foundEntity<ProjectEntity>(elsewhere().projects.projectRepository->find(work.prjId)), work, 10000);
        steps.waitFor(QStringLiteral("project:Work"));
        QTRY_VERIFY(!history().isBusy());
        press(Qt::CTRL | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedList(QStringLiteral("Later")), later, 10000);
        QTRY_VERIFY(!history().isBusy());
        press(Qt::CTRL | Qt::Key_Z);
        QTRY_COMPARE_WITH_TIMEOUT(storedList(QStringLiteral("Launch")), launch, 10000);
        QTRY_VERIFY_WITH_TIMEOUT(
            steps.shows(QStringLiteral("list:Launch")) && steps.shows(QStringLiteral("list:Later")), 10000);
    }

    void shouldRefuseAnUndoWhoseItemChangedElsewhere()
    {
        app->storeLocalUser();
        steps.openProjects(app->services());
        steps.openListOf(QStringLiteral("Plants"), QStringLiteral("Care"));
        steps.addAndWait(QStringLiteral("tasks-add-button"), QStringLiteral("Water"));
        auto* row = steps.waitFor<TaskRowView>(QStringLiteral("task:Water"));
        QTest::keyClick(row, Qt::Key_F2);
        auto* field = row->findChild<QLineEdit*>();
        field->clear();
        QTest::keyClicks(field, QStringLiteral("Water the ferns"));
        QTest::keyClick(field, Qt::Key_Return);
        steps.waitFor(QStringLiteral("task:Water the ferns"));
        waitForUndo(QStringLiteral("Undo edit task 'Water the ferns'"));
        const int place = history().stack()->index();

        // Another window renames it again.
        const auto other = elsewhere();
        TaskEntity task = storedTasks(storedList(QStringLiteral("Care"))->talId).constFirst();
        task.tasTitle = QStringLiteral("Water the garden");
        QVERIFY(other.tasks.rename(task).result);

        QSignalSpy finished(&history(), &UndoHistory::finished);
        press(Qt::CTRL | Qt::Key_Z);
        QVERIFY(!finished.isEmpty() || finished.wait(10000));
        QCOMPARE(finished.constFirst().at(1).toString(),
            u"Can't undo edit task 'Water the ferns': it was changed elsewhere since. Nothing was changed.");
        auto* notice = steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"));
        QVERIFY(notice->isVisible());
        QVERIFY(!notice->undoButton()->isVisible());
        QCOMPARE(notice->label()->text(), finished.constFirst().at(1).toString());
        QCOMPARE(storedTasks(task.talId), QList<TaskEntity> {task});
        QCOMPARE(history().stack()->index(), place);
        QCOMPARE(editAction(QStringLiteral("undoAction"))->text(), u"Undo edit task 'Water the ferns'");

        // Deleted elsewhere: the undo of its add has nothing left to take back either.
        QVERIFY(other.tasks.delete_(task.tasId).result);
        finished.clear();
        press(Qt::CTRL | Qt::Key_Z);
        QVERIFY(!finished.isEmpty() || finished.wait(10000));
        QVERIFY(finished.constFirst().at(1).toString().startsWith(u"Can't undo edit task"));
        QVERIFY(storedTasks(task.talId).isEmpty());
    }

    void shouldNameTheActionInSpanish()
    {
        QTranslator spanish;
        QVERIFY(spanish.load(QStringLiteral(":/i18n/tolvane_es")));
        QCoreApplication::installTranslator(&spanish);
        const auto restore = qScopeGuard([&spanish] { QCoreApplication::removeTranslator(&spanish); });
        app->storeLocalUser();
        window = std::make_unique<MainWindow>(app->services());
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        const ProjectEntity home {.prjUserId = QUuid::fromString(user.usrId), .prjName = QStringLiteral("Casa")};
        const TaskListEntity bills {.prjId = home.prjId, .talName = QStringLiteral("Facturas")};
        const TaskEntity rent {
            .prjId = home.prjId, .talId = bills.talId, .tasTitle = QStringLiteral("Pagar el alquiler")};
        QVERIFY(apps.projects.create(home).result);
        QVERIFY(apps.taskLists.create(bills).result);
        QVERIFY(apps.tasks.create(rent).result);
        QVERIFY(apps.tasks.delete_(rent.tasId).result);
        waitForUndo(QStringLiteral("Deshacer eliminar tarea 'Pagar el alquiler'"));
        QCOMPARE(UndoText::redoAction({}), u"Rehacer");
        QCOMPARE(steps.waitFor<UndoNoticeView>(QStringLiteral("undoNotice"))->label()->text(),
            u"Eliminado: tarea 'Pagar el alquiler'");
    }
};

TOLVANE_GUI_TEST_MAIN(UndoWidgetsTest)
#include "UndoWidgetsTest.moc"
