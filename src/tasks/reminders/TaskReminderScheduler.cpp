#include "tasks/reminders/TaskReminderScheduler.h"

#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "platform/Logging.h"
#include "tasks/reminders/TaskReminderTime.h"

#include <QHash>
#include <QLocale>
#include <QSet>

namespace {

const QString taskIdKey = QStringLiteral("taskId");
const QString taskListIdKey = QStringLiteral("taskListId");
const QString titleKey = QStringLiteral("taskTitle");
// The reminder's own time, which a snooze leaves as it was.
const QString remindAtKey = QStringLiteral("remindAt");

double seconds(const QDateTime& at)
{
    return double(at.toMSecsSinceEpoch()) / 1000.0;
}

// Whether the request was armed for what the task asks now.
bool armedAsWanted(const UserNotificationRequest& request, const TaskEntity& task, const QDateTime& remindAt)
{
    const QVariantMap& info = request.content.userInfo;
    return qint64(info.value(remindAtKey).toDouble()) == remindAt.toSecsSinceEpoch()
        && info.value(titleKey).toString() == task.tasTitle
        && info.value(taskListIdKey).toString() == task.talId.toString(QUuid::WithoutBraces);
}

QString dueText(const TaskEntity& task, const QDateTime& due)
{
    const QLocale locale;
    const QString when = task.tasDueHasTime ? locale.toString(due, QLocale::ShortFormat)
                                            : locale.toString(due.date(), QLocale::ShortFormat);
    //% "Due %1"
    return qtTrId("task-reminder-due").arg(when);
}

} // namespace

TaskReminderScheduler::TaskReminderScheduler(MeetAlarmScheduler alarms)
    : m_alarms(std::move(alarms))
{
}

QString TaskReminderScheduler::identifier(const QUuid& taskId)
{
    return identifierPrefix + taskId.toString(QUuid::WithoutBraces);
}

std::optional<QUuid> TaskReminderScheduler::taskId(const UserNotificationRequest& request)
{
    if (!request.identifier.startsWith(identifierPrefix))
        return std::nullopt;
    const QUuid id = QUuid::fromString(request.identifier.mid(identifierPrefix.size()));
    return id.isNull() ? std::nullopt : std::optional(id);
}

QList<UserNotificationRequest> TaskReminderScheduler::pendingReminders() const
{
    QList<UserNotificationRequest> reminders = m_alarms.dependencies().notificationCenter->pendingRequests();
    reminders.removeIf([](const UserNotificationRequest& request) { return !taskId(request); });
    return reminders;
}

bool TaskReminderScheduler::update(const TaskEntity& task) const
{
    const QString id = identifier(task.tasId);
    std::optional<UserNotificationRequest> pending;
    for (const UserNotificationRequest& request : m_alarms.dependencies().notificationCenter->pendingRequests()) {
        if (request.identifier == id)
            pending = request;
    }
    const std::optional<QDateTime> remindAt = TaskReminderTime::of(task);
    const QDateTime now = m_alarms.dependencies().clock->now();
    // Unchanged, it stays as it is: snoozed past the due time, too.
    if (remindAt && pending && armedAsWanted(*pending, task, *remindAt))
        return true;
    if (!remindAt || *TaskReminderTime::dueMoment(task) <= now) {
        remove(id, pending.has_value());
        return true;
    }
    return arm(task, std::max(*remindAt, now), *remindAt);
}

void TaskReminderScheduler::drop(const QUuid& taskId) const
{
    remove(identifier(taskId), true);
}

void TaskReminderScheduler::dropAll() const
{
    QStringList identifiers;
    for (const UserNotificationRequest& request : pendingReminders())
        identifiers.append(request.identifier);
    if (!identifiers.isEmpty())
        m_alarms.dependencies().notificationCenter->removePendingRequests(identifiers);
    // Spoken files of reminders that already rang are left from before, too.
    m_alarms.dependencies().soundFiles.removeSpokenFiles(identifierPrefix);
}

void TaskReminderScheduler::remove(const QString& identifier, bool pending) const
{
    if (pending)
        m_alarms.dependencies().notificationCenter->removePendingRequests({identifier});
    // The spoken file outlives a reminder that rang, for its snooze.
    m_alarms.dependencies().soundFiles.removeSpokenFile(identifier);
}

void TaskReminderScheduler::reconcile(const QList<TaskEntity>& tasks, const std::optional<QList<QUuid>>& listIds) const
{
    QHash<QUuid, UserNotificationRequest> pending;
    for (const UserNotificationRequest& request : pendingReminders())
        pending.insert(*taskId(request), request);
    const QDateTime now = m_alarms.dependencies().clock->now();
    QSet<QUuid> seen;
    for (const TaskEntity& task : tasks) {
        seen.insert(task.tasId);
        const auto request = pending.constFind(task.tasId);
        const bool isPending = request != pending.constEnd();
        if (!isPending && !task.tasReminderMinutesBefore)
            continue;
        const std::optional<QDateTime> remindAt = TaskReminderTime::of(task);
        if (remindAt && isPending && armedAsWanted(*request, task, *remindAt))
            continue;
        if (!remindAt || *TaskReminderTime::dueMoment(task) <= now) {
            if (isPending)
                drop(task.tasId);
        } else if (isPending) {
            arm(task, std::max(*remindAt, now), *remindAt);
        } else if (*remindAt > now) {
            // Never armed here, or lost: a reminder already behind us may have rung, so only
            // those still ahead are armed.
            arm(task, *remindAt, *remindAt);
        }
    }
    QSet<QString> lists;
    if (listIds) {
        for (const QUuid& listId : *listIds)
            lists.insert(listId.toString(QUuid::WithoutBraces));
    }
    for (auto it = pending.constBegin(); it != pending.constEnd(); ++it) {
        if (!seen.contains(it.key())
            && (!listIds || lists.contains(it->content.userInfo.value(taskListIdKey).toString())))
            drop(it.key());
    }
}

bool TaskReminderScheduler::arm(const TaskEntity& task, const QDateTime& fireAt, const QDateTime& remindAt) const
{
    const QString id = identifier(task.tasId);
    UserNotificationRequest request;
    request.identifier = id;
    request.content.title = task.tasTitle;
    request.content.body = dueText(task, *TaskReminderTime::dueMoment(task));
    request.content.userInfo = {{taskIdKey, task.tasId.toString(QUuid::WithoutBraces)},
        {taskListIdKey, task.talId.toString(QUuid::WithoutBraces)}, {titleKey, task.tasTitle},
        {remindAtKey, seconds(remindAt)}};
    //% "Done"
    request.content.actions = {{doneAction, qtTrId("task-reminder-done-action")},
        //% "Snooze %1 min"
        {snoozeAction, qtTrId("task-reminder-snooze-action").arg(snoozeMinutes)}};
    request.content.soundName = m_alarms.alarmSound(spokenSentence(task.tasTitle), id).value_or(QString());
    request.trigger = UserNotificationTrigger::calendar(fireAt);
    try {
        m_alarms.dependencies().notificationCenter->add(request);
    } catch (const UserNotificationError& error) {
        qCWarning(lcAlarms) << "cannot schedule task reminder" << id << error.what();
        return false;
    }
    return true;
}

bool TaskReminderScheduler::snooze(const UserNotificationRequest& fired) const
{
    if (!taskId(fired))
        return false;
    UserNotificationRequest again = fired;
    again.trigger
        = UserNotificationTrigger::calendar(m_alarms.dependencies().clock->now().addSecs(qint64(snoozeMinutes) * 60));
    try {
        m_alarms.dependencies().notificationCenter->add(again);
    } catch (const UserNotificationError& error) {
        qCWarning(lcAlarms) << "cannot snooze task reminder" << fired.identifier << error.what();
        return false;
    }
    return true;
}

QString TaskReminderScheduler::spokenSentence(const QString& title) const
{
    // The voice's language, not the screen's: the sentence must be one the voice can say.
    const MeetAlarmVoiceLanguageEnum language = MeetAlarmVoiceLanguageStore(m_alarms.dependencies().defaults).load();
    const QString opening = language == MeetAlarmVoiceLanguageEnum::english ? QStringLiteral("Reminder: ")
                                                                            : QStringLiteral("Recordatorio: ");
    return opening + title + QLatin1Char('.');
}
