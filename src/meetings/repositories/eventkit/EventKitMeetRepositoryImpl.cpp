#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"

#include "meetings/domain/MeetIdentity.h"
#include "meetings/domain/MeetTexts.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryError.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "platform/SystemClock.h"

#include <QHash>
#include <QLoggingCategory>

#include <algorithm>

Q_LOGGING_CATEGORY(lcEventKitMeetRepository, "com.quorvel.tolvane.EventKitMeetRepositoryImpl", QtInfoMsg)

namespace {

const char* statusName(int status)
{
    switch (status) {
    case CalendarAuthorizationStatus::notDetermined:
        return "notDetermined";
    case CalendarAuthorizationStatus::restricted:
        return "restricted";
    case CalendarAuthorizationStatus::denied:
        return "denied";
    case CalendarAuthorizationStatus::fullAccess:
        return "fullAccess";
    case CalendarAuthorizationStatus::writeOnly:
        return "writeOnly";
    }
    return "unknown";
}

// Qt numbers Monday 1 ... Sunday 7; the store, Sunday 1 ... Saturday 7.
int storeWeekday(const QDate& date)
{
    return date.dayOfWeek() % 7 + 1;
}

} // namespace

EventKitMeetRepositoryImpl::EventKitMeetRepositoryImpl(std::shared_ptr<EventKitStoring> eventStore, QTimeZone calendar,
    int daysBehind, int daysAhead, QSet<QString> hiddenCalendarIdentifiers,
    std::optional<QString> defaultCalendarIdentifier, std::shared_ptr<const Clock> clock)
    : eventStore(std::move(eventStore))
    , calendar(std::move(calendar))
    , daysBehind(daysBehind)
    , daysAhead(daysAhead)
    , hiddenCalendarIdentifiers(std::move(hiddenCalendarIdentifiers))
    , defaultCalendarIdentifier(std::move(defaultCalendarIdentifier))
    , clock(std::move(clock))
{
}

std::shared_ptr<EventKitMeetRepositoryImpl> EventKitMeetRepositoryImpl::live(
    QSet<QString> hiddenCalendarIdentifiers, std::optional<QString> defaultCalendarIdentifier)
{
    return std::make_shared<EventKitMeetRepositoryImpl>(LiveEventKitStore::shared(), QTimeZone::systemTimeZone(), 1, 14,
        std::move(hiddenCalendarIdentifiers), std::move(defaultCalendarIdentifier), std::make_shared<SystemClock>());
}

void EventKitMeetRepositoryImpl::requireAccess()
{
    const int status = eventStore->authorizationStatus();
    qCInfo(lcEventKitMeetRepository, "Authorization status: %s", statusName(status));
    if (status == CalendarAuthorizationStatus::fullAccess)
        return;
    if (status == CalendarAuthorizationStatus::notDetermined && eventStore->requestFullAccessToEvents())
        return;
    throw EventKitMeetRepositoryError::accessDenied();
}

QList<MeetEntity> EventKitMeetRepositoryImpl::fetchMeets()
{
    requireAccess();
    QList<CalendarStoreCalendar> kept = eventStore->calendars();
    kept.removeIf([&](const CalendarStoreCalendar& c) { return hiddenCalendarIdentifiers.contains(c.identifier); });
    if (kept.isEmpty())
        return {};
    QHash<QString, CalendarStoreCalendar> byIdentifier;
    for (const CalendarStoreCalendar& c : std::as_const(kept))
        byIdentifier.insert(c.identifier, c);

    const QDateTime today(clock->now().toTimeZone(calendar).date(), QTime(0, 0), calendar);
    const QList<CalendarStoreEvent> events = eventStore->events(
        eventStore->predicateForEvents(today.addDays(-daysBehind), today.addDays(daysAhead), kept));
    QList<MeetEntity> meets;
    meets.reserve(events.size());
    for (const CalendarStoreEvent& event : events)
        meets.append(meet(event, byIdentifier.value(event.calendarIdentifier)));
    return meets;
}

MeetEntity EventKitMeetRepositoryImpl::meet(const CalendarStoreEvent& event, const CalendarStoreCalendar& calendar)
{
    const QString identifier = event.eventIdentifier.isEmpty() ? event.calendarItemIdentifier : event.eventIdentifier;
    MeetEntity meet;
    meet.metId = MeetIdentity::forOccurrence(identifier, event.startDate);
    meet.metName = event.title.isEmpty() ? MeetTexts::untitled() : event.title;
    meet.metDate = event.startDate;
    meet.metDescription = event.notes;
    meet.metDuration = double(event.startDate.msecsTo(event.endDate)) / 1000.0;
    meet.metColor = MeetColor::fromCalendarColor(calendar.color);
    meet.metIsAllDay = event.isAllDay;
    meet.metLocation = event.location;
    if (event.url)
        meet.metUrl = QUrl(*event.url);
    meet.metCalendarName = calendar.title;
    meet.metCalendarIdentifier = calendar.identifier.isEmpty() ? event.calendarIdentifier : calendar.identifier;
    meet.metOriginalIdentifier = identifier;
    meet.metSource = MeetSource::eventKit;
    meet.metTaskLink = MeetTaskLink::fromRawValue(event.taskLink);
    if (event.hasRecurrenceRules()) {
        const CalendarStoreRecurrenceRule& rule = event.recurrenceRules.constFirst();
        switch (rule.frequency) {
        case CalendarStoreFrequency::daily:
            meet.metRecurrenceFrequency = MeetRecurrenceFrequency::daily;
            break;
        case CalendarStoreFrequency::weekly:
            meet.metRecurrenceFrequency = MeetRecurrenceFrequency::weekly;
            meet.metRecurringWeekdays = QSet<int>(rule.daysOfTheWeek.begin(), rule.daysOfTheWeek.end());
            break;
        case CalendarStoreFrequency::monthly:
            meet.metRecurrenceFrequency = MeetRecurrenceFrequency::monthly;
            break;
        case CalendarStoreFrequency::yearly:
        case CalendarStoreFrequency::other:
            break;
        }
    }
    return meet;
}

QList<CalendarStoreRecurrenceRule> EventKitMeetRepositoryImpl::rules(
    MeetRecurrenceFrequency frequency, const QSet<int>& weekdays, const QDateTime& start, const QTimeZone& zone)
{
    const QDate startDay = start.toTimeZone(zone).date();
    switch (frequency) {
    case MeetRecurrenceFrequency::none:
        return {};
    case MeetRecurrenceFrequency::daily:
        return {{CalendarStoreFrequency::daily, 1, {}, {}}};
    case MeetRecurrenceFrequency::weekly: {
        QList<int> days(weekdays.begin(), weekdays.end());
        std::sort(days.begin(), days.end());
        if (days.isEmpty())
            days.append(storeWeekday(startDay));
        return {{CalendarStoreFrequency::weekly, 1, days, {}}};
    }
    case MeetRecurrenceFrequency::monthly:
        return {{CalendarStoreFrequency::monthly, 1, {}, {startDay.day()}}};
    }
    return {};
}

MeetEntity EventKitMeetRepositoryImpl::converted(const CalendarStoreEvent& event) const
{
    return meet(event, eventStore->calendar(event.calendarIdentifier).value_or(CalendarStoreCalendar {}));
}

QDateTime EventKitMeetRepositoryImpl::firstOccurrence(
    const QList<CalendarStoreRecurrenceRule>& rules, const QDateTime& start, const QTimeZone& zone)
{
    if (rules.isEmpty() || rules.constFirst().frequency != CalendarStoreFrequency::weekly
        || rules.constFirst().daysOfTheWeek.isEmpty())
        return start;
    const QDateTime local = start.toTimeZone(zone);
    for (int ahead = 0; ahead < 7; ++ahead) {
        const QDate day = local.date().addDays(ahead);
        if (rules.constFirst().daysOfTheWeek.contains(storeWeekday(day)))
            return QDateTime(day, local.time(), zone);
    }
    return start;
}

void EventKitMeetRepositoryImpl::apply(const MeetDraft& draft, CalendarStoreEvent& event) const
{
    const QList<CalendarStoreRecurrenceRule> chosen = rules(draft.recurrence, draft.weekdays, draft.start, calendar);
    QDateTime start = draft.start;
    // A series written anew starts on its first occurrence: a DTSTART its own rule does not
    // produce is an occurrence of nothing (RFC 5545), shown by some clients and not by others.
    // One occurrence moved on its own may land on any day.
    if (chosen != event.recurrenceRules || event.occurrenceIdentifier.isEmpty())
        start = firstOccurrence(chosen, draft.start, calendar);
    event.title = draft.title;
    event.notes = draft.description;
    event.location = draft.location;
    event.url = draft.url ? std::optional(draft.url->toString()) : std::nullopt;
    event.isAllDay = draft.isAllDay;
    event.startDate = start;
    event.endDate = start.addMSecs(draft.start.msecsTo(draft.end));
    event.recurrenceRules = chosen;
    if (draft.taskLink)
        event.taskLink = draft.taskLink->rawValue();
}

MeetEntity EventKitMeetRepositoryImpl::createMeet(const MeetDraft& draft)
{
    requireAccess();
    std::optional<CalendarStoreCalendar> target;
    if (defaultCalendarIdentifier)
        target = eventStore->calendar(*defaultCalendarIdentifier);
    if (!target)
        target = eventStore->defaultCalendarForNewEvents();
    if (!target)
        throw EventKitMeetRepositoryError::saveFailed(MeetTexts::noDefaultCalendar());

    CalendarStoreEvent event;
    event.calendarIdentifier = target->identifier;
    apply(draft, event);
    try {
        eventStore->save(event, CalendarStoreSpan::thisEvent);
    } catch (const CalendarStoreError& error) {
        throw EventKitMeetRepositoryError::saveFailed(error.localizedDescription());
    }
    return meet(event, *target);
}

CalendarStoreEvent EventKitMeetRepositoryImpl::findOccurrence(const MeetEntity& meet) const
{
    const std::optional<CalendarStoreEvent> stored = eventStore->event(meet.metOriginalIdentifier);
    if (!stored)
        throw EventKitMeetRepositoryError::eventNotFound();
    // The occurrences that overlap the second the meet starts, moved ones included; the store
    // takes care of asking EDS for a range wide enough for every kind of series.
    const QList<CalendarStoreEvent> around = eventStore->events(eventStore->predicateForOccurrences(
        meet.metOriginalIdentifier, stored->calendarIdentifier, meet.metDate, meet.metDate.addSecs(1)));
    for (const CalendarStoreEvent& candidate : around) {
        const QString identifier
            = candidate.eventIdentifier.isEmpty() ? candidate.calendarItemIdentifier : candidate.eventIdentifier;
        if (identifier == meet.metOriginalIdentifier && candidate.startDate == meet.metDate)
            return candidate;
    }
    throw EventKitMeetRepositoryError::eventNotFound();
}

MeetEntity EventKitMeetRepositoryImpl::updateMeet(const MeetEntity& meet, const MeetDraft& draft)
{
    requireAccess();
    CalendarStoreEvent occurrence = findOccurrence(meet);
    apply(draft, occurrence);
    try {
        eventStore->save(occurrence, CalendarStoreSpan::thisEvent);
    } catch (const CalendarStoreError& error) {
        throw EventKitMeetRepositoryError::saveFailed(error.localizedDescription());
    }
    return converted(occurrence);
}

void EventKitMeetRepositoryImpl::deleteMeet(const MeetEntity& meet)
{
    requireAccess();
    const CalendarStoreEvent occurrence = findOccurrence(meet);
    try {
        if (occurrence.hasRecurrenceRules()) {
            const CalendarStoreEvent series = eventStore->event(meet.metOriginalIdentifier).value_or(occurrence);
            eventStore->remove(series, CalendarStoreSpan::futureEvents);
        } else {
            eventStore->remove(occurrence, CalendarStoreSpan::thisEvent);
        }
    } catch (const CalendarStoreError& error) {
        throw EventKitMeetRepositoryError::saveFailed(error.localizedDescription());
    }
}

QList<EventKitAccountCalendarsEntity> EventKitMeetRepositoryImpl::accountCalendars()
{
    requireAccess();
    QList<EventKitAccountCalendarsEntity> accounts;
    for (const CalendarStoreCalendar& c : eventStore->calendars()) {
        const EventKitSourceRepresentable& source = c.source;
        auto account = std::find_if(accounts.begin(), accounts.end(),
            [&](const EventKitAccountCalendarsEntity& known) { return known.eacId == source.identifier; });
        if (account == accounts.end()) {
            accounts.append({source.identifier, source.title, source.type, {}});
            account = std::prev(accounts.end());
        }
        account->eacCalendars.append({c.identifier, c.title, MeetColor::fromCalendarColor(c.color).hexValue});
    }
    return accounts;
}
