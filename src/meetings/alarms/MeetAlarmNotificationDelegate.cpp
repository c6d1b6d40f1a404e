#include "meetings/alarms/MeetAlarmNotificationDelegate.h"

#include "platform/Logging.h"

MeetAlarmNotificationDelegate::MeetAlarmNotificationDelegate(OpenMeet openMeet)
    : m_openMeet(std::move(openMeet))
{
}

UserNotificationPresentationOptions MeetAlarmNotificationDelegate::willPresent(const UserNotification&)
{
    return UserNotificationPresentationOption::banner | UserNotificationPresentationOption::sound;
}

void MeetAlarmNotificationDelegate::didReceive(const UserNotificationResponse& response)
{
    if (response.actionIdentifier != UserNotificationResponse::defaultActionIdentifier)
        return;
    const QVariantMap& userInfo = response.notification.request.content.userInfo;
    const QVariant name = userInfo.value(QStringLiteral("metName"));
    const QVariant seconds = userInfo.value(QStringLiteral("metDate"));
    if (!name.isValid() || !seconds.isValid()) {
        qCInfo(lcAlarms) << "opened a notification that names no meet:" << response.notification.request.identifier;
        return;
    }
    m_openMeet(name.toString(), QDateTime::fromMSecsSinceEpoch(qint64(qRound64(seconds.toDouble() * 1000))));
}
