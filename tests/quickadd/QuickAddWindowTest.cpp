#include "ContentView.h"
#include "MainWindow.h"
#include "screens/projects/ProjectsView.h"
#include "screens/quickadd/QuickAddView.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/WindowSteps.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QToolButton>
#include <QTranslator>

#include <stdexcept>

// Ctrl+N's one line and the list's add row, driven through the real widgets over real encrypted
// stores of a local account.
class QuickAddWindowTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<MainWindow> window;
    WindowSteps steps {window, 10000};
    std::optional<AppFixture::Tasks> tasks;
    QTranslator english;

    ProjectEntity addProject(const QString& name)
    {
        return stored<ProjectEntity>(
            tasks->applications.projects.create({.prjUserId = tasks->userId, .prjName = name}));
    }

    TaskListEntity addList(const ProjectEntity& project, const QString& name, bool isDefault)
    {
        return stored<TaskListEntity>(
            tasks->applications.taskLists.create({.prjId = project.prjId, .talName = name, .talIsDefault = isDefault}));
    }

    QList<TaskEntity> tasksOf(const TaskListEntity& list) const
    {
        return stored<QList<TaskEntity>>(tasks->applications.tasks.list(list.talId));
    }

    // Ctrl+N as the keyboard sends it, to the active window.
    QuickAddView* pressCtrlN()
    {
        steps.activate();
        QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
        auto* view = steps.waitFor<QuickAddView>(QStringLiteral("quickAddView"));
        if (!QTest::qWaitFor([view] { return view->isReady() && view->isVisible(); }, 10000))
            throw std::runtime_error("the quick add never read the projects");
        return view;
    }

    // A line typed into Ctrl+N's window and saved with Enter.
    void quickAdd(const QString& line)
    {
        QuickAddView* view = pressCtrlN();
        QTest::keyClicks(fieldOf(view), line);
        QTest::keyClick(fieldOf(view), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 10000);
    }

    static QLineEdit* fieldOf(QuickAddView* view)
    {
        return view->findChild<QLineEdit*>(QStringLiteral("quickAddField"));
    }

    static QStringList chipsOf(QuickAddView* view)
    {
        QStringList chips;
        for (QWidget* chip : view->findChild<QWidget*>(QStringLiteral("quickAddChips"))->findChildren<QWidget*>()) {
            if (chip->objectName().startsWith(QStringLiteral("chip:")))
                chips.append(chip->objectName().mid(5));
        }
        return chips;
    }

    // Picks the one completion offered for what was just typed.
    static void pickCompletion(QuickAddView* view, const QString& expected)
    {
        QAbstractItemView* popup = view->completions();
        QTRY_VERIFY(popup->isVisible());
        QCOMPARE(popup->model()->rowCount(), 1);
        QCOMPARE(popup->model()->index(0, 0).data().toString(), expected);
        QTest::keyClick(popup, Qt::Key_Down);
        QTest::keyClick(popup, Qt::Key_Return);
        QTRY_VERIFY(!popup->isVisible());
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
        tasks = app->signedInTasks();
        steps.show(app->services());
    }

    void cleanup()
    {
        window.reset();
        tasks.reset();
        app.reset();
    }

    void shouldShowWhatItReadAsChipsThatCanBeTakenBack()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);

        QuickAddView* view = pressCtrlN();
        QLineEdit* field = fieldOf(view);
        QTRY_VERIFY(field->hasFocus());
        QTest::keyClicks(field, QStringLiteral("Gym next Monday !1 at 7pm"));
        QCOMPARE(chipsOf(view), QStringList({"next Monday", "!1", "at 7pm"}));

        // The chip's × leaves its words in the title.
        QTest::mouseClick(
            view->findChild<QWidget*>(QStringLiteral("chip:!1"))->findChild<QToolButton*>(QStringLiteral("chipRemove")),
            Qt::LeftButton);
        QTRY_COMPARE(chipsOf(view), QStringList({"next Monday", "at 7pm"}));
        QCOMPARE(view->fields().title, QStringLiteral("Gym !1"));
        QVERIFY(!view->fields().quadrant);

        // Backspace at the start of the line takes back the last one.
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClick(field, Qt::Key_Backspace);
        QTRY_COMPARE(chipsOf(view), QStringList({"next Monday"}));
        QCOMPARE(field->text(), QStringLiteral("Gym next Monday !1 at 7pm"));
        QCOMPARE(view->fields().title, QStringLiteral("Gym !1 at 7pm"));

        // Escape adds nothing.
        QTest::keyClick(field, Qt::Key_Escape);
        QTRY_VERIFY(window->findChild<QuickAddView*>() == nullptr);
        QCOMPARE(tasksOf(errands).size(), 0);
    }

    void shouldSaveIntoTheProjectAndListPickedByCompletion()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        const TaskListEntity chores = addList(home, QStringLiteral("Chores"), false);
        const ProjectEntity work = addProject(QStringLiteral("Work"));
        addList(work, QStringLiteral("Inbox"), true);

        // The list is open in the workspace: the task shows up there once saved.
        steps.openProjects(app->services());
        steps.openList(QStringLiteral("Chores"));

        const QDate before = QDate::currentDate();
        QuickAddView* view = pressCtrlN();
        QLineEdit* field = fieldOf(view);
        QTest::keyClicks(field, QStringLiteral("Pay rent tomorrow #ho"));
        pickCompletion(view, QStringLiteral("Home"));
        QCOMPARE(field->text(), QStringLiteral("Pay rent tomorrow #Home "));
        QTest::keyClicks(field, QStringLiteral("/ch"));
        pickCompletion(view, QStringLiteral("Chores"));
        QTest::keyClicks(field, QStringLiteral("!1"));
        QCOMPARE(chipsOf(view), QStringList({"tomorrow", "#Home", "/Chores", "!1"}));

        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 10000);
        const QDate after = QDate::currentDate();
        const QList<TaskEntity> stored = tasksOf(chores);
        QCOMPARE(stored.size(), 1);
        QCOMPARE(stored.constFirst().tasTitle, QStringLiteral("Pay rent"));
        QVERIFY(stored.constFirst().dueDay() == before.addDays(1) || stored.constFirst().dueDay() == after.addDays(1));
        QCOMPARE(stored.constFirst().tasEisenhowerTag, EisenhowerTagEnum::doIt);
        QCOMPARE(tasksOf(errands).size(), 0);
        QCOMPARE(window->statusBar()->currentMessage(), QStringLiteral("Added \u201cPay rent\u201d to Home / Chores."));
        steps.waitFor(QStringLiteral("task:Pay rent"));
    }

    void shouldFileALineWithoutAPlaceWhereTheWorkspaceStands()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        const TaskListEntity homeCalls = addList(home, QStringLiteral("Calls"), false);
        const ProjectEntity work = addProject(QStringLiteral("Work"));
        const TaskListEntity calls = addList(work, QStringLiteral("Calls"), false);
        const TaskListEntity inbox = addList(work, QStringLiteral("Inbox"), true);
        const auto titlesOf = [this](const TaskListEntity& list) {
            QStringList titles;
            for (const TaskEntity& task : tasksOf(list))
                titles.append(task.tasTitle);
            titles.sort();
            return titles;
        };

        // Nothing open yet: the first project's default list.
        quickAdd(QStringLiteral("Water the ferns"));
        QCOMPARE(titlesOf(errands), QStringList({"Water the ferns"}));

        // A /List alone is the open project's, though the first project has one of that name too.
        ProjectsView* projects = steps.openProjects(app->services());
        steps.openList(QStringLiteral("Inbox"));
        quickAdd(QStringLiteral("Ring the bank /calls"));
        QCOMPARE(titlesOf(calls), QStringList({"Ring the bank"}));
        QCOMPARE(titlesOf(homeCalls), QStringList());
        QCOMPARE(
            window->statusBar()->currentMessage(), QStringLiteral("Added \u201cRing the bank\u201d to Work / Calls."));

        // Neither #Project nor /List: the list open, and the task shows there.
        steps.openList(QStringLiteral("Calls"), steps.waitFor(QStringLiteral("project:Work")));
        QCOMPARE(projects->openListId(), calls.talId);
        quickAdd(QStringLiteral("Ring Bea tomorrow"));
        QCOMPARE(titlesOf(calls), QStringList({"Ring Bea", "Ring the bank"}));
        QCOMPARE(window->statusBar()->currentMessage(), QStringLiteral("Added \u201cRing Bea\u201d to Work / Calls."));
        steps.waitFor(QStringLiteral("task:Ring Bea"));
        // A #Project alone is that project's default list, even the open project's.
        quickAdd(QStringLiteral("Book a room #Work"));
        QCOMPARE(titlesOf(inbox), QStringList({"Book a room"}));
        quickAdd(QStringLiteral("Buy stamps #Home"));
        QCOMPARE(titlesOf(errands), QStringList({"Buy stamps", "Water the ferns"}));

        // With another workspace in front, the list left open there still counts.
        window->contentView()->select(SidebarItemEnum::bitacora);
        quickAdd(QStringLiteral("Send the invoice"));
        QCOMPARE(titlesOf(calls), QStringList({"Ring Bea", "Ring the bank", "Send the invoice"}));

        // A project's overview open: its default list.
        window->contentView()->select(SidebarItemEnum::projects);
        QTest::mouseClick(
            steps.waitFor(QStringLiteral("project:Work"))->findChild<QWidget*>(QStringLiteral("projectHeader")),
            Qt::LeftButton);
        QTRY_VERIFY(projects->openListId().isNull() && projects->openProjectId() == work.prjId);
        quickAdd(QStringLiteral("Order toner"));
        QCOMPARE(titlesOf(inbox), QStringList({"Book a room", "Order toner"}));

        // "Today" open: no project is, so the first one again.
        QTest::mouseClick(steps.waitFor(QStringLiteral("dayView:today")), Qt::LeftButton);
        QTRY_VERIFY(projects->openProjectId().isNull());
        quickAdd(QStringLiteral("Fix the tap"));
        QCOMPARE(titlesOf(errands), QStringList({"Buy stamps", "Fix the tap", "Water the ferns"}));
        QCOMPARE(titlesOf(homeCalls), QStringList());
    }

    void shouldKeepTheLineWhenTheTaskCannotBeAdded()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);

        QuickAddView* view = pressCtrlN();
        QLineEdit* field = fieldOf(view);
        auto* message = view->findChild<QLabel*>(QStringLiteral("quickAddMessage"));

        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY(message->isVisible());
        QCOMPARE(
            message->text(), QStringLiteral("Type the task first, for example \u201cCall Ana tomorrow at 3pm\u201d."));

        QTest::keyClicks(field, QStringLiteral("Prune the roses #Garden tomorrow"));
        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(message->isVisible() && !view->isSaving(), 10000);
        QCOMPARE(message->text(),
            QStringLiteral("The task \u201cPrune the roses #Garden tomorrow\u201d was not added: you have no project "
                           "named \u201cGarden\u201d."));
        QVERIFY(view->isVisible());
        QCOMPARE(field->text(), QStringLiteral("Prune the roses #Garden tomorrow"));

        // Mending the line is enough to add it.
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("tomorrow !3"));
        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(message->isVisible() && !view->isSaving(), 10000);
        QCOMPARE(message->text(),
            QStringLiteral("The task \u201ctomorrow !3\u201d was not added: it needs a title besides the day, time "
                           "and other details."));
        QTest::keyClick(field, Qt::Key_Home);
        QTest::keyClicks(field, QStringLiteral("Prune "));
        QTest::keyClick(field, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 10000);
        QCOMPARE(tasksOf(errands).size(), 1);
        QCOMPARE(tasksOf(errands).constFirst().tasEisenhowerTag, EisenhowerTagEnum::delegate);
    }

    void shouldReadTheLineTypedIntoAListsAddRow()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        steps.openProjects(app->services());
        steps.openList(QStringLiteral("Errands"));

        const QDate before = QDate::currentDate();
        steps.addInline(QStringLiteral("tasks-add-button"), QStringLiteral("Pay rent tomorrow !1"));
        steps.waitFor(QStringLiteral("task:Pay rent"));
        const QDate after = QDate::currentDate();

        const QList<TaskEntity> stored = tasksOf(errands);
        QCOMPARE(stored.size(), 1);
        QVERIFY(stored.constFirst().dueDay() == before.addDays(1) || stored.constFirst().dueDay() == after.addDays(1));
        QVERIFY(!stored.constFirst().tasDueHasTime);
        QCOMPARE(stored.constFirst().tasEisenhowerTag, EisenhowerTagEnum::doIt);
    }
};

TOLVANE_GUI_TEST_MAIN(QuickAddWindowTest)
#include "QuickAddWindowTest.moc"
