#pragma once

#include "platform/notifications/LiveUserNotificationCenter.h"
#include "platform/notifications/SystemSounds.h"
#include "support/SettableClock.h"
#include "tasks/TasksApplicationFactory.h"
#include "tasks/reminders/TaskReminderScheduler.h"

#include <QTest>

// What the reminder tests share: a notification centre over a file of the test's own, on a clock
// the test moves, and the tasks' use cases.
namespace TaskRemindersTestSupport {

inline std::shared_ptr<LiveUserNotificationCenter> makeCenter(
    const QString& folder, const std::shared_ptr<SettableClock>& clock)
{
    LiveUserNotificationCenter::Options options;
    options.storeFilePath = folder + QStringLiteral("/pending-notifications.json");
    options.soundsDirectory = folder + QStringLiteral("/sounds");
    options.defaultSoundPath = SystemSounds::defaultNotificationSoundPath();
    options.clock = clock;
    return std::make_shared<LiveUserNotificationCenter>(std::move(options));
}

inline TaskEntity aTask(const TaskListEntity& list, const QString& title, const QDateTime& due, int minutesBefore)
{
    TaskEntity task {.prjId = list.prjId, .talId = list.talId, .tasTitle = title};
    task.tasDueDate = due.toUTC();
    task.tasDueHasTime = true;
    task.tasReminderMinutesBefore = minutesBefore;
    return task;
}

inline std::optional<UserNotificationRequest> pendingFor(const TaskReminderScheduler& reminders, const QUuid& taskId)
{
    for (const UserNotificationRequest& request : reminders.pendingReminders()) {
        if (TaskReminderScheduler::taskId(request) == taskId)
            return request;
    }
    return std::nullopt;
}

// Invalid when nothing is pending.
inline QDateTime firesAt(const std::optional<UserNotificationRequest>& request)
{
    return request ? QDateTime(request->trigger.date, request->trigger.time, Qt::LocalTime) : QDateTime();
}

inline TasksApplicationFactory::Applications applicationsOf(const ResultEntity& made)
{
    if (!made.result)
        qFatal("no applications: %s", qPrintable(made.firstMessage().value_or(QString())));
    return *made.dataAs<TasksApplicationFactory::Applications>();
}

inline std::optional<TaskEntity> findTask(const TasksApplicationFactory::Applications& apps, const QUuid& id)
{
    const ResultEntity result = apps.tasks.find(id);
    const auto* task = result.result ? result.dataAs<TaskEntity>() : nullptr;
    return task ? std::optional(*task) : std::nullopt;
}

} // namespace TaskRemindersTestSupport
