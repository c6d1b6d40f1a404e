#include "ContentView.h"
#include "MainWindow.h"
#include "screens/bitacora/BitacoraView.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/projects/TasksDetailPaneView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/ScheduleFixture.h"
#include "screens/search/SearchPopupView.h"
#include "support/TestMain.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace {

// The popup's rows as read: "# Header" for a group's header, the text of a result.
QStringList rowsOf(const SearchPopupView* popup)
{
    QStringList rows;
    for (int i = 0; i < popup->results()->count(); ++i) {
        const QListWidgetItem* row = popup->results()->item(i);
        rows.append(row->data(SearchPopupView::itemRole).isValid() ? row->text() : QStringLiteral("# ") + row->text());
    }
    return rows;
}

} // namespace

// Search as the user meets it in the window over real local stores and the session's calendar
// store: Ctrl+K, typing, the keyboard, and each kind of result opened where it lives.
class SearchWindowTest : public QObject, public ScheduleFixture {
    Q_OBJECT

    std::unique_ptr<MainWindow> window;
    std::optional<TasksApplicationFactory::Applications> apps;
    QUuid user;
    QString calendar;

    template <typename Entity> Entity made(const ResultEntity& result)
    {
        if (!result.result || !result.dataAs<Entity>())
            throw std::runtime_error("not stored");
        return *result.dataAs<Entity>();
    }

    ProjectEntity addProject(const QString& name)
    {
        return made<ProjectEntity>(apps->projects.create({.prjUserId = user, .prjName = name}));
    }
    TaskListEntity addList(const ProjectEntity& project, const QString& name)
    {
        return made<TaskListEntity>(apps->taskLists.create({.prjId = project.prjId, .talName = name}));
    }
    TaskEntity addTask(const TaskListEntity& list, const QString& title, bool done = false)
    {
        TaskEntity task
            = made<TaskEntity>(apps->tasks.create({.prjId = list.prjId, .talId = list.talId, .tasTitle = title}));
        if (done)
            task = made<TaskEntity>(apps->tasks.markDone(task.tasId));
        return task;
    }

    void showWindow()
    {
        window = std::make_unique<MainWindow>(app->services());
        window->resize(1100, 750);
        window->show();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    // Ctrl+K from wherever the focus is, then query typed; null (with why) unless expected shows.
    SearchPopupView* search(const QString& query, const QString& expected)
    {
        // The offscreen platform has no window manager to give the window its activation back
        // after a transient window of the schedule closed.
        if (QApplication::activeWindow() != window.get()) {
            window->activateWindow();
            QTest::qWaitForWindowActive(window.get());
        }
        QWidget* focus = QApplication::focusWidget() ? QApplication::focusWidget() : window.get();
        QTest::keyClick(focus, Qt::Key_K, Qt::ControlModifier);
        SearchPopupView* popup = window->searchPopup();
        if (!popup || !popup->isVisible() || !popup->line()->hasFocus()) {
            qWarning() << "Ctrl+K did not open search from" << focus;
            return nullptr;
        }
        QTest::keyClicks(popup->line(), query);
        if (!QTest::qWaitFor([&] { return rowsOf(popup).contains(expected); }, 45000)) {
            qWarning() << "never found" << expected << "among" << rowsOf(popup);
            return nullptr;
        }
        return popup;
    }

    // Moves the keyboard down to the result text, then opens it with Enter.
    void open(SearchPopupView* popup, const QString& text)
    {
        QVERIFY(popup);
        for (int step = 0; step < popup->results()->count() && popup->currentItem()->text != text; ++step)
            QTest::keyClick(popup->line(), Qt::Key_Down);
        QCOMPARE(popup->currentItem()->text, text);
        QTest::keyClick(popup->line(), Qt::Key_Return);
        QVERIFY(!popup->isVisible());
    }

    template <typename View> View* screen(SidebarItemEnum item)
    {
        return qobject_cast<View*>(window->contentView()->screen(item));
    }

private Q_SLOTS:
    void initTestCase() { loadEnglish(); }

    void init()
    {
        setUpSchedule();
        calendar = addCalendar(QStringLiteral("Search tests"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), calendar);
        const AppServices::TasksSession session = app->services().tasksSession();
        QVERIFY(session.user && session.applications.result);
        user = QUuid::fromString(session.user->usrId);
        apps = *session.applications.dataAs<TasksApplicationFactory::Applications>();
    }

    void cleanup()
    {
        window.reset();
        tearDownSchedule();
    }

    // "ana" in any case finds every kind that mentions Ana, grouped in their order under
    // headers; Enter on the first opens its list with the task in view and marked.
    void findsEveryKindAndOpensATaskInItsList()
    {
        const ProjectEntity home = addProject(QStringLiteral("Hogar"));
        const TaskListEntity shopping = addList(home, QStringLiteral("Compras"));
        for (int i = 0; i < 40; ++i)
            addTask(shopping, QStringLiteral("Artículo %1").arg(i));
        const TaskEntity call = addTask(shopping, QStringLiteral("Llamar a ANA"), true);
        const QDate soon = QDate::currentDate().addDays(2);
        QVERIFY(apps->dailyTasks
                    .create({.dtaUserId = user, .dtaDate = QDateTime(soon, QTime(9, 0)), .dtaTitle = "Regalo para Ána"})
                    .result);
        QVERIFY(apps->bitacora
                    .create({.bteUserId = user,
                        .prjId = home.prjId,
                        .bteDate = QDateTime(QDate::currentDate().addDays(-20), QTime(18, 0)),
                        .bteContent = "Hablé con Ana de la bitácora"})
                    .result);
        const QDateTime start(soon, QTime(16, 0));
        DailyEventsController(app->services(), std::nullopt)
            .create({QStringLiteral("Café con Ana"), QString(), start, start.addSecs(1800)});

        showWindow();
        SearchPopupView* popup = search(QStringLiteral("ana"), QStringLiteral("Café con Ana"));
        QVERIFY(popup);
        QCOMPARE(rowsOf(popup),
            QStringList({"# Tasks", "Llamar a ANA", "# Daily tasks", "Regalo para Ána", "# Logbook",
                "Hablé con Ana de la bitácora", "# Meets", "Café con Ana"}));
        // The first result is chosen as soon as it shows.
        QCOMPARE(popup->currentItem()->text, QStringLiteral("Llamar a ANA"));
        QTest::keyClick(popup->line(), Qt::Key_Return);
        QVERIFY(!popup->isVisible());

        QCOMPARE(window->contentView()->selectedSidebarItem(), SidebarItemEnum::projects);
        auto* projects = screen<ProjectsView>(SidebarItemEnum::projects);
        QVERIFY(projects);
        // Done, so the completed tasks are unfolded to show it.
        QTRY_COMPARE_WITH_TIMEOUT(projects->detailPane()->highlightedTaskId(), call.tasId, 15000);
        QCOMPARE(projects->detailPane()->selection(), ProjectsDetailSelectionEnum::list);
    }

    // Up and Down step over the headers and stop at the ends; every other kind opens where it
    // lives: a project's overview, a daily task's day, a logbook entry's day and project, a meet.
    void theKeyboardOpensEachKindWhereItLives()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Jardín"));
        const ProjectEntity office = addProject(QStringLiteral("Oficina"));
        addList(garden, QStringLiteral("Semillas"));
        const QDate plantingDay = QDate::currentDate().addDays(5);
        QVERIFY(
            apps->dailyTasks
                .create({.dtaUserId = user, .dtaDate = QDateTime(plantingDay, QTime(9, 0)), .dtaTitle = "Jardinería"})
                .result);
        const QDateTime written(QDate::currentDate().addDays(-40), QTime(20, 0));
        QVERIFY(apps->bitacora
                    .create({.bteUserId = user,
                        .prjId = office.prjId,
                        .bteDate = written,
                        .bteContent = "Revisé el jardín de la oficina"})
                    .result);
        const QDateTime start(QDate::currentDate().addDays(9), QTime(11, 30));
        DailyEventsController(app->services(), std::nullopt)
            .create({QStringLiteral("Visita al jardín botánico"), QString(), start, start.addSecs(3600)});
        showWindow();

        SearchPopupView* popup = search(QStringLiteral("JARDIN"), QStringLiteral("Visita al jardín botánico"));
        QVERIFY(popup);
        QCOMPARE(rowsOf(popup),
            QStringList({"# Projects", "Jardín", "# Daily tasks", "Jardinería", "# Logbook",
                "Revisé el jardín de la oficina", "# Meets", "Visita al jardín botánico"}));
        QTest::keyClick(popup->line(), Qt::Key_Up);
        QCOMPARE(popup->currentItem()->text, QStringLiteral("Jardín"));
        QTest::keyClick(popup->line(), Qt::Key_Down);
        QCOMPARE(popup->currentItem()->text, QStringLiteral("Jardinería"));
        for (int i = 0; i < 5; ++i)
            QTest::keyClick(popup->line(), Qt::Key_Down);
        QCOMPARE(popup->currentItem()->text, QStringLiteral("Visita al jardín botánico"));
        QTest::keyClick(popup->line(), Qt::Key_Up);
        QCOMPARE(popup->currentItem()->text, QStringLiteral("Revisé el jardín de la oficina"));

        // Opening another view shows the same window each time; each kind in turn.
        QTest::keyClick(popup->line(), Qt::Key_Return);
        auto* logbook = screen<BitacoraView>(SidebarItemEnum::bitacora);
        QVERIFY(logbook);
        QTRY_COMPARE_WITH_TIMEOUT(logbook->revealedProjectId(), office.prjId, 15000);
        QCOMPARE(logbook->selectedDate().toLocalTime().date(), written.date());

        open(search(QStringLiteral("jardineria"), QStringLiteral("Jardinería")), QStringLiteral("Jardinería"));
        auto* schedule = screen<DailyEventsView>(SidebarItemEnum::schedule);
        QVERIFY(schedule);
        QTRY_COMPARE_WITH_TIMEOUT(schedule->selectedDate(), plantingDay, 15000);

        open(search(QStringLiteral("botan"), QStringLiteral("Visita al jardín botánico")),
            QStringLiteral("Visita al jardín botánico"));
        QTRY_VERIFY_WITH_TIMEOUT(schedule->meetDetail() != nullptr, 15000);
        QCOMPARE(schedule->selectedDate(), start.date());
        QCOMPARE(schedule->meetDetail()->meet().metName, QStringLiteral("Visita al jardín botánico"));
        schedule->meetDetail()->close();

        open(search(QStringLiteral("jard"), QStringLiteral("Jardín")), QStringLiteral("Jardín"));
        auto* projects = screen<ProjectsView>(SidebarItemEnum::projects);
        QVERIFY(projects);
        QTRY_COMPARE_WITH_TIMEOUT(projects->detailPane()->selection(), ProjectsDetailSelectionEnum::project, 15000);
    }

    // Ctrl+K wins over a text field's own use of it; Escape closes; what was added since the
    // last search is found the next time, and a list opens with its tasks.
    void opensFromATextFieldAndReadsAgainEachTime()
    {
        const ProjectEntity studio = addProject(QStringLiteral("Estudio"));
        const TaskListEntity pending = addList(studio, QStringLiteral("Pendientes"));
        addTask(pending, QStringLiteral("Afinar la guitarra"));
        showWindow();

        SearchPopupView* popup = search(QStringLiteral("pendi"), QStringLiteral("Pendientes"));
        QVERIFY(popup);
        QCOMPARE(rowsOf(popup), QStringList({"# Lists", "Pendientes"}));
        open(popup, QStringLiteral("Pendientes"));
        auto* projects = screen<ProjectsView>(SidebarItemEnum::projects);
        QTRY_VERIFY_WITH_TIMEOUT(projects->detailPane()->addRow() != nullptr, 15000);
        InlineAddRowView* row = projects->detailPane()->addRow();
        if (!row->isEditing())
            row->findChild<QPushButton*>()->click();
        auto* field = row->findChild<QLineEdit*>();
        QTRY_VERIFY(field->hasFocus());
        QTest::keyClicks(field, QStringLiteral("Cambiar cuerdas"));

        addTask(pending, QStringLiteral("Ensayar escalas"));
        popup = search(QStringLiteral("ensayar"), QStringLiteral("Ensayar escalas"));
        QVERIFY(popup);
        // The field kept what was typed: Ctrl+K went to search, not to the field.
        QCOMPARE(field->text(), QStringLiteral("Cambiar cuerdas"));
        QTest::keyClicks(popup->line(), QStringLiteral("zzz"));
        QVERIFY(rowsOf(popup).isEmpty());
        QCOMPARE(popup->findChild<QLabel*>(QStringLiteral("searchStatus"))->text(), QStringLiteral("Nothing found"));
        QTest::keyClick(popup->line(), Qt::Key_Escape);
        QVERIFY(!popup->isVisible());
    }
};

TOLVANE_GUI_TEST_MAIN(SearchWindowTest)
#include "SearchWindowTest.moc"
