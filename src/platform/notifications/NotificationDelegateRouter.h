#pragma once

#include "platform/notifications/UserNotificationCenter.h"

#include <QList>
#include <QString>

#include <memory>

// The centre has one delegate, yet several kinds of alarm share it: each notification goes to
// the delegate of the first identifier prefix it starts with, the rest to the fallback.
class NotificationDelegateRouter final : public UserNotificationCenterDelegate {
public:
    explicit NotificationDelegateRouter(std::shared_ptr<UserNotificationCenterDelegate> fallback);

    void route(const QString& identifierPrefix, std::shared_ptr<UserNotificationCenterDelegate> delegate);

    UserNotificationPresentationOptions willPresent(const UserNotification& notification) override;
    void didReceive(const UserNotificationResponse& response) override;

private:
    UserNotificationCenterDelegate& delegateFor(const QString& identifier) const;

    std::shared_ptr<UserNotificationCenterDelegate> m_fallback;
    QList<std::pair<QString, std::shared_ptr<UserNotificationCenterDelegate>>> m_routes;
};
