#include "platform/notifications/NotificationDelegateRouter.h"

NotificationDelegateRouter::NotificationDelegateRouter(std::shared_ptr<UserNotificationCenterDelegate> fallback)
    : m_fallback(std::move(fallback))
{
}

void NotificationDelegateRouter::route(
    const QString& identifierPrefix, std::shared_ptr<UserNotificationCenterDelegate> delegate)
{
    m_routes.append({identifierPrefix, std::move(delegate)});
}

UserNotificationCenterDelegate& NotificationDelegateRouter::delegateFor(const QString& identifier) const
{
    for (const auto& [prefix, delegate] : m_routes) {
        if (identifier.startsWith(prefix))
            return *delegate;
    }
    return *m_fallback;
}

UserNotificationPresentationOptions NotificationDelegateRouter::willPresent(const UserNotification& notification)
{
    return delegateFor(notification.request.identifier).willPresent(notification);
}

void NotificationDelegateRouter::didReceive(const UserNotificationResponse& response)
{
    delegateFor(response.notification.request.identifier).didReceive(response);
}
