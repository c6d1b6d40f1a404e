#pragma once

#include <QDateTime>
#include <QFlags>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <memory>
#include <optional>
#include <stdexcept>

enum class UserNotificationAuthorizationStatus { notDetermined, denied, authorized, provisional };

// A button on a shown notification, besides the click on its body.
struct UserNotificationAction {
    QString identifier;
    QString title;

    friend bool operator==(const UserNotificationAction&, const UserNotificationAction&) = default;
};

struct UserNotificationContent {
    QString title;
    QString body;
    // Plain values only (strings, numbers, booleans): they are kept as JSON until the alarm fires.
    QVariantMap userInfo;
    // A file name in the user's sound folder; empty, or a file that is gone, means the default
    // notification sound.
    QString soundName;
    // Offered after the click on the body; the chosen one comes back as the response's action.
    QList<UserNotificationAction> actions;

    friend bool operator==(const UserNotificationContent&, const UserNotificationContent&) = default;
};

// When a request fires. Calendar triggers keep the wall-clock date and time in the local zone,
// so an alarm follows the meet when the zone changes; time-interval triggers count from the
// moment the request was added.
struct UserNotificationTrigger {
    enum class Kind { calendar, timeInterval };

    Kind kind = Kind::calendar;
    QDate date;
    QTime time;
    double timeInterval = 0;

    // Seconds precision, as the meet's start is matched to the second.
    static UserNotificationTrigger calendar(const QDateTime& at);
    static UserNotificationTrigger afterInterval(double seconds);

    friend bool operator==(const UserNotificationTrigger&, const UserNotificationTrigger&) = default;
};

struct UserNotificationRequest {
    QString identifier;
    UserNotificationContent content;
    UserNotificationTrigger trigger;

    friend bool operator==(const UserNotificationRequest&, const UserNotificationRequest&) = default;
};

// A request that fired.
struct UserNotification {
    UserNotificationRequest request;
    QDateTime date;
};

struct UserNotificationResponse {
    static inline const QString defaultActionIdentifier = QStringLiteral("default");

    UserNotification notification;
    QString actionIdentifier;
};

enum class UserNotificationPresentationOption { banner = 0x1, sound = 0x2, list = 0x4, badge = 0x8 };
Q_DECLARE_FLAGS(UserNotificationPresentationOptions, UserNotificationPresentationOption)
Q_DECLARE_OPERATORS_FOR_FLAGS(UserNotificationPresentationOptions)

// Decides how a firing notification appears and hears about the user opening one. Called on the
// centre's thread (the GUI thread in the program).
class UserNotificationCenterDelegate {
public:
    virtual ~UserNotificationCenterDelegate() = default;
    virtual UserNotificationPresentationOptions willPresent(const UserNotification& notification) = 0;
    virtual void didReceive(const UserNotificationResponse& response) = 0;
};

class UserNotificationError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Local notifications at a time. Every call may block briefly and may come from any thread.
class UserNotificationCenter {
public:
    virtual ~UserNotificationCenter() = default;

    virtual UserNotificationAuthorizationStatus authorizationStatus() = 0;
    // Answers whether notifications may be shown.
    virtual bool requestAuthorization() = 0;
    // Replaces a pending request with the same identifier. Throws UserNotificationError.
    virtual void add(const UserNotificationRequest& request) = 0;
    virtual QList<UserNotificationRequest> pendingRequests() const = 0;
    virtual void removePendingRequests(const QStringList& identifiers) = 0;
    virtual void removeAllPendingRequests() = 0;
    virtual void setDelegate(std::shared_ptr<UserNotificationCenterDelegate> delegate) = 0;
};

// How pending requests are written to disk. The fire date of a time-interval request is fixed
// when it is added, so it is stored along with the request.
namespace UserNotificationCoding {
QJsonObject toJson(const UserNotificationRequest& request, const QDateTime& fireDate);
// None when the object is not a request this program wrote.
std::optional<std::pair<UserNotificationRequest, QDateTime>> fromJson(const QJsonObject& json);
} // namespace UserNotificationCoding
