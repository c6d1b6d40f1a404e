#include "MainWindow.h"

#include "ContentView.h"
#include "InformationConsoleView.h"
#include "TaskNavigationPayload.h"
#include "screens/bitacora/BitacoraView.h"
#include "screens/common/AppServices.h"
#include "screens/projects/ProjectsView.h"
#include "screens/quickadd/QuickAddView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/search/SearchPopupView.h"
#include "screens/search/SearchSource.h"
#include "screens/settings/UserSettingsView.h"
#include "undo/UndoControls.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QVBoxLayout>

namespace {

const QString geometryKey = QStringLiteral("MainWindow.geometry");

// The workspaces that other work brings later show who they are and nothing more.
QWidget* comingWorkspace(SidebarItemEnum item, QWidget* parent)
{
    auto* label = new QLabel(SidebarItem::label(item), parent);
    label->setAlignment(Qt::AlignCenter);
    label->setEnabled(false);
    return label;
}

} // namespace

MainWindow::MainWindow(const AppServices& services, QWidget* parent)
    : QMainWindow(parent)
    , m_services(services)
    , m_searchSource(new SearchSource(services, this))
{
    setWindowTitle(QStringLiteral("Tolvane"));
    // Small laptop screens and tiled halves: the panes fold and scroll below this.
    setMinimumSize(800, 600);
    m_contentView = new ContentView(
        services,
        [this, &services](SidebarItemEnum item, QWidget* parent) -> QWidget* {
            if (item == SidebarItemEnum::schedule) {
                auto* schedule = new DailyEventsView(
                    services, {&m_contentView->pendingMeetNavigation, &m_contentView->pendingDateSelection}, parent);
                connect(m_contentView, &ContentView::pendingMeetNavigationChanged, schedule,
                    &DailyEventsView::consumePendingNavigation);
                return schedule;
            }
            if (item == SidebarItemEnum::projects)
                return new ProjectsView(services, parent);
            if (item == SidebarItemEnum::bitacora)
                return new BitacoraView(services, parent);
            return comingWorkspace(item, parent);
        },
        this);
    // The notice of the last delete (and of an undo that could not apply) sits under the content.
    auto* central = new QWidget(this);
    auto* centralLayout = new QVBoxLayout(central);
    centralLayout->setContentsMargins(0, 0, 0, 0);
    centralLayout->setSpacing(0);
    centralLayout->addWidget(m_contentView, 1);
    centralLayout->addWidget(new UndoNoticeView(services.undoHistory(), central));
    setCentralWidget(central);

    //% "&Tolvane"
    QMenu* app = menuBar()->addMenu(qtTrId("menu-app"));
    QAction* settings = app->addAction(qtTrId("user-settings-screen-title"), this,
        [this] { m_services.notificationCenter().post(NotificationName::showUserSettings); });
    settings->setShortcut(QKeySequence::Preferences);
    settings->setObjectName(QStringLiteral("userSettingsAction"));
    //% "Quick add…"
    QAction* quickAdd = app->addAction(qtTrId("menu-quick-add"), this, &MainWindow::showQuickAdd);
    quickAdd->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    quickAdd->setObjectName(QStringLiteral("quickAddAction"));
    //% "Information console"
    app->addAction(qtTrId("info-console-title"), this, &MainWindow::showConsole);
    app->addSeparator();
    //% "Quit"
    app->addAction(qtTrId("menu-quit"), qApp, &QApplication::quit)->setShortcut(QKeySequence::Quit);

    UndoControls::addEditMenu(menuBar(), services.undoHistory());

    //% "&View"
    QMenu* view = menuBar()->addMenu(qtTrId("menu-view"));
    int number = 1;
    for (const SidebarItemEnum item : SidebarItem::allCases) {
        QAction* go = view->addAction(SidebarItem::label(item), this, [this, item] { m_contentView->select(item); });
        go->setShortcut(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_0 + number++)));
    }
    view->addSeparator();
    //% "Search…"
    QAction* search = view->addAction(qtTrId("menu-search"), this, &MainWindow::openSearch);
    search->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_K));
    search->setObjectName(QStringLiteral("searchAction"));
    // Text fields take Ctrl+K for themselves (delete to the end of the line); in this window it
    // opens search wherever the focus is.
    qApp->installEventFilter(this);

    services.notificationCenter().addObserver(
        NotificationName::openTaskFromReminder, this, [this](const QVariant& object) {
            const auto task = object.value<TaskNavigationPayload>();
            bringToFront();
            openInProjects(task.projectId, task.taskListId, task.taskId);
        });
    services.notificationCenter().addObserver(
        NotificationName::showUserSettings, this, [this](const QVariant&) { showUserSettings(); });

    const QByteArray geometry = services.userDefaults().value(geometryKey).toByteArray();
    if (geometry.isEmpty() || !restoreGeometry(geometry))
        resize(1200, 800);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    UserDefaults defaults = m_services.userDefaults();
    defaults.setValue(geometryKey, saveGeometry());
    QMainWindow::closeEvent(event);
}

void MainWindow::bringToFront()
{
    if (isMinimized())
        setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MainWindow::showConsole()
{
    QDialog dialog(this);
    dialog.setWindowTitle(qtTrId("info-console-title"));
    dialog.resize(700, 400);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new InformationConsoleView(m_services, &dialog));
    dialog.exec();
}

void MainWindow::showUserSettings()
{
    if (!m_settings) {
        m_settings = new UserSettingsView(
            m_services, CalendarSettingsServices::standard(),
            [this](QWidget* parent) { return new InformationConsoleView(m_services, parent); }, this);
        m_settings->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

void MainWindow::showQuickAdd()
{
    if (!m_quickAdd) {
        m_quickAdd = new QuickAddView(m_services, this);
        m_quickAdd->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_quickAdd, &QuickAddView::added, this, [this](const QString& notice) {
            statusBar()->showMessage(notice, 15000);
            // The workspace shows the task where it went.
            if (auto* projects = qobject_cast<ProjectsView*>(m_contentView->screen(SidebarItemEnum::projects)))
                projects->reload();
        });
    }
    // A line that names no project goes where the workspace stands, as if typed there.
    const auto* projects = qobject_cast<ProjectsView*>(m_contentView->screen(SidebarItemEnum::projects));
    m_quickAdd->setOpenPlace(
        projects ? QuickAdd::OpenPlace {projects->openProjectId(), projects->openListId()} : QuickAdd::OpenPlace {});
    m_quickAdd->show();
    m_quickAdd->raise();
    m_quickAdd->activateWindow();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        auto* widget = qobject_cast<QWidget*>(watched);
        if (key->key() == Qt::Key_K && key->modifiers() == Qt::ControlModifier && widget && widget->window() == this) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::openSearch()
{
    if (!m_search) {
        m_search = new SearchPopupView(*m_searchSource, this);
        connect(m_search, &SearchPopupView::itemActivated, this, &MainWindow::openSearchResult);
    }
    m_search->open();
}

void MainWindow::openInProjects(const QUuid& projectId, const QUuid& taskListId, const QUuid& taskId)
{
    m_contentView->select(SidebarItemEnum::projects);
    if (auto* projects = qobject_cast<ProjectsView*>(m_contentView->screen(SidebarItemEnum::projects)))
        projects->reveal(projectId, taskListId, taskId);
}

void MainWindow::openSearchResult(const SearchItem& item)
{
    switch (item.kind) {
    case SearchKind::project:
    case SearchKind::taskList:
    case SearchKind::task:
        openInProjects(item.projectId, item.taskListId, item.itemId);
        return;
    case SearchKind::dailyTask:
        // As a day asked for on the command line.
        m_contentView->openDate(item.date.toLocalTime().date());
        return;
    case SearchKind::meet:
        // As an opened alarm: the schedule on its day with the meet open.
        m_services.notificationCenter().post(NotificationName::openMeetFromAlarm,
            QVariant::fromValue(MeetAlarmNavigationPayload {item.text, item.date}));
        return;
    case SearchKind::logbook:
        m_contentView->select(SidebarItemEnum::bitacora);
        if (auto* logbook = qobject_cast<BitacoraView*>(m_contentView->screen(SidebarItemEnum::bitacora)))
            logbook->reveal(item.date, item.projectId);
        return;
    }
}
