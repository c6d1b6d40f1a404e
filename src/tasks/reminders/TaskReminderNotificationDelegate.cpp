#include "tasks/reminders/TaskReminderNotificationDelegate.h"

#include "platform/Logging.h"

TaskReminderNotificationDelegate::TaskReminderNotificationDelegate(
    TaskReminderScheduler reminders, TaskAction markDone, TaskAction openTask)
    : m_reminders(std::move(reminders))
    , m_markDone(std::move(markDone))
    , m_openTask(std::move(openTask))
{
}

UserNotificationPresentationOptions TaskReminderNotificationDelegate::willPresent(const UserNotification&)
{
    return UserNotificationPresentationOption::banner | UserNotificationPresentationOption::sound;
}

void TaskReminderNotificationDelegate::didReceive(const UserNotificationResponse& response)
{
    const UserNotificationRequest& request = response.notification.request;
    const std::optional<QUuid> taskId = TaskReminderScheduler::taskId(request);
    if (!taskId) {
        qCInfo(lcAlarms) << "answered a reminder that names no task:" << request.identifier;
        return;
    }
    if (response.actionIdentifier == TaskReminderScheduler::doneAction)
        m_markDone(*taskId);
    else if (response.actionIdentifier == TaskReminderScheduler::snoozeAction)
        m_reminders.snooze(request);
    else if (response.actionIdentifier == UserNotificationResponse::defaultActionIdentifier)
        m_openTask(*taskId);
}
