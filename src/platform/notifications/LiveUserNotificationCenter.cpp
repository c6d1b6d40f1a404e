#include "platform/notifications/LiveUserNotificationCenter.h"

#include "platform/AppPaths.h"
#include "platform/Logging.h"
#include "platform/SystemClock.h"
#include "platform/notifications/MediaSoundPlayer.h"
#include "platform/notifications/SystemSounds.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
const QString interface = QStringLiteral("org.freedesktop.Notifications");
constexpr uchar criticalUrgency = 2;
constexpr int callTimeoutMs = 5000;

} // namespace

LiveUserNotificationCenter::LiveUserNotificationCenter(Options options, QObject* parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &LiveUserNotificationCenter::checkDueRequests);
    // Any sender: the server's signals come from its unique name, not the well-known one.
    m_options.bus.connect(
        QString(), path, interface, QStringLiteral("ActionInvoked"), this, SLOT(onActionInvoked(uint, QString)));
    m_options.bus.connect(
        QString(), path, interface, QStringLiteral("NotificationClosed"), this, SLOT(onNotificationClosed(uint, uint)));
    load();
    // Not at once: requests that came due while the program was away wait for the delegate,
    // which start-up installs right after the centre exists.
    scheduleSoon();
}

LiveUserNotificationCenter::~LiveUserNotificationCenter() = default;

std::shared_ptr<LiveUserNotificationCenter> LiveUserNotificationCenter::shared()
{
    // Never destroyed: alarms ring until the process ends, and tearing down D-Bus and audio
    // objects after the application object is gone is not safe.
    static LiveUserNotificationCenter* const center = [] {
        auto soundPlayer = std::make_shared<MediaSoundPlayer>();
        Options options;
        options.storeFilePath = AppPaths::tolvaneDataDirectory() + QStringLiteral("/pending-notifications.json");
        options.soundsDirectory = AppPaths::userSoundsDirectory();
        options.defaultSoundPath = SystemSounds::defaultNotificationSoundPath();
        options.clock = std::make_shared<SystemClock>();
        options.soundPlayer = soundPlayer;
        auto* created = new LiveUserNotificationCenter(std::move(options));
        if (QCoreApplication* application = QCoreApplication::instance()) {
            created->moveToThread(application->thread());
            soundPlayer->moveToThread(application->thread());
        }
        return created;
    }();
    return std::shared_ptr<LiveUserNotificationCenter>(std::shared_ptr<void>(), center);
}

UserNotificationAuthorizationStatus LiveUserNotificationCenter::authorizationStatus()
{
    // A desktop asks no permission; what matters is whether anybody shows notifications.
    QDBusConnectionInterface* bus = m_options.bus.interface();
    if (!bus)
        return UserNotificationAuthorizationStatus::denied;
    if (bus->isServiceRegistered(service).value())
        return UserNotificationAuthorizationStatus::authorized;
    const QDBusReply<QStringList> activatable = bus->activatableServiceNames();
    if (activatable.isValid() && activatable.value().contains(service))
        return UserNotificationAuthorizationStatus::authorized;
    return UserNotificationAuthorizationStatus::denied;
}

bool LiveUserNotificationCenter::requestAuthorization()
{
    return authorizationStatus() == UserNotificationAuthorizationStatus::authorized;
}

void LiveUserNotificationCenter::add(const UserNotificationRequest& request)
{
    if (request.identifier.isEmpty())
        throw UserNotificationError("a notification request needs an identifier");
    const QDateTime now = m_options.clock->now();
    const QDateTime fireDate = request.trigger.kind == UserNotificationTrigger::Kind::calendar
        ? QDateTime(request.trigger.date, request.trigger.time, Qt::LocalTime)
        : now.addMSecs(qint64(request.trigger.timeInterval * 1000));
    if (!fireDate.isValid())
        throw UserNotificationError("a notification request needs a valid trigger");
    {
        const QMutexLocker locker(&m_mutex);
        const std::optional<Pending> replaced = m_pending.contains(request.identifier)
            ? std::optional(m_pending.value(request.identifier))
            : std::nullopt;
        m_pending.insert(request.identifier, {request, fireDate});
        if (const std::optional<QString> failure = saveLocked()) {
            // An alarm that would be gone after a restart is not reported as set: the file still
            // holds what was pending before, and so does memory again.
            if (replaced)
                m_pending.insert(request.identifier, *replaced);
            else
                m_pending.remove(request.identifier);
            throw UserNotificationError(("the pending alarms cannot be kept: " + *failure).toStdString());
        }
    }
    scheduleSoon();
    Q_EMIT pendingRequestsChanged();
}

QList<UserNotificationRequest> LiveUserNotificationCenter::pendingRequests() const
{
    const QMutexLocker locker(&m_mutex);
    QList<Pending> pending = m_pending.values();
    std::sort(
        pending.begin(), pending.end(), [](const Pending& a, const Pending& b) { return a.fireDate < b.fireDate; });
    QList<UserNotificationRequest> requests;
    for (const Pending& p : pending)
        requests.append(p.request);
    return requests;
}

void LiveUserNotificationCenter::removePendingRequests(const QStringList& identifiers)
{
    {
        const QMutexLocker locker(&m_mutex);
        for (const QString& identifier : identifiers)
            m_pending.remove(identifier);
        saveLocked();
    }
    scheduleSoon();
    Q_EMIT pendingRequestsChanged();
}

void LiveUserNotificationCenter::removeAllPendingRequests()
{
    {
        const QMutexLocker locker(&m_mutex);
        m_pending.clear();
        saveLocked();
    }
    scheduleSoon();
    Q_EMIT pendingRequestsChanged();
}

void LiveUserNotificationCenter::setDelegate(std::shared_ptr<UserNotificationCenterDelegate> delegate)
{
    const QMutexLocker locker(&m_mutex);
    m_delegate = std::move(delegate);
}

void LiveUserNotificationCenter::scheduleSoon()
{
    // The timer belongs to the centre's thread; callers on other threads only ask for a check.
    QMetaObject::invokeMethod(this, &LiveUserNotificationCenter::checkDueRequests, Qt::QueuedConnection);
}

void LiveUserNotificationCenter::checkDueRequests()
{
    const QDateTime now = m_options.clock->now();
    QList<Pending> due;
    std::optional<QDateTime> next;
    {
        const QMutexLocker locker(&m_mutex);
        for (auto it = m_pending.begin(); it != m_pending.end();) {
            if (it->fireDate <= now) {
                due.append(*it);
                it = m_pending.erase(it);
            } else {
                if (!next || it->fireDate < *next)
                    next = it->fireDate;
                ++it;
            }
        }
        if (!due.isEmpty())
            saveLocked();
    }
    std::sort(due.begin(), due.end(), [](const Pending& a, const Pending& b) { return a.fireDate < b.fireDate; });
    for (const Pending& pending : due) {
        const bool tooLate = pending.fireDate.secsTo(now) >= lateLimitSeconds;
        if (tooLate)
            qCInfo(lcAlarms) << "dropping alarm" << pending.request.identifier << "due at" << pending.fireDate;
        else
            deliver(pending, now);
        Q_EMIT requestFired(pending.request.identifier, pending.fireDate, !tooLate);
    }
    if (!due.isEmpty())
        Q_EMIT pendingRequestsChanged();
    if (next)
        m_timer.start(int(std::clamp<qint64>(now.msecsTo(*next), 0, recheckIntervalMs)));
    else
        m_timer.stop();
}

void LiveUserNotificationCenter::deliver(const Pending& pending, const QDateTime& now)
{
    const UserNotification notification {pending.request, now};
    std::shared_ptr<UserNotificationCenterDelegate> delegate;
    {
        const QMutexLocker locker(&m_mutex);
        delegate = m_delegate;
    }
    const UserNotificationPresentationOptions options = delegate
        ? delegate->willPresent(notification)
        : UserNotificationPresentationOptions(
            UserNotificationPresentationOption::banner | UserNotificationPresentationOption::sound);
    const bool withSound = options.testFlag(UserNotificationPresentationOption::sound);
    const bool shown = options.testFlag(UserNotificationPresentationOption::banner)
        || options.testFlag(UserNotificationPresentationOption::list);
    const QString sound = soundPath(pending.request.content.soundName);

    bool serverPlaysSound = false;
    if (shown) {
        const QDBusMessage capabilities = m_options.bus.call(
            QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("GetCapabilities")), QDBus::Block,
            callTimeoutMs);
        serverPlaysSound = capabilities.type() == QDBusMessage::ReplyMessage && !capabilities.arguments().isEmpty()
            && capabilities.arguments().constFirst().toStringList().contains(QStringLiteral("sound"));

        QVariantMap hints {{QStringLiteral("urgency"), QVariant::fromValue<uchar>(criticalUrgency)},
            {QStringLiteral("desktop-entry"), m_options.desktopEntry}};
        if (withSound && serverPlaysSound && !sound.isEmpty())
            hints.insert(QStringLiteral("sound-file"), sound);
        else
            hints.insert(QStringLiteral("suppress-sound"), true);
        QDBusMessage notify = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Notify"));
        //% "Open"
        QStringList actions {UserNotificationResponse::defaultActionIdentifier, qtTrId("meet-alarm-open-action")};
        for (const UserNotificationAction& action : pending.request.content.actions)
            actions << action.identifier << action.title;
        notify << m_options.applicationName << uint(0) << m_options.desktopEntry << pending.request.content.title
               << pending.request.content.body << actions << hints << int(-1);
        const QDBusMessage reply = m_options.bus.call(notify, QDBus::Block, callTimeoutMs);
        if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
            const QMutexLocker locker(&m_mutex);
            m_shown.insert(reply.arguments().constFirst().toUInt(), notification);
        } else {
            qCWarning(lcAlarms) << "cannot show alarm" << pending.request.identifier << reply.errorMessage();
        }
    }
    // An alarm nobody sees must still be heard.
    if (withSound && !serverPlaysSound && !sound.isEmpty() && m_options.soundPlayer)
        m_options.soundPlayer->play(sound);
}

QString LiveUserNotificationCenter::soundPath(const QString& soundName) const
{
    if (!soundName.isEmpty()) {
        const QString named = m_options.soundsDirectory + QLatin1Char('/') + soundName;
        if (QFileInfo::exists(named))
            return named;
    }
    return QFileInfo::exists(m_options.defaultSoundPath) ? m_options.defaultSoundPath : QString();
}

void LiveUserNotificationCenter::onActionInvoked(uint notificationId, const QString& actionKey)
{
    std::optional<UserNotification> notification;
    std::shared_ptr<UserNotificationCenterDelegate> delegate;
    {
        const QMutexLocker locker(&m_mutex);
        // Ids are the server's and it numbers every program's notifications: ignore others'.
        const auto it = m_shown.constFind(notificationId);
        if (it == m_shown.constEnd())
            return;
        notification = *it;
        delegate = m_delegate;
    }
    if (delegate)
        delegate->didReceive({*notification, actionKey});
}

void LiveUserNotificationCenter::onNotificationClosed(uint notificationId, uint)
{
    // Servers send ActionInvoked before NotificationClosed, so the click has been handled.
    const QMutexLocker locker(&m_mutex);
    m_shown.remove(notificationId);
}

void LiveUserNotificationCenter::load()
{
    QFile file(m_options.storeFilePath);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonArray stored = QJsonDocument::fromJson(file.readAll()).array();
    const QMutexLocker locker(&m_mutex);
    for (const QJsonValue& value : stored) {
        if (const auto decoded = UserNotificationCoding::fromJson(value.toObject()))
            m_pending.insert(decoded->first.identifier, {decoded->first, decoded->second});
    }
}

std::optional<QString> LiveUserNotificationCenter::saveLocked() const
{
    QJsonArray stored;
    for (const Pending& pending : m_pending)
        stored.append(UserNotificationCoding::toJson(pending.request, pending.fireDate));
    QSaveFile file(m_options.storeFilePath);
    if (file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(stored).toJson(QJsonDocument::Compact)) >= 0
        && file.commit())
        return std::nullopt;
    qCWarning(lcAlarms) << "cannot keep pending alarms in" << m_options.storeFilePath << file.errorString();
    return file.errorString();
}
