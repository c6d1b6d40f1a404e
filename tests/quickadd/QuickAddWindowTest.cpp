#include "ContentView.h"
#include "MainWindow.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/quickadd/QuickAddView.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
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
    std::optional<TasksApplicationFactory::Applications> apps;
    QTranslator english;
    QUuid userId;

    ProjectEntity addProject(const QString& name)
    {
        const TaskResultEntity created = apps->projects.create({.prjUserId = userId, .prjName = name});
        if (!created.result)
            throw std::runtime_error("project not created");
        return *created.dataAs<ProjectEntity>();
    }

    TaskListEntity addList(const ProjectEntity& project, const QString& name, bool isDefault)
    {
        const TaskResultEntity created
            = apps->taskLists.create({.prjId = project.prjId, .talName = name, .talIsDefault = isDefault});
        if (!created.result)
            throw std::runtime_error("list not created");
        return *created.dataAs<TaskListEntity>();
    }

    QList<TaskEntity> tasksOf(const TaskListEntity& list) const
    {
        return *apps->tasks.list(list.talId).dataAs<QList<TaskEntity>>();
    }

    template <typename T = QWidget> T* waitFor(QObject* parent, const QString& objectName)
    {
        T* found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = parent->findChild<T*>(objectName)) != nullptr; }, 10000))
            throw std::runtime_error("nothing named " + objectName.toStdString() + " showed up");
        return found;
    }

    // Ctrl+N as the keyboard sends it, to the active window.
    QuickAddView* pressCtrlN()
    {
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            throw std::runtime_error("the window never became active");
        QTest::keyClick(window.get(), Qt::Key_N, Qt::ControlModifier);
        auto* view = waitFor<QuickAddView>(window.get(), QStringLiteral("quickAddView"));
        if (!QTest::qWaitFor([view] { return view->isReady() && view->isVisible(); }, 10000))
            throw std::runtime_error("the quick add never read the projects");
        return view;
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
        apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        userId = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        window = std::make_unique<MainWindow>(app->services());
        window->show();
    }

    void cleanup()
    {
        window.reset();
        apps.reset();
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
        window->contentView()->select(SidebarItemEnum::projects);
        auto* projects = waitFor<ProjectsView>(window.get(), QStringLiteral("projectsView"));
        QTRY_VERIFY_WITH_TIMEOUT(!projects->isLoading(), 10000);
        QTest::mouseClick(waitFor(window.get(), QStringLiteral("list:Chores")), Qt::LeftButton);
        QTRY_COMPARE(waitFor<QLabel>(window.get(), QStringLiteral("detailTitle"))->text(), QStringLiteral("Chores"));

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
        waitFor(window.get(), QStringLiteral("task:Pay rent"));
    }

    void shouldFileALineWithoutAProjectInTheOneOpen()
    {
        const ProjectEntity home = addProject(QStringLiteral("Home"));
        const TaskListEntity errands = addList(home, QStringLiteral("Errands"), true);
        const ProjectEntity work = addProject(QStringLiteral("Work"));
        const TaskListEntity calls = addList(work, QStringLiteral("Calls"), false);
        const TaskListEntity inbox = addList(work, QStringLiteral("Inbox"), true);
        const auto add = [this](const QString& line) {
            QuickAddView* view = pressCtrlN();
            QTest::keyClicks(fieldOf(view), line);
            QTest::keyClick(fieldOf(view), Qt::Key_Return);
            QTRY_VERIFY_WITH_TIMEOUT(window->findChild<QuickAddView*>() == nullptr, 10000);
        };

        // Nothing open yet: the first project.
        add(QStringLiteral("Water the ferns"));
        QCOMPARE(tasksOf(errands).size(), 1);

        window->contentView()->select(SidebarItemEnum::projects);
        auto* projects = waitFor<ProjectsView>(window.get(), QStringLiteral("projectsView"));
        QTRY_VERIFY_WITH_TIMEOUT(!projects->isLoading(), 10000);
        QTest::mouseClick(waitFor(window.get(), QStringLiteral("list:Calls")), Qt::LeftButton);
        QTRY_COMPARE(waitFor<QLabel>(window.get(), QStringLiteral("detailTitle"))->text(), QStringLiteral("Calls"));
        add(QStringLiteral("Ring Bea tomorrow"));
        // The open project's default list, as a #Work would have filed it.
        QCOMPARE(tasksOf(inbox).size(), 1);
        QCOMPARE(tasksOf(inbox).constFirst().tasTitle, QStringLiteral("Ring Bea"));
        QCOMPARE(window->statusBar()->currentMessage(), QStringLiteral("Added \u201cRing Bea\u201d to Work / Inbox."));
        // A #Project typed still wins over the one open.
        add(QStringLiteral("Buy stamps #Home"));
        QCOMPARE(tasksOf(errands).size(), 2);

        // With another workspace in front, the project left open there still counts.
        window->contentView()->select(SidebarItemEnum::bitacora);
        add(QStringLiteral("Send the invoice"));
        QCOMPARE(tasksOf(inbox).size(), 2);

        // "Today" open: no project is, so the first one again.
        window->contentView()->select(SidebarItemEnum::projects);
        QTest::mouseClick(waitFor(window.get(), QStringLiteral("dayView:today")), Qt::LeftButton);
        QTRY_VERIFY(projects->openProjectId().isNull());
        add(QStringLiteral("Fix the tap"));
        QCOMPARE(tasksOf(errands).size(), 3);
        QCOMPARE(tasksOf(calls).size(), 0);
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
        window->contentView()->select(SidebarItemEnum::projects);
        auto* projects = waitFor<ProjectsView>(window.get(), QStringLiteral("projectsView"));
        QTRY_VERIFY_WITH_TIMEOUT(!projects->isLoading(), 10000);
        QTest::mouseClick(waitFor(window.get(), QStringLiteral("list:Errands")), Qt::LeftButton);
        QTRY_COMPARE(waitFor<QLabel>(window.get(), QStringLiteral("detailTitle"))->text(), QStringLiteral("Errands"));

        const QDate before = QDate::currentDate();
        auto* row = waitFor<InlineAddRowView>(window.get(), QStringLiteral("inlineAdd:tasks-add-button"));
        row->findChild<QPushButton*>()->click();
        QLineEdit* field = row->findChild<QLineEdit*>();
        QTest::keyClicks(field, QStringLiteral("Pay rent tomorrow !1"));
        QTest::keyClick(field, Qt::Key_Return);
        waitFor(window.get(), QStringLiteral("task:Pay rent"));
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
