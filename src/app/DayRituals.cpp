#include "DayRituals.h"

#include "MainWindow.h"
#include "platform/Logging.h"
#include "platform/SystemClock.h"
#include "rituals/Autostart.h"
#include "rituals/QuickAdd.h"
#include "rituals/RitualSettings.h"
#include "rituals/RollOver.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/rituals/DayReviewView.h"
#include "screens/rituals/MorningPlanView.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QEvent>
#include <QMenuBar>
#include <QStatusBar>

namespace {

const QString notificationService = QStringLiteral("org.freedesktop.Notifications");
const QString notificationPath = QStringLiteral("/org/freedesktop/Notifications");
const QString planAction = QStringLiteral("tolvane-open-plan");
const QString reviewAction = QStringLiteral("tolvane-open-review");

} // namespace

DayRituals::DayRituals(
    const AppServices& services, MainWindow* window, std::shared_ptr<const Clock> clock, QObject* parent)
    : QObject(parent)
    , m_services(services)
    , m_window(window)
    , m_clock(clock ? std::move(clock) : std::make_shared<SystemClock>())
{
    for (QTimer* timer : {&m_planReminder, &m_reviewReminder, &m_newDay}) {
        timer->setSingleShot(true);
        // Hours away: one exact wake-up, not a coarse one drifting by minutes.
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&m_planReminder, &QTimer::timeout, this, [this] {
        //% "Good morning"
        //% "Plan your day: what is left from earlier days, today's meets and projects."
        remind(qtTrId("rituals-plan-reminder-title"), qtTrId("rituals-plan-reminder-body"), planAction);
        armReminder(m_planReminder, RitualSettings::morningPlanHourKey);
    });
    connect(&m_reviewReminder, &QTimer::timeout, this, [this] {
        //% "Time to close the day"
        //% "Review what the day held and write it to the logbook."
        remind(qtTrId("rituals-review-reminder-title"), qtTrId("rituals-review-reminder-body"), reviewAction);
        armReminder(m_reviewReminder, RitualSettings::reviewHourKey);
    });
    connect(&m_newDay, &QTimer::timeout, this, [this] {
        UserDefaults defaults = m_services.userDefaults();
        defaults.setValue(RitualSettings::lastStartDayKey, today().toString(Qt::ISODate));
        if (defaults.boolValue(RitualSettings::autoMoveUnfinishedKey))
            moveUnfinishedToToday();
        m_newDay.start(int(std::min<qint64>(msUntilNextHour(m_clock->now(), 0) + 60000, INT_MAX)));
    });
    QDBusConnection::sessionBus().connect(notificationService, notificationPath, notificationService,
        QStringLiteral("ActionInvoked"), this, SLOT(onReminderAction(uint, QString)));
    addMenu();
    watchFirstAlarm();
    services.notificationCenter().addObserver(
        RitualSettings::remindersDidChange, this, [this](const QVariant&) { armReminders(); });
}

void DayRituals::watchFirstAlarm()
{
    auto live = std::dynamic_pointer_cast<LiveUserNotificationCenter>(m_services.userNotificationCenter());
    if (!live)
        return;
    // An alarm only rings while Tolvane runs: the first one armed turns starting at login on,
    // unless the user already chose either way in the settings.
    connect(
        live.get(), &LiveUserNotificationCenter::pendingRequestsChanged, this,
        [this, center = live.get()] {
            UserDefaults defaults = m_services.userDefaults();
            if (defaults.contains(RitualSettings::startAtLoginKey) || center->pendingRequests().isEmpty())
                return;
            defaults.setValue(RitualSettings::startAtLoginKey, true);
            QString error;
            if (Autostart(QCoreApplication::applicationFilePath()).setEnabled(true, &error))
                qCInfo(lcApp) << "Tolvane now starts at login, so that alarms ring";
            else
                qCWarning(lcApp) << "cannot start Tolvane at login:" << error;
        },
        Qt::QueuedConnection);
}

bool DayRituals::eventFilter(QObject* watched, QEvent* event)
{
    // Started hidden on a new day: the plan waits for the window to be opened.
    if (m_planWhenShown && watched == m_window
        && (event->type() == QEvent::Show || event->type() == QEvent::WindowStateChange) && m_window->isVisible()
        && !m_window->isMinimized()) {
        m_planWhenShown = false;
        QTimer::singleShot(0, this, &DayRituals::openPlan);
    }
    return QObject::eventFilter(watched, event);
}

DayRituals::~DayRituals()
{
    delete m_menu;
}

MorningPlanView* DayRituals::plan() const
{
    return m_plan;
}

DayReviewView* DayRituals::review() const
{
    return m_review;
}

QDate DayRituals::today() const
{
    return m_clock->now().toLocalTime().date();
}

qint64 DayRituals::msUntilNextHour(const QDateTime& now, int hour)
{
    const QDateTime local = now.toLocalTime();
    QDateTime next(local.date(), QTime(hour, 0));
    // An hour skipped by a clock change lands on the hour after it.
    if (!next.isValid() || next <= local)
        next = QDateTime(local.date().addDays(1), QTime(hour, 0));
    return std::max<qint64>(1000, local.msecsTo(next));
}

void DayRituals::addMenu()
{
    if (!m_window)
        return;
    //% "&Day"
    QMenu* day = m_window->menuBar()->addMenu(qtTrId("menu-day"));
    m_menu = day;
    QAction* plan = day->addAction(qtTrId("rituals-plan-title"), this, &DayRituals::openPlan);
    plan->setObjectName(QStringLiteral("openPlanAction"));
    plan->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    QAction* review = day->addAction(qtTrId("rituals-review-title"), this, &DayRituals::openReview);
    review->setObjectName(QStringLiteral("openReviewAction"));
    review->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R));
}

void DayRituals::atStart(bool background)
{
    m_background = background;
    UserDefaults defaults = m_services.userDefaults();
    const QString todayText = today().toString(Qt::ISODate);
    m_firstStartOfDay = defaults.value(RitualSettings::lastStartDayKey).toString() != todayText;
    defaults.setValue(RitualSettings::lastStartDayKey, todayText);
    if (m_firstStartOfDay) {
        if (defaults.boolValue(RitualSettings::autoMoveUnfinishedKey))
            moveUnfinishedToToday();
        const bool planAtStart = !defaults.contains(RitualSettings::morningPlanAtFirstStartKey)
            || defaults.boolValue(RitualSettings::morningPlanAtFirstStartKey);
        if (planAtStart && !background)
            openPlan();
        else if (planAtStart && m_window) {
            m_planWhenShown = true;
            m_window->installEventFilter(this);
        }
    }
    armReminders();
    m_newDay.start(int(std::min<qint64>(msUntilNextHour(m_clock->now(), 0) + 60000, INT_MAX)));
}

void DayRituals::moveUnfinishedToToday()
{
    const AppServices* services = &m_services;
    const QDate date = today();
    runAsync(
        this,
        [services, date]() -> std::optional<RollOver::Outcome> {
            const AppServices::TasksSession session = services->tasksSession();
            if (!session.user || !session.applications.result)
                return std::nullopt;
            const auto& applications = *session.applications.dataAs<TasksApplicationFactory::Applications>();
            const TaskResultEntity earlier = RollOver::unfinishedBefore(applications.dailyTasks, date);
            if (!earlier.result)
                return RollOver::Outcome {0, earlier.firstMessage().value_or(QString())};
            return RollOver::moveToToday(applications.dailyTasks, *earlier.dataAs<QList<DailyTaskEntity>>(), date);
        },
        [this](const std::optional<RollOver::Outcome>& outcome) {
            if (!outcome)
                return;
            if (outcome->failure)
                m_services.console().appendLine(QStringLiteral("DayRituals.moveToToday failed: ") + *outcome->failure);
            if (outcome->moved > 0 || outcome->failure)
                showNotice(RollOver::movedNotice(outcome->moved)
                    + (outcome->failure ? QLatin1Char(' ') + *outcome->failure : QString()));
            if (m_plan)
                m_plan->reload();
            Q_EMIT rolledOver(outcome->moved);
        });
}

void DayRituals::quickAdd(const QString& text)
{
    const AppServices* services = &m_services;
    runAsync(
        this,
        [services, text] {
            const AppServices::TasksSession session = services->tasksSession();
            if (!session.user)
                //% "The task “%1” was not added: sign in or create a local account first."
                return QuickAdd::Outcome {false, qtTrId("quick-add-no-account").arg(text)};
            if (!session.applications.result)
                return QuickAdd::Outcome {false,
                    qtTrId("quick-add-failed").arg(text, session.applications.firstMessage().value_or(QString()))};
            return QuickAdd::add(*session.applications.dataAs<TasksApplicationFactory::Applications>(),
                QUuid::fromString(session.user->usrId), text);
        },
        [this](const QuickAdd::Outcome& outcome) {
            if (!outcome.added)
                m_services.console().appendLine(QStringLiteral("DayRituals.quickAdd failed: ") + outcome.notice);
            showNotice(outcome.notice);
            Q_EMIT quickAddFinished(outcome.added);
        });
}

void DayRituals::openPlan()
{
    if (!m_plan) {
        m_plan = new MorningPlanView(m_services, today(), m_window);
        m_plan->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_plan, &MorningPlanView::moved, this, [this](int count) {
            if (count > 0)
                showNotice(RollOver::movedNotice(count));
        });
    }
    m_plan->show();
    m_plan->raise();
    m_plan->activateWindow();
}

void DayRituals::openReview()
{
    if (!m_review) {
        m_review = new DayReviewView(m_services, today(), m_window);
        m_review->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_review->show();
    m_review->raise();
    m_review->activateWindow();
}

void DayRituals::armReminders()
{
    armReminder(m_planReminder, RitualSettings::morningPlanHourKey);
    armReminder(m_reviewReminder, RitualSettings::reviewHourKey);
}

void DayRituals::armReminder(QTimer& timer, const QString& hourKey)
{
    timer.stop();
    bool isHour = false;
    const int hour = m_services.userDefaults().value(hourKey).toInt(&isHour);
    if (!isHour || hour < 0 || hour > 23)
        return;
    timer.start(int(std::min<qint64>(msUntilNextHour(m_clock->now(), hour), INT_MAX)));
}

void DayRituals::remind(const QString& title, const QString& body, const QString& action)
{
    QDBusMessage notify = QDBusMessage::createMethodCall(
        notificationService, notificationPath, notificationService, QStringLiteral("Notify"));
    const QVariantMap hints {{QStringLiteral("desktop-entry"), QStringLiteral("com.quorvel.tolvane")}};
    //% "Open"
    notify << QStringLiteral("Tolvane") << uint(0) << QStringLiteral("com.quorvel.tolvane") << title << body
           << QStringList {QStringLiteral("default"), qtTrId("rituals-reminder-open"), action,
                  qtTrId("rituals-reminder-open")}
           << hints << int(-1);
    const QDBusMessage reply = QDBusConnection::sessionBus().call(notify, QDBus::Block, 5000);
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        m_shownReminders.insert(reply.arguments().constFirst().toUInt(), action);
    else
        qCWarning(lcApp) << "cannot show the reminder:" << reply.errorMessage();
}

void DayRituals::onReminderAction(uint notificationId, const QString& actionKey)
{
    const auto shown = m_shownReminders.constFind(notificationId);
    if (shown == m_shownReminders.constEnd())
        return;
    const QString action = *shown;
    m_shownReminders.erase(shown);
    Q_UNUSED(actionKey);
    if (m_window)
        m_window->bringToFront();
    if (action == planAction)
        openPlan();
    else
        openReview();
}

void DayRituals::showNotice(const QString& text)
{
    m_lastNotice = text;
    qCInfo(lcApp).noquote() << "notice:" << text;
    if (m_window)
        m_window->statusBar()->showMessage(text, 15000);
    if (!m_window || !m_window->isVisible() || m_window->isMinimized()) {
        QDBusMessage notify = QDBusMessage::createMethodCall(
            notificationService, notificationPath, notificationService, QStringLiteral("Notify"));
        notify << QStringLiteral("Tolvane") << uint(0) << QStringLiteral("com.quorvel.tolvane")
               << QStringLiteral("Tolvane") << text << QStringList()
               << QVariantMap {{QStringLiteral("desktop-entry"), QStringLiteral("com.quorvel.tolvane")}} << int(-1);
        QDBusConnection::sessionBus().call(notify, QDBus::NoBlock);
    }
}
