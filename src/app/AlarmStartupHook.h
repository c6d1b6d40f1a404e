#pragma once

#include <memory>

class AppServices;
class NotificationCenter;
class MeetAlarmNotificationDelegate;

// Runs before the first window: the alarms install the notification delegate that opens a meet
// when its alarm is clicked.
void runAlarmStartupHook(const AppServices& services);

// Keeps Tolvane running in the tray with no window open, alarms pending or not: a start at
// login. Without a tray, closing the window minimises it.
void keepInTray(bool keep);

// The delegate whose click posts "openMeetFromAlarm" with the meet's MeetAlarmNavigationPayload.
std::shared_ptr<MeetAlarmNotificationDelegate> makeMeetAlarmNotificationDelegate(NotificationCenter& center);
