#pragma once

#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QThread>
#include <QVariantMap>

// What a Notify call carried on the wire.
struct RecordedNotification {
    uint id = 0;
    QString appName;
    uint replacesId = 0;
    QString appIcon;
    QString summary;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int expireTimeout = 0;
};

class TestNotificationService;

// A notification server of our own on the session bus: it records every Notify call and emits
// ActionInvoked on request. It answers from a thread of its own, so a client blocking on the
// test's thread still gets its reply.
class TestNotificationServer final {
public:
    explicit TestNotificationServer(QStringList capabilities = {QStringLiteral("body"), QStringLiteral("actions")});
    ~TestNotificationServer();

    // False when the bus cannot be reached or another server holds the name.
    bool start();

    QList<RecordedNotification> notifications() const;
    // Spins the caller's event loop until that many calls arrived.
    bool waitForNotifications(int count, int timeoutMs = 5000) const;
    // As if the user clicked the notification (actionKey "default") or one of its buttons.
    void invokeAction(uint notificationId, const QString& actionKey);

private:
    QThread m_thread;
    TestNotificationService* m_service = nullptr;
    QString m_connectionName;
};
