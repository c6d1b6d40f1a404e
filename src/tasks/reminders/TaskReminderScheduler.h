#pragma once

#include "meetings/alarms/MeetAlarmScheduler.h"
#include "tasks/entities/TaskEntity.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// Reminders on tasks. They ring through the meet alarms' notification centre, with the user's
// alarm mode and voice, so they persist in the same file and survive a restart the same way.
// A task has at most one pending request, named after it, which remembers the time and title it
// was armed for: a later change to the task is then noticed and the reminder moved.
// Blocking (speech synthesis): run it off the GUI thread, except snooze().
class TaskReminderScheduler {
public:
    static inline const QString identifierPrefix = QStringLiteral("task-reminder-");
    static inline const QString doneAction = QStringLiteral("task-reminder-done");
    static inline const QString snoozeAction = QStringLiteral("task-reminder-snooze");
    static constexpr int snoozeMinutes = 10;

    explicit TaskReminderScheduler(MeetAlarmScheduler alarms);

    static QString identifier(const QUuid& taskId);
    // The task a request reminds of; none for any other request.
    static std::optional<QUuid> taskId(const UserNotificationRequest& request);

    // Arms, moves or drops the task's reminder so that it rings when the task now says. A
    // reminder whose time has passed while the task is still ahead rings at once; one whose
    // task is already due is not armed. False when one was wanted and could not be armed.
    bool update(const TaskEntity& task) const;
    void drop(const QUuid& taskId) const;
    // Every task reminder, as when the account changes; meet alarms stay.
    void dropAll() const;
    // Brings the pending reminders in line with tasks read from the store: all the tasks of the
    // lists listIds, or of every list when none is given. Tasks that changed elsewhere are
    // re-armed, reminders of tasks that are gone are dropped; a reminder that already rang is
    // not rung again and a snoozed one stays snoozed.
    void reconcile(const QList<TaskEntity>& tasks, const std::optional<QList<QUuid>>& listIds = std::nullopt) const;
    // Rings a reminder that fired again snoozeMinutes from now. Quick: the sound is reused.
    bool snooze(const UserNotificationRequest& fired) const;

    // The pending reminders, soonest first.
    QList<UserNotificationRequest> pendingReminders() const;

private:
    bool arm(const TaskEntity& task, const QDateTime& fireAt, const QDateTime& remindAt) const;
    void remove(const QString& identifier, bool pending) const;
    QString spokenSentence(const QString& title) const;

    MeetAlarmScheduler m_alarms;
};
