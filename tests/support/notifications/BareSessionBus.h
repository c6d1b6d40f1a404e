#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QTemporaryDir>

// A session bus of its own whose only service folder is empty: nothing can be activated on it, so
// whatever desktop services the machine has installed (a notification daemon, say), none answers
// here. For tests that assert what happens when a service is missing.
class BareSessionBus {
public:
    BareSessionBus();
    ~BareSessionBus();
    BareSessionBus(const BareSessionBus&) = delete;
    BareSessionBus& operator=(const BareSessionBus&) = delete;

    // Starts dbus-daemon and connects to it; false, with the reason in error(), when either fails.
    bool start();
    QString error() const { return m_error; }

    // The connection to the bus; disconnected until start() succeeded.
    QDBusConnection connection() const;

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_connectionName;
    QString m_error;
};
