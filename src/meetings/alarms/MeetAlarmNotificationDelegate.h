#pragma once

#include "platform/notifications/UserNotificationCenter.h"

#include <QDateTime>
#include <QString>

#include <functional>

// How alarms behave while Tolvane is in front, and where a click on one leads. One shared
// instance serves the whole program; the shell decides what opening a meet means.
class MeetAlarmNotificationDelegate final : public UserNotificationCenterDelegate {
public:
    using OpenMeet = std::function<void(const QString& metName, const QDateTime& metDate)>;

    explicit MeetAlarmNotificationDelegate(OpenMeet openMeet);

    // Banner and sound: an alarm must be noticed even with the window in front.
    UserNotificationPresentationOptions willPresent(const UserNotification& notification) override;
    void didReceive(const UserNotificationResponse& response) override;

private:
    OpenMeet m_openMeet;
};
