#include "AlarmStartupHook.h"

#include "MeetAlarmNavigationPayload.h"
#include "meetings/alarms/MeetAlarmNotificationDelegate.h"
#include "screens/common/AppServices.h"

std::shared_ptr<MeetAlarmNotificationDelegate> makeMeetAlarmNotificationDelegate(NotificationCenter& center)
{
    return std::make_shared<MeetAlarmNotificationDelegate>([&center](const QString& metName, const QDateTime& metDate) {
        center.post(
            NotificationName::openMeetFromAlarm, QVariant::fromValue(MeetAlarmNavigationPayload {metName, metDate}));
    });
}

void runAlarmStartupHook(const AppServices& services)
{
    // Before any window: alarms that came due while Tolvane was closed fire on the first turn
    // of the event loop, and a click on one must already lead somewhere.
    services.userNotificationCenter()->setDelegate(makeMeetAlarmNotificationDelegate(services.notificationCenter()));
}
