#include "AlarmStartupHook.h"

#include "MainWindow.h"
#include "MeetAlarmNavigationPayload.h"
#include "TaskNavigationPayload.h"
#include "meetings/alarms/MeetAlarmNotificationDelegate.h"
#include "platform/Logging.h"
#include "platform/notifications/NotificationDelegateRouter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "tasks/reminders/TaskReminderNotificationDelegate.h"

#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QMessageBox>
#include <QMutex>
#include <QPointer>
#include <QPushButton>
#include <QSystemTrayIcon>
#include <QTimer>
#include <QWidget>

#include <atomic>

namespace {

void showWindows()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* mainWindow = qobject_cast<MainWindow*>(window))
            mainWindow->bringToFront();
    }
}

// Alarms ring from this process, so closing the window must not end it while any is pending:
// Tolvane then stays in the system tray. Once nothing is pending it lingers a while longer, so
// a click on the last alarm still finds it, and then quits if no window is open. A desktop
// without a tray would leave an invisible process behind, reachable only by launching Tolvane
// again: there closing the window minimises it instead, or quits if the user says so, knowing
// that the alarms will not ring.
class AlarmTrayKeeper final : public QObject {
public:
    static constexpr int lingerMs = 10 * 60 * 1000;

    // The one of the process, once the start-up hook made it.
    static inline QPointer<AlarmTrayKeeper> instance;

    explicit AlarmTrayKeeper(std::shared_ptr<LiveUserNotificationCenter> center)
        : QObject(QCoreApplication::instance())
        , m_center(std::move(center))
    {
        instance = this;
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
        QCoreApplication::instance()->installEventFilter(this);
        update();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Quit && watched == QCoreApplication::instance()) {
            // Quitting closes every window; those closes must go through.
            m_quitting = true;
            QTimer::singleShot(0, this, [this] { m_quitting = false; });
        } else if (event->type() == QEvent::Close && (m_pending || m_keepInTray) && !m_quitting
            && !QSystemTrayIcon::isSystemTrayAvailable()) {
            if (auto* window = qobject_cast<MainWindow*>(watched)) {
                event->ignore();
                // Started for the background with nothing pending: minimised without a question.
                if (m_pending)
                    keepRunningMinimised(window);
                else
                    window->showMinimized();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void keepRunningMinimised(MainWindow* window)
    {
        if (!m_minimiseOnClose) {
            QMessageBox box(QMessageBox::Information, window->windowTitle(),
                //% "Alarms are pending, and this desktop has no tray to keep Tolvane in."
                qtTrId("alarm-close-without-tray-title"), QMessageBox::NoButton, window);
            box.setObjectName(QStringLiteral("alarmsPendingOnClose"));
            //% "Tolvane stays open, minimised, so that they ring. If you quit, no alarm rings until you open Tolvane
            // again."
            box.setInformativeText(qtTrId("alarm-close-without-tray-text"));
            //% "Keep running"
            QPushButton* minimise = box.addButton(qtTrId("alarm-close-minimise-button"), QMessageBox::AcceptRole);
            //% "Quit anyway"
            QPushButton* quit = box.addButton(qtTrId("alarm-close-quit-button"), QMessageBox::DestructiveRole);
            box.setDefaultButton(minimise);
            box.setEscapeButton(minimise);
            box.exec();
            if (box.clickedButton() == quit) {
                QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
                return;
            }
            // Asked once a run: from now on closing just minimises.
            m_minimiseOnClose = true;
        }
        window->showMinimized();
    }

public:
    void setKeepInTray(bool keep)
    {
        m_keepInTray = keep;
        //% "Tolvane"
        m_tray.setToolTip(keep ? qtTrId("alarm-tray-tooltip-background") : qtTrId("alarm-tray-tooltip"));
        update();
    }

private:
    void update()
    {
        m_pending = !m_center->pendingRequests().isEmpty();
        if (m_pending || m_keepInTray) {
            m_linger.stop();
            QApplication::setQuitOnLastWindowClosed(false);
            if (QSystemTrayIcon::isSystemTrayAvailable())
                m_tray.show();
        } else if (m_tray.isVisible()) {
            m_linger.start();
        } else {
            QApplication::setQuitOnLastWindowClosed(true);
        }
    }

    void quitIfClosed()
    {
        if (m_keepInTray)
            return;
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
    bool m_pending = false;
    bool m_quitting = false;
    bool m_minimiseOnClose = false;
    bool m_keepInTray = false;
};

// Brings the task reminders in line with the account signed in now: the reminders of the
// account before are dropped, and those of this account's tasks still ahead are armed. Account
// changes may follow each other faster than the stores answer, so only the newest one's work
// runs, one at a time.
void rearmTaskReminders(const AppServices& services)
{
    static std::atomic<quint64> latest {0};
    static QMutex running;
    const quint64 generation = ++latest;
    screenThreadPool()->start([services, generation] {
        const QMutexLocker locker(&running);
        if (generation != latest)
            return;
        const TaskReminderScheduler reminders = services.taskReminderScheduler();
        reminders.dropAll();
        const AppServices::TasksSession session = services.tasksSession();
        const auto* applications = session.applications.dataAs<TasksApplicationFactory::Applications>();
        if (!session.user || !applications)
            return;
        // Read through the reminding store: every read of whole lists arms what is due ahead.
        const std::shared_ptr<TaskRepository>& tasks = applications->tasks.taskRepository;
        if (tasks->listAll().result)
            return;
        // A store without a query over every task: the lists of the user's projects.
        const ResultEntity projects = applications->projects.list(QUuid::fromString(session.user->usrId));
        const auto* ownProjects = projects.result ? projects.dataAs<QList<ProjectEntity>>() : nullptr;
        QList<QUuid> projectIds;
        for (const ProjectEntity& project : ownProjects ? *ownProjects : QList<ProjectEntity>())
            projectIds.append(project.prjId);
        const ResultEntity lists = applications->agenda.taskListRepository->listOfProjects(projectIds);
        const auto* ownLists = lists.result ? lists.dataAs<QList<TaskListEntity>>() : nullptr;
        if (!ownProjects || !ownLists) {
            qCWarning(lcAlarms) << "cannot read the tasks to remind of:"
                                << (ownProjects ? lists : projects).firstMessage().value_or(QString());
            return;
        }
        QList<QUuid> listIds;
        for (const TaskListEntity& list : *ownLists)
            listIds.append(list.talId);
        const ResultEntity listed = tasks->listOfLists(listIds);
        if (!listed.result)
            qCWarning(lcAlarms) << "cannot read the tasks to remind of:" << listed.firstMessage().value_or(QString());
    });
}

} // namespace

std::shared_ptr<MeetAlarmNotificationDelegate> makeMeetAlarmNotificationDelegate(NotificationCenter& center)
{
    return std::make_shared<MeetAlarmNotificationDelegate>([&center](const QString& metName, const QDateTime& metDate) {
        center.post(
            NotificationName::openMeetFromAlarm, QVariant::fromValue(MeetAlarmNavigationPayload {metName, metDate}));
    });
}

std::shared_ptr<TaskReminderNotificationDelegate> makeTaskReminderNotificationDelegate(
    const AppServices& services, const TaskReminderScheduler& reminders)
{
    const auto markDone = [services](const QUuid& taskId) {
        screenThreadPool()->start([services, taskId] {
            // Whoever is signed in now: the task is looked for in that account's store.
            const AppServices::TasksSession session = services.tasksSession();
            const auto* applications = session.applications.dataAs<TasksApplicationFactory::Applications>();
            const TaskResultEntity done = applications
                ? applications->tasks.markDone(taskId)
                : TaskResultEntity::applicationFailure(session.applications.firstMessage().value_or(QString()));
            if (!done.result) {
                qCWarning(lcAlarms) << "cannot mark the reminded task done" << taskId
                                    << done.firstMessage().value_or(QString());
                return;
            }
            services.notificationCenter().post(NotificationName::tasksDidChange);
        });
    };
    const auto openTask = [services](const QUuid& taskId) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), &showWindows);
        screenThreadPool()->start([services, taskId] {
            // It may have moved since the reminder was armed: where it lives now.
            const AppServices::TasksSession session = services.tasksSession();
            const auto* applications = session.applications.dataAs<TasksApplicationFactory::Applications>();
            const TaskResultEntity found = applications ? applications->tasks.find(taskId) : session.applications;
            const auto* task = found.result ? found.dataAs<TaskEntity>() : nullptr;
            if (!task) {
                qCWarning(lcAlarms) << "cannot find the reminded task" << taskId
                                    << found.firstMessage().value_or(QString());
                return;
            }
            services.notificationCenter().post(NotificationName::openTaskFromReminder,
                QVariant::fromValue(TaskNavigationPayload {task->prjId, task->talId, task->tasId}));
        });
    };
    return std::make_shared<TaskReminderNotificationDelegate>(reminders, markDone, openTask);
}

void runAlarmStartupHook(const AppServices& services)
{
    // Before any window: alarms that came due while Tolvane was closed fire on the first turn
    // of the event loop, and a click on one must already lead somewhere.
    const std::shared_ptr<UserNotificationCenter> center = services.userNotificationCenter();
    auto router = std::make_shared<NotificationDelegateRouter>(
        makeMeetAlarmNotificationDelegate(services.notificationCenter()));
    router->route(TaskReminderScheduler::identifierPrefix,
        makeTaskReminderNotificationDelegate(services, services.taskReminderScheduler()));
    center->setDelegate(std::move(router));

    // Reminders ring for the account signed in, whichever it was when they were armed.
    services.notificationCenter().addObserver(NotificationName::userAccountDidChange, QCoreApplication::instance(),
        [services](const QVariant&) { rearmTaskReminders(services); });

    // A clicked alarm may come while the window sits closed in the tray.
    services.notificationCenter().addObserver(
        NotificationName::openMeetFromAlarm, QCoreApplication::instance(), [](const QVariant&) { showWindows(); });
    if (auto live = std::dynamic_pointer_cast<LiveUserNotificationCenter>(center);
        live && qobject_cast<QApplication*>(QCoreApplication::instance())) {
        new AlarmTrayKeeper(std::move(live));
    }
}

void keepInTray(bool keep)
{
    if (AlarmTrayKeeper::instance)
        AlarmTrayKeeper::instance->setKeepInTray(keep);
    else if (keep)
        QApplication::setQuitOnLastWindowClosed(false);
}
