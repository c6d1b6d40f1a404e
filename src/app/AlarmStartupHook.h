#pragma once

#include <memory>

class AppServices;
class NotificationCenter;
class MeetAlarmNotificationDelegate;
class TaskReminderNotificationDelegate;
class TaskReminderScheduler;

// Runs before the first window: the alarms install the notification delegates that open a meet
// when its alarm is clicked and answer the buttons of task reminders.
void runAlarmStartupHook(const AppServices& services);

// Keeps Tolvane running in the tray with no window open, alarms pending or not: a start at
// login. Without a tray, closing the window minimises it.
void keepInTray(bool keep);

// The delegate whose click posts "openMeetFromAlarm" with the meet's MeetAlarmNavigationPayload.
std::shared_ptr<MeetAlarmNotificationDelegate> makeMeetAlarmNotificationDelegate(NotificationCenter& center);

// The delegate of task reminders: "Done" marks the task done in the signed-in account's store,
// off the GUI thread, and posts "tasksDidChange"; a click shows the window and posts
// "openTaskFromReminder" with where the task lives.
std::shared_ptr<TaskReminderNotificationDelegate> makeTaskReminderNotificationDelegate(
    const AppServices& services, const TaskReminderScheduler& reminders);
