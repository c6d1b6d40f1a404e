#pragma once

#include "platform/notifications/UserNotificationCenter.h"
#include "tasks/reminders/TaskReminderScheduler.h"

#include <QUuid>

#include <functional>

// What the buttons of a task's reminder do. "Done" and a click on the body are the shell's to
// carry out (marking done needs the signed-in account's store, and must not block the caller);
// the snooze is done here.
class TaskReminderNotificationDelegate final : public UserNotificationCenterDelegate {
public:
    using TaskAction = std::function<void(const QUuid& taskId)>;

    TaskReminderNotificationDelegate(TaskReminderScheduler reminders, TaskAction markDone, TaskAction openTask);

    // Banner and sound, as for meet alarms: a reminder must be noticed with the window in front.
    UserNotificationPresentationOptions willPresent(const UserNotification& notification) override;
    void didReceive(const UserNotificationResponse& response) override;

private:
    TaskReminderScheduler m_reminders;
    TaskAction m_markDone;
    TaskAction m_openTask;
};
