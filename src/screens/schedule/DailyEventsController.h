#pragma once

#include "login/UserEntity.h"
#include "meetings/alarms/MeetAlarmScheduler.h"
#include "meetings/entities/MeetDraft.h"
#include "meetings/entities/MeetEntity.h"
#include "meetings/repositories/eventkit/EventKitStoring.h"
#include "networking/APIClient.h"
#include "tasks/TasksApplicationFactory.h"
#include "undo/BackendEventUndo.h"
#include "undo/CalendarEventUndo.h"

#include <QDate>
#include <QSet>
#include <QTimeZone>

#include <memory>
#include <optional>
#include <variant>

class AppServices;
class MeetRepository;
class NotificationCenter;
class RemoteEventRepositoryImpl;

// One day of the schedule as the screen shows it.
struct DailyEventsDay {
    QDate date;
    // Every meet that touches the day, earliest first; all-day ones included.
    QList<MeetEntity> meets;
    QSet<QUuid> armedMeetIds;
    bool isDayAlarmSet = false;
    bool isPermissionDenied = false;
    // Where a new meet may go, and the one the user chose as default (or the store's).
    QList<CalendarStoreCalendar> calendars;
    QString defaultCalendarIdentifier;
    // Every calendar whose meets the day shows, writable or not.
    QStringList shownCalendarIdentifiers;
    // Whether the task a meet blocks time for is done, by meet; none for a meet linked to no
    // task, or whose task could not be read.
    QHash<QUuid, bool> taskDone;
};

// The schedule's way to the meets and their alarms. It is built on the GUI thread (where the
// calendar store must first be touched) and then copied into worker threads: every other call
// blocks on the calendar store, the backend or speech synthesis, and throws what the meetings
// module throws.
class UndoHistory;

class DailyEventsController {
public:
    DailyEventsController(const AppServices& services, std::optional<UserEntity> user,
        std::shared_ptr<EventKitStoring> eventStore = nullptr, QTimeZone calendar = QTimeZone::systemTimeZone());

    // The user's tasks, for the meets that block time for one; set before the controller is
    // shared. Without them links are kept but not followed.
    void setTasks(TasksApplicationFactory::Applications tasks) { m_tasks = std::move(tasks); }

    const std::optional<UserEntity>& user() const { return m_user; }
    const QTimeZone& calendar() const { return m_calendar; }

    DailyEventsDay loadDay(const QDate& day) const;
    // Every day from first to last, read from the store at once: far cheaper than day by day.
    QList<DailyEventsDay> loadDays(const QDate& first, const QDate& last) const;
    // Every meet that touches the days from first to last, in every calendar of the store (hidden
    // ones too) and on the backend, earliest first: what leaves in an export. The backend keeps
    // a repetition with no exceptions, so a repeating backend event that falls in the days comes
    // whole, at its first start, to leave as one repeating event.
    QList<MeetEntity> meetsBetween(const QDate& first, const QDate& last) const;
    // Also remembers a meet made in the calendar store as the program's own, so that it may ring
    // whatever its calendar.
    MeetEntity create(const MeetDraft& draft) const;
    // verb names the change in the undo history: an edit, or a move by dragging.
    MeetEntity update(
        const MeetEntity& meet, const MeetDraft& draft, TaskChangeVerbEnum verb = TaskChangeVerbEnum::edit) const;
    void remove(const MeetEntity& meet) const;

    // Refused, with the reason, when the alarm could not be armed (a meet already begun, no
    // notification service).
    MeetAlarmScheduler::Arming setAlarm(const MeetEntity& meet, bool armed) const;
    MeetAlarmScheduler::Arming setDayAlarms(const QList<MeetEntity>& dayMeets, bool armed) const;

    // After another program changed the day: the alarms armed on meets of before follow them into
    // day (a meet moved rings at its new time, a renamed one says its new name) or go (a meet
    // deleted). Updates day's armed meets; true when an alarm changed.
    bool followAlarms(const QList<MeetEntity>& before, DailyEventsDay& day) const;
    // After another program changed events, whatever day they are on: every armed alarm whose
    // calendar store event moved follows it, one renamed says its new name, one deleted goes.
    // True when an alarm changed.
    bool followArmedAlarms() const;
    // The last start among the armed alarms, to watch that far; none without alarms.
    std::optional<QDateTime> lastArmedStart() const;
    // Whether the meet's event is still in its calendar (or is not a calendar store event).
    bool stillExists(const MeetEntity& meet) const;
    bool isArmed(const MeetEntity& meet) const { return m_alarms.isArmed(meet); }

    // A new meet of MeetTaskLink::blockSeconds in the default calendar, titled as the task and
    // linked to it. Throws, with the reason, when the task cannot be read or the meet not saved.
    MeetEntity blockTime(const MeetTaskLink& link, const QDateTime& start) const;
    // Through the task use cases, in either kind of account. Throws the use case's reason.
    void setTaskDone(const MeetTaskLink& link, bool done) const;
    // Reads the tasks of the linked meets into taskDone. A task deleted meanwhile takes its link
    // out of the event (which stays) and of the meet.
    void followTaskLinks(QList<MeetEntity>& meets, QHash<QUuid, bool>& taskDone) const;

private:
    enum class TaskState { open, done, gone, unknown };
    struct LinkedTask {
        TaskState state = TaskState::unknown;
        QString title;
        QString reason;
    };
    LinkedTask linkedTask(const MeetTaskLink& link) const;
    void dropTaskLink(const MeetEntity& meet) const;

    bool hasCalendarAccess() const;
    // What an undo of a change to meet needs, taken before the change, as its source keeps it;
    // none without a history.
    using EventUndo = std::variant<CalendarEventUndo, BackendEventUndo>;
    std::optional<EventUndo> undoFor(const MeetEntity& meet) const;
    void record(const std::optional<EventUndo>& undo, TaskChangeVerbEnum verb, const QString& title) const;
    // Where a new meet, or a change to meet, is written.
    std::shared_ptr<MeetRepository> writer(const QDate& day, const std::optional<QString>& newMeetsCalendar) const;
    std::shared_ptr<MeetRepository> writer(const QDate& day, const MeetEntity& meet) const;
    // The backend's events, in a Google account; a repeating one as its occurrences in the days
    // days from day on, when given a day.
    std::shared_ptr<RemoteEventRepositoryImpl> remoteEvents(
        const std::optional<QDate>& day = std::nullopt, int days = 1) const;
    // The meets of days days from day on. New meets go to newMeetsCalendar when given, else to
    // the user's default calendar.
    // everyCalendar: hidden calendars too. wholeBackendEvents: a repeating backend event as
    // itself, at its first start, rather than as its occurrences.
    std::shared_ptr<MeetRepository> repository(const QDate& day,
        const std::optional<QString>& newMeetsCalendar = std::nullopt, int days = 1, bool everyCalendar = false,
        bool wholeBackendEvents = false) const;

    std::optional<UserEntity> m_user;
    std::shared_ptr<EventKitStoring> m_eventStore;
    QTimeZone m_calendar;
    UserDefaults m_defaults;
    NotificationCenter* m_center;
    std::optional<APIClient> m_apiClient;
    MeetAlarmScheduler m_alarms;
    std::optional<TasksApplicationFactory::Applications> m_tasks;
    // Where changes to the events are recorded for undo; none over another calendar store.
    UndoHistory* m_history = nullptr;
    bool m_isDark;
};
