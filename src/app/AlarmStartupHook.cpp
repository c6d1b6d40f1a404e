#include "AlarmStartupHook.h"

#include "MainWindow.h"
#include "MeetAlarmNavigationPayload.h"
#include "meetings/alarms/MeetAlarmNotificationDelegate.h"
#include "screens/common/AppServices.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

namespace {

void showWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (qobject_cast<MainWindow*>(window)) {
            window->show();
            window->raise();
            window->activateWindow();
        }
    }
}

// Alarms ring from this process, so closing the window must not end it while any is pending:
// Tolvane then stays in the system tray. Once nothing is pending it lingers a while longer, so
// a click on the last alarm still finds it, and then quits if no window is open.
class AlarmTrayKeeper final : public QObject {
public:
    static constexpr int lingerMs = 10 * 60 * 1000;

    explicit AlarmTrayKeeper(std::shared_ptr<LiveUserNotificationCenter> center)
        : QObject(QCoreApplication::instance())
        , m_center(std::move(center))
    {
        //% "Show Tolvane"
        m_menu.addAction(qtTrId("alarm-tray-show"), this, &showWindows);
        //% "Quit"
        m_menu.addAction(qtTrId("alarm-tray-quit"), QCoreApplication::instance(), &QCoreApplication::quit);
        m_tray.setIcon(QApplication::windowIcon());
        //% "Tolvane: alarms pending"
        m_tray.setToolTip(qtTrId("alarm-tray-tooltip"));
        m_tray.setContextMenu(&m_menu);
        connect(&m_tray, &QSystemTrayIcon::activated, this, [](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                showWindows();
        });
        m_linger.setSingleShot(true);
        m_linger.setInterval(lingerMs);
        connect(&m_linger, &QTimer::timeout, this, &AlarmTrayKeeper::quitIfClosed);
        connect(m_center.get(), &LiveUserNotificationCenter::pendingRequestsChanged, this, &AlarmTrayKeeper::update,
            Qt::QueuedConnection);
        update();
    }

private:
    void update()
    {
        const bool pending = !m_center->pendingRequests().isEmpty();
        if (pending) {
            m_linger.stop();
            QApplication::setQuitOnLastWindowClosed(false);
            if (QSystemTrayIcon::isSystemTrayAvailable())
                m_tray.show();
        } else if (m_tray.isVisible()) {
            m_linger.start();
        }
    }

    void quitIfClosed()
    {
        m_tray.hide();
        QApplication::setQuitOnLastWindowClosed(true);
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                return;
        }
        QCoreApplication::quit();
    }

    std::shared_ptr<LiveUserNotificationCenter> m_center;
    QMenu m_menu;
    QSystemTrayIcon m_tray;
    QTimer m_linger;
};

} // namespace

std::shared_ptr<MeetAlarmNotificationDelegate> makeMeetAlarmNotificationDelegate(NotificationCenter& center)
{
    return std::make_shared<MeetAlarmNotificationDelegate>([&center](const QString& metName, const QDateTime& metDate) {
        center.post(
            NotificationName::openMeetFromAlarm, QVariant::fromValue(MeetAlarmNavigationPayload {metName, metDate}));
    });
}

void runAlarmStartupHook(const AppServices& services)
{
    // Before any window: alarms that came due while Tolvane was closed fire on the first turn
    // of the event loop, and a click on one must already lead somewhere.
    const std::shared_ptr<UserNotificationCenter> center = services.userNotificationCenter();
    center->setDelegate(makeMeetAlarmNotificationDelegate(services.notificationCenter()));

    // A clicked alarm may come while the window sits closed in the tray.
    services.notificationCenter().addObserver(
        NotificationName::openMeetFromAlarm, QCoreApplication::instance(), [](const QVariant&) { showWindows(); });
    if (auto live = std::dynamic_pointer_cast<LiveUserNotificationCenter>(center);
        live && qobject_cast<QApplication*>(QCoreApplication::instance()))
        new AlarmTrayKeeper(std::move(live));
}
