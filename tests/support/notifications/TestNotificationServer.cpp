#include "support/notifications/TestNotificationServer.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QTest>
#include <QUuid>

class TestNotificationService final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit TestNotificationService(QStringList capabilities)
        : m_capabilities(std::move(capabilities))
    {
    }

    QList<RecordedNotification> recorded() const
    {
        const QMutexLocker locker(&m_mutex);
        return m_recorded;
    }

public Q_SLOTS:
    uint Notify(const QString& appName, uint replacesId, const QString& appIcon, const QString& summary,
        const QString& body, const QStringList& actions, const QVariantMap& hints, int expireTimeout)
    {
        const QMutexLocker locker(&m_mutex);
        const uint id = replacesId ? replacesId : ++m_lastId;
        m_recorded.append({id, appName, replacesId, appIcon, summary, body, actions, hints, expireTimeout});
        return id;
    }
    QStringList GetCapabilities() const { return m_capabilities; }
    void CloseNotification(uint id) { Q_EMIT NotificationClosed(id, 3); }
    QString GetServerInformation(QString& vendor, QString& version, QString& specVersion) const
    {
        vendor = QStringLiteral("Quorvel");
        version = QStringLiteral("1");
        specVersion = QStringLiteral("1.2");
        return QStringLiteral("tolvane-test-notifications");
    }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString& actionKey);
    void NotificationClosed(uint id, uint reason);

private:
    const QStringList m_capabilities;
    mutable QMutex m_mutex;
    QList<RecordedNotification> m_recorded;
    uint m_lastId = 0;
};

TestNotificationServer::TestNotificationServer(QStringList capabilities)
    : m_service(new TestNotificationService(std::move(capabilities)))
    , m_connectionName(QStringLiteral("tolvane-test-notifications-") + QUuid::createUuid().toString(QUuid::Id128))
{
    m_service->moveToThread(&m_thread);
    m_thread.start();
}

TestNotificationServer::~TestNotificationServer()
{
    // The service goes first, on its own thread and while its connection still exists: QtDBus
    // unregisters a destroyed object through the connection.
    const QString name = m_connectionName;
    QMetaObject::invokeMethod(
        m_service,
        [service = m_service, name] {
            QDBusConnection bus(name);
            if (bus.isConnected()) {
                bus.unregisterService(QStringLiteral("org.freedesktop.Notifications"));
                bus.unregisterObject(QStringLiteral("/org/freedesktop/Notifications"));
            }
            delete service;
        },
        Qt::BlockingQueuedConnection);
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_thread.quit();
    m_thread.wait();
}

bool TestNotificationServer::start()
{
    // A connection of its own, so the server is a different peer from the client under test;
    // registered from the service's thread, which is where QtDBus will call it.
    bool registered = false;
    QMetaObject::invokeMethod(
        m_service,
        [this, &registered] {
            QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
            registered = bus.isConnected()
                && bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), m_service,
                    QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals)
                && bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
        },
        Qt::BlockingQueuedConnection);
    return registered;
}

QList<RecordedNotification> TestNotificationServer::notifications() const
{
    return m_service->recorded();
}

bool TestNotificationServer::waitForNotifications(int count, int timeoutMs) const
{
    const QDeadlineTimer deadline(timeoutMs);
    while (notifications().size() < count && !deadline.hasExpired())
        QTest::qWait(10);
    return notifications().size() >= count;
}

void TestNotificationServer::invokeAction(uint notificationId, const QString& actionKey)
{
    QMetaObject::invokeMethod(m_service,
        [service = m_service, notificationId, actionKey] { Q_EMIT service->ActionInvoked(notificationId, actionKey); });
}

#include "TestNotificationServer.moc"
