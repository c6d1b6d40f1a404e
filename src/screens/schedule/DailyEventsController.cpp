#include "screens/schedule/DailyEventsController.h"

#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/applications/MeetingsApplication.h"
#include "meetings/domain/MeetRepetition.h"
#include "meetings/repositories/CompositeMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "platform/Clock.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/AppServices.h"
#include "tasks/domain/TaskMessages.h"
#include "undo/CalendarEventUndo.h"
#include "undo/UndoHistory.h"

#include <QGuiApplication>
#include <QMutex>
#include <QPalette>

#include <stdexcept>

namespace {

const QString defaultCalendarKey = QStringLiteral("defaultCalendarIdentifier");

// Two reads may follow the same change at once; the armed set is read, changed and written back,
// so one at a time.
QMutex following;

// The calendar store's repository reads the day around "now"; pinning now to the chosen day
// makes it read that day alone, wherever it lies in the navigator's six months.
class PinnedClock final : public Clock {
public:
    explicit PinnedClock(QDateTime now)
        : m_now(std::move(now))
    {
    }
    QDateTime now() const override { return m_now; }

private:
    QDateTime m_now;
};

} // namespace

DailyEventsController::DailyEventsController(const AppServices& services, std::optional<UserEntity> user,
    std::shared_ptr<EventKitStoring> eventStore, QTimeZone calendar)
    : m_user(std::move(user))
    , m_eventStore(eventStore ? std::move(eventStore) : LiveEventKitStore::shared())
    , m_calendar(std::move(calendar))
    , m_defaults(services.userDefaults())
    , m_center(&services.notificationCenter())
    , m_apiClient(m_user && m_user->usrIsGoogleAccount ? services.apiClient() : std::nullopt)
    , m_alarms(services.meetAlarmScheduler())
    , m_isDark(qGuiApp && qGuiApp->palette().color(QPalette::Window).lightness() < 128)
    , m_history(eventStore ? nullptr : &services.undoHistory())
{
}

bool DailyEventsController::hasCalendarAccess() const
{
    const int status = m_eventStore->authorizationStatus();
    if (status == CalendarAuthorizationStatus::fullAccess)
        return true;
    return status == CalendarAuthorizationStatus::notDetermined && m_eventStore->requestFullAccessToEvents();
}

std::shared_ptr<MeetRepository> DailyEventsController::repository(const QDate& day,
    const std::optional<QString>& newMeetsCalendar, int days, bool everyCalendar, bool wholeBackendEvents) const
{
    const QString chosen = newMeetsCalendar.value_or(m_defaults.value(defaultCalendarKey).toString());
    std::vector<std::shared_ptr<MeetRepository>> sources {std::make_shared<EventKitMeetRepositoryImpl>(m_eventStore,
        m_calendar, 0, days, everyCalendar ? QSet<QString>() : HiddenCalendarsStore::standard(*m_center).load(),
        chosen.isEmpty() ? std::nullopt : std::optional(chosen),
        std::make_shared<PinnedClock>(QDateTime(day, QTime(12, 0), m_calendar)))};
    if (m_apiClient)
        sources.push_back(wholeBackendEvents ? remoteEvents() : remoteEvents(day, days));
    return std::make_shared<CompositeMeetRepositoryImpl>(std::move(sources));
}

// The composite writes to its first source, the calendar store: a meet of the backend is changed
// on the backend, and a new one goes there when its calendar is the backend's.
std::shared_ptr<MeetRepository> DailyEventsController::writer(
    const QDate& day, const std::optional<QString>& newMeetsCalendar) const
{
    if (m_apiClient && newMeetsCalendar == RemoteEventRepositoryImpl::calendarIdentifier)
        return remoteEvents();
    return repository(day, newMeetsCalendar);
}

std::shared_ptr<MeetRepository> DailyEventsController::writer(const QDate& day, const MeetEntity& meet) const
{
    if (m_apiClient && meet.metSource == MeetSource::backend)
        return remoteEvents();
    return repository(day);
}

std::shared_ptr<RemoteEventRepositoryImpl> DailyEventsController::remoteEvents(
    const std::optional<QDate>& day, int days) const
{
    if (!m_apiClient)
        return nullptr;
    const bool isDark = m_isDark;
    const UserDefaults defaults = m_defaults;
    auto events = std::make_shared<RemoteEventRepositoryImpl>(
        *m_apiClient, [isDark] { return isDark; },
        [defaults](
            const QUuid& metId) { return ArmedAlarmsStore(defaults).contains(metId.toString(QUuid::WithoutBraces)); });
    if (day)
        events->setRange(RemoteEventRepositoryImpl::Range {QDateTime(*day, QTime(0, 0), m_calendar),
            QDateTime(day->addDays(days), QTime(0, 0), m_calendar), m_calendar});
    return events;
}

namespace {

bool touches(const MeetEntity& meet, const QDateTime& start, const QDateTime& end)
{
    // The backend answers with every event of the user; a meet of no length at midnight still
    // belongs to the day it starts.
    return meet.metDate < end && (meet.endDate() > start || meet.metDate == start);
}

} // namespace

DailyEventsDay DailyEventsController::loadDay(const QDate& day) const
{
    return loadDays(day, day).constFirst();
}

QList<DailyEventsDay> DailyEventsController::loadDays(const QDate& first, const QDate& last) const
{
    DailyEventsDay common;
    if (!hasCalendarAccess()) {
        common.isPermissionDenied = true;
        QList<DailyEventsDay> denied;
        for (QDate day = first; day <= last; day = day.addDays(1)) {
            denied.append(common);
            denied.last().date = day;
        }
        return denied;
    }
    const qint64 dayCount = first.daysTo(last) + 1;
    QList<MeetEntity> meets
        = MeetingsApplication(repository(first, std::nullopt, int(dayCount)), m_calendar).fetchMeets();
    QHash<QUuid, bool> taskDone;
    followTaskLinks(meets, taskDone);
    const QSet<QString> hidden = HiddenCalendarsStore::standard(*m_center).load();
    for (const CalendarStoreCalendar& calendar : m_eventStore->calendars()) {
        if (hidden.contains(calendar.identifier))
            continue;
        common.shownCalendarIdentifiers.append(calendar.identifier);
        if (calendar.writable)
            common.calendars.append(calendar);
    }
    // A Google account's own calendar, after the desktop's: new meets still go to the store's
    // default calendar unless the user picks this one, as the store comes first among the
    // sources new meets are written to.
    if (m_apiClient) {
        CalendarStoreCalendar backend;
        backend.identifier = RemoteEventRepositoryImpl::calendarIdentifier;
        backend.title = QStringLiteral("Tolvane");
        backend.color = remoteEvents()->color().hexValue;
        backend.writable = true;
        common.calendars.append(backend);
    }
    common.defaultCalendarIdentifier = m_defaults.value(defaultCalendarKey).toString();
    if (common.defaultCalendarIdentifier.isEmpty()) {
        if (const std::optional<CalendarStoreCalendar> fallback = m_eventStore->defaultCalendarForNewEvents())
            common.defaultCalendarIdentifier = fallback->identifier;
    }

    QList<DailyEventsDay> loaded;
    for (QDate day = first; day <= last; day = day.addDays(1)) {
        DailyEventsDay& one = loaded.emplace_back(common);
        one.date = day;
        const QDateTime dayStart(day, QTime(0, 0), m_calendar);
        const QDateTime dayEnd(day.addDays(1), QTime(0, 0), m_calendar);
        for (const MeetEntity& meet : std::as_const(meets)) {
            if (!touches(meet, dayStart, dayEnd))
                continue;
            one.meets.append(meet);
            if (m_alarms.isArmed(meet))
                one.armedMeetIds.insert(meet.metId);
            if (const auto done = taskDone.constFind(meet.metId); done != taskDone.cend())
                one.taskDone.insert(meet.metId, *done);
        }
        one.isDayAlarmSet = m_alarms.isDayArmed(one.meets);
    }
    return loaded;
}

QList<MeetEntity> DailyEventsController::meetsBetween(const QDate& first, const QDate& last) const
{
    // A source that cannot be read (a store without access, a backend down) is left out.
    const qint64 dayCount = first.daysTo(last) + 1;
    QList<MeetEntity> meets
        = MeetingsApplication(repository(first, std::nullopt, int(dayCount), true, true), m_calendar).fetchMeets();
    const QDateTime start(first, QTime(0, 0), m_calendar);
    const QDateTime end(last.addDays(1), QTime(0, 0), m_calendar);
    meets.removeIf([&](const MeetEntity& meet) {
        if (meet.metSource == MeetSource::backend && meet.metRecurrenceFrequency != MeetRecurrenceFrequency::none)
            return MeetRepetition::starts(meet, start, end, m_calendar).isEmpty();
        return !touches(meet, start, end);
    });
    return meets;
}

MeetEntity DailyEventsController::create(const MeetDraft& draft) const
{
    const QDate day = draft.start.toTimeZone(m_calendar).date();
    const MeetEntity made = MeetingsApplication(writer(day, draft.calendarIdentifier), m_calendar).createMeet(draft);
    if (made.metSource == MeetSource::eventKit) {
        AppCreatedEventIdentifiersStore(m_defaults).add(made.metOriginalIdentifier);
        if (m_history)
            CalendarEventUndo::ofNewEvent(
                CalendarStore::shared(), made.metCalendarIdentifier, made.metOriginalIdentifier)
                .record(*m_history, TaskChangeVerbEnum::add, made.metName);
    } else if (made.metSource == MeetSource::backend && m_history && m_apiClient) {
        BackendEventUndo::ofNewEvent(remoteEvents(), made.metOriginalIdentifier)
            .record(*m_history, TaskChangeVerbEnum::add, made.metName);
    }
    return made;
}

MeetEntity DailyEventsController::update(const MeetEntity& meet, const MeetDraft& draft, TaskChangeVerbEnum verb) const
{
    const QDate day = meet.metDate.toTimeZone(m_calendar).date();
    const std::optional<EventUndo> undo = undoFor(meet);
    const MeetEntity updated = MeetingsApplication(writer(day, meet), m_calendar).updateMeet(meet, draft);
    record(undo, verb, updated.metName);
    return updated;
}

void DailyEventsController::remove(const MeetEntity& meet) const
{
    const QDate day = meet.metDate.toTimeZone(m_calendar).date();
    const std::optional<EventUndo> undo = undoFor(meet);
    MeetingsApplication(writer(day, meet), m_calendar).deleteMeet(meet);
    record(undo, TaskChangeVerbEnum::delete_, meet.metName);
}

std::optional<DailyEventsController::EventUndo> DailyEventsController::undoFor(const MeetEntity& meet) const
{
    if (!m_history)
        return std::nullopt;
    switch (meet.metSource) {
    case MeetSource::eventKit:
        return CalendarEventUndo(CalendarStore::shared(), meet.metCalendarIdentifier, meet.metOriginalIdentifier);
    case MeetSource::backend:
        if (!m_apiClient)
            return std::nullopt;
        return BackendEventUndo(remoteEvents(), meet.metOriginalIdentifier);
    }
    return std::nullopt;
}

void DailyEventsController::record(
    const std::optional<EventUndo>& undo, TaskChangeVerbEnum verb, const QString& title) const
{
    if (undo)
        std::visit([&](const auto& way) { way.record(*m_history, verb, title); }, *undo);
}

MeetAlarmScheduler::Arming DailyEventsController::setAlarm(const MeetEntity& meet, bool armed) const
{
    MeetAlarmScheduler::Arming done;
    if (armed)
        done = m_alarms.arm(meet);
    else
        m_alarms.disarm(meet);
    m_center->post(NotificationName::alarmScheduleDidChange);
    return done;
}

MeetAlarmScheduler::Arming DailyEventsController::setDayAlarms(const QList<MeetEntity>& dayMeets, bool armed) const
{
    MeetAlarmScheduler::Arming done;
    if (armed)
        done = m_alarms.armDay(dayMeets);
    else
        m_alarms.disarmDay(dayMeets);
    m_center->post(NotificationName::alarmScheduleDidChange);
    return done;
}

bool DailyEventsController::followAlarms(const QList<MeetEntity>& before, DailyEventsDay& day) const
{
    const QMutexLocker locker(&following);
    QHash<QUuid, const MeetEntity*> now;
    for (const MeetEntity& meet : std::as_const(day.meets))
        now.insert(meet.metId, &meet);
    QSet<QUuid> wasThere;
    for (const MeetEntity& meet : before)
        wasThere.insert(meet.metId);
    bool changed = false;
    for (const MeetEntity& old : before) {
        if (!m_alarms.isArmed(old))
            continue;
        if (const MeetEntity* same = now.value(old.metId)) {
            // Same event at the same time: only what the alarm says may have changed.
            if (same->metName != old.metName) {
                m_alarms.arm(*same);
                changed = true;
            }
            continue;
        }
        // Hidden here but still in the store: the meet is only out of sight.
        if (old.metSource == MeetSource::eventKit && !day.shownCalendarIdentifiers.contains(old.metCalendarIdentifier)
            && m_eventStore->calendar(old.metCalendarIdentifier))
            continue;
        m_alarms.disarm(old);
        changed = true;
        // Its identity follows its start: the meet of the same event that is new to the day is
        // where it went.
        for (const MeetEntity& meet : std::as_const(day.meets)) {
            if (meet.metOriginalIdentifier == old.metOriginalIdentifier && meet.metSource == old.metSource
                && !wasThere.contains(meet.metId)) {
                m_alarms.arm(meet);
                break;
            }
        }
    }
    if (!changed)
        return false;
    day.armedMeetIds.clear();
    for (const MeetEntity& meet : std::as_const(day.meets)) {
        if (m_alarms.isArmed(meet))
            day.armedMeetIds.insert(meet.metId);
    }
    day.isDayAlarmSet = m_alarms.isDayArmed(day.meets);
    m_center->post(NotificationName::alarmScheduleDidChange);
    return true;
}

bool DailyEventsController::stillExists(const MeetEntity& meet) const
{
    if (meet.metSource != MeetSource::eventKit)
        return true;
    return m_eventStore->event(meet.metOriginalIdentifier).has_value();
}

DailyEventsController::LinkedTask DailyEventsController::linkedTask(const MeetTaskLink& link) const
{
    LinkedTask found;
    if (!m_tasks)
        return found;
    const bool isTask = link.kind == MeetTaskLink::Kind::task;
    const ResultEntity result = isTask ? m_tasks->tasks.find(link.id) : m_tasks->dailyTasks.find(link.id);
    if (result.result) {
        if (const auto* task = result.dataAs<TaskEntity>()) {
            found.state = task->tasIsDone ? TaskState::done : TaskState::open;
            found.title = task->tasTitle;
        } else if (const auto* daily = result.dataAs<DailyTaskEntity>()) {
            found.state = daily->dtaIsDone ? TaskState::done : TaskState::open;
            found.title = daily->dtaTitle;
        }
        return found;
    }
    found.reason = result.firstMessage().value_or(QString());
    // Only an answer that the task is not there drops a link; a store or a backend that could not
    // be read says nothing about it.
    const QStringList gone = isTask
        ? QStringList {TaskMessages::Task::notFound, TaskMessages::Task::remoteNotFound}
        : QStringList {TaskMessages::DailyTask::notFound, TaskMessages::DailyTask::remoteNotFound};
    if (gone.contains(found.reason))
        found.state = TaskState::gone;
    return found;
}

void DailyEventsController::followTaskLinks(QList<MeetEntity>& meets, QHash<QUuid, bool>& taskDone) const
{
    // The occurrences of one event share its link: each task is read once.
    QHash<MeetTaskLink, LinkedTask> read;
    QSet<QString> dropped;
    for (MeetEntity& meet : meets) {
        if (!meet.metTaskLink)
            continue;
        auto known = read.constFind(*meet.metTaskLink);
        if (known == read.cend())
            known = read.insert(*meet.metTaskLink, linkedTask(*meet.metTaskLink));
        switch (known->state) {
        case TaskState::open:
        case TaskState::done:
            taskDone.insert(meet.metId, known->state == TaskState::done);
            break;
        case TaskState::gone:
            if (!dropped.contains(meet.metOriginalIdentifier)) {
                dropped.insert(meet.metOriginalIdentifier);
                try {
                    dropTaskLink(meet);
                } catch (const CalendarStoreError&) {
                    // A calendar that cannot be written keeps the link; the meet still shows none.
                }
            }
            meet.metTaskLink.reset();
            break;
        case TaskState::unknown:
            break;
        }
    }
}

void DailyEventsController::dropTaskLink(const MeetEntity& meet) const
{
    if (meet.metSource != MeetSource::eventKit)
        return;
    std::optional<CalendarStoreEvent> stored = m_eventStore->event(meet.metOriginalIdentifier);
    if (!stored || stored->taskLink.isEmpty())
        return;
    stored->taskLink.clear();
    // The event as a whole: a link is never one occurrence's.
    stored->occurrenceIdentifier.clear();
    m_eventStore->save(*stored, CalendarStoreSpan::futureEvents);
}

MeetEntity DailyEventsController::blockTime(const MeetTaskLink& link, const QDateTime& start) const
{
    const LinkedTask task = linkedTask(link);
    if (task.state != TaskState::open && task.state != TaskState::done) {
        //% "The task could not be read"
        const QString reason = task.reason.isEmpty() ? qtTrId("schedule-block-time-task-unreadable") : task.reason;
        throw std::runtime_error(reason.toStdString());
    }
    MeetDraft draft;
    draft.title = task.title;
    draft.start = start;
    draft.end = start.addSecs(MeetTaskLink::blockSeconds);
    draft.taskLink = link;
    return create(draft);
}

void DailyEventsController::setTaskDone(const MeetTaskLink& link, bool done) const
{
    if (!m_tasks)
        throw std::runtime_error(qtTrId("schedule-block-time-task-unreadable").toStdString());
    ResultEntity result;
    if (link.kind == MeetTaskLink::Kind::task)
        result = done ? m_tasks->tasks.markDone(link.id) : m_tasks->tasks.markNotDone(link.id);
    else
        result = m_tasks->dailyTasks.setDone(link.id, done);
    if (!result.result)
        throw std::runtime_error(result.firstMessage().value_or(QString()).toStdString());
}

std::optional<QDateTime> DailyEventsController::lastArmedStart() const
{
    std::optional<QDateTime> last;
    for (const MeetEntity& meet : m_alarms.armedMeets()) {
        if (!last || meet.metDate > *last)
            last = meet.metDate;
    }
    return last;
}

bool DailyEventsController::followArmedAlarms() const
{
    // An unreachable store reads as empty: nothing may be taken for deleted then.
    if (m_eventStore->authorizationStatus() != CalendarAuthorizationStatus::fullAccess)
        return false;
    const QMutexLocker locker(&following);
    bool changed = false;
    for (const MeetEntity& old : m_alarms.armedMeets()) {
        if (old.metSource != MeetSource::eventKit || old.metOriginalIdentifier.isEmpty())
            continue;
        const std::optional<CalendarStoreEvent> stored = m_eventStore->event(old.metOriginalIdentifier);
        if (!stored) {
            m_alarms.disarm(old);
            changed = true;
            continue;
        }
        const std::optional<CalendarStoreCalendar> calendar = m_eventStore->calendar(stored->calendarIdentifier);
        const auto occurrencesBetween = [&](const QDateTime& from, const QDateTime& to) {
            QList<MeetEntity> found;
            for (const CalendarStoreEvent& event : m_eventStore->events(m_eventStore->predicateForOccurrences(
                     old.metOriginalIdentifier, stored->calendarIdentifier, from, to)))
                found.append(EventKitMeetRepositoryImpl::meet(event, calendar.value_or(CalendarStoreCalendar {})));
            return found;
        };
        std::optional<MeetEntity> now;
        for (const MeetEntity& meet : occurrencesBetween(old.metDate, old.metDate.addSecs(1))) {
            if (meet.metId == old.metId)
                now = meet;
        }
        if (now) {
            // Same occurrence, same start: only what the alarm says may have changed.
            if (now->metName != old.metName) {
                m_alarms.arm(*now);
                changed = true;
            }
            continue;
        }
        // Moved: an event on its own is where it is now; a series' occurrence is the one of the
        // same day, when there is exactly one.
        std::optional<MeetEntity> moved;
        if (!stored->hasRecurrenceRules()) {
            moved = EventKitMeetRepositoryImpl::meet(*stored, calendar.value_or(CalendarStoreCalendar {}));
        } else {
            const QDate day = old.metDate.toTimeZone(m_calendar).date();
            const QList<MeetEntity> sameDay = occurrencesBetween(
                QDateTime(day, QTime(0, 0), m_calendar), QDateTime(day.addDays(1), QTime(0, 0), m_calendar));
            if (sameDay.size() == 1)
                moved = sameDay.constFirst();
        }
        m_alarms.disarm(old);
        if (moved && !moved->metIsAllDay)
            m_alarms.arm(*moved);
        changed = true;
    }
    if (changed)
        m_center->post(NotificationName::alarmScheduleDidChange);
    return changed;
}
