#pragma once

#include "platform/Clock.h"
#include "platform/notifications/SoundPlayer.h"
#include "platform/notifications/UserNotificationCenter.h"

#include <QDBusConnection>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QTimer>

#include <optional>

// Notifications on a Linux desktop, which has no scheduler of its own: pending requests are kept
// in a JSON file (so alarms survive a restart) and fired by a timer in this process, shown
// through org.freedesktop.Notifications with a "default" action (a click on the body) and, when
// the server cannot play sounds, rung by the program itself.
//
// Create it on the GUI thread; the other calls may come from any thread.
class LiveUserNotificationCenter final : public QObject, public UserNotificationCenter {
    Q_OBJECT

public:
    struct Options {
        QDBusConnection bus = QDBusConnection::sessionBus();
        // The JSON file of pending requests.
        QString storeFilePath;
        // Where content sound names are looked up.
        QString soundsDirectory;
        QString defaultSoundPath;
        std::shared_ptr<const Clock> clock;
        // Null: the program never rings itself.
        std::shared_ptr<SoundPlayer> soundPlayer;
        QString applicationName = QStringLiteral("Tolvane");
        QString desktopEntry = QStringLiteral("com.quorvel.tolvane");
    };

    // A request that fires later than this after its time (the program was not running, the
    // machine slept) is dropped: an alarm that rings long after the meet began is noise.
    static constexpr qint64 lateLimitSeconds = 10 * 60;
    // The longest the timer sleeps, so that a resume or a clock change is noticed soon.
    static constexpr int recheckIntervalMs = 15000;

    explicit LiveUserNotificationCenter(Options options, QObject* parent = nullptr);
    // The program's one centre on the session bus, over the user's folders. It lives for the
    // whole run and on the application's thread, wherever it was first asked for.
    static std::shared_ptr<LiveUserNotificationCenter> shared();
    ~LiveUserNotificationCenter() override;

    UserNotificationAuthorizationStatus authorizationStatus() override;
    bool requestAuthorization() override;
    void add(const UserNotificationRequest& request) override;
    QList<UserNotificationRequest> pendingRequests() const override;
    void removePendingRequests(const QStringList& identifiers) override;
    void removeAllPendingRequests() override;
    void setDelegate(std::shared_ptr<UserNotificationCenterDelegate> delegate) override;

    // Delivers what is due and re-arms the timer. Runs by itself; callable after a known clock
    // change.
    void checkDueRequests();

Q_SIGNALS:
    // After a request fired (shown or not, by what the delegate chose) or was dropped as late.
    void requestFired(const QString& identifier, const QDateTime& fireDate, bool delivered);
    void pendingRequestsChanged();

private Q_SLOTS:
    void onActionInvoked(uint notificationId, const QString& actionKey);
    void onNotificationClosed(uint notificationId, uint reason);

private:
    struct Pending {
        UserNotificationRequest request;
        QDateTime fireDate;
    };

    void load();
    // Writes the pending requests to their file; the reason when it could not.
    std::optional<QString> saveLocked() const;
    void scheduleSoon();
    void deliver(const Pending& pending, const QDateTime& now);
    QString soundPath(const QString& soundName) const;

    Options m_options;
    mutable QMutex m_mutex;
    QHash<QString, Pending> m_pending;
    std::shared_ptr<UserNotificationCenterDelegate> m_delegate;
    // Shown notifications by the server's id, for the click that comes back.
    QHash<uint, UserNotification> m_shown;
    QTimer m_timer {this};
};
