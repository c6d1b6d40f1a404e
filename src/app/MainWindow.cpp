#include "MainWindow.h"

#include "ContentView.h"
#include "InformationConsoleView.h"
#include "screens/bitacora/BitacoraView.h"
#include "screens/common/AppServices.h"
#include "screens/projects/ProjectsView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/settings/UserSettingsView.h"
#include "undo/UndoControls.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QMenuBar>
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
