#pragma once

#include "platform/calendar_store/CalendarStore.h"

#include <QDateTime>
#include <QList>
#include <QStringList>

#include <optional>

// What yields an account's identifier, title and type for the calendar accounts list.
using EventKitSourceRepresentable = CalendarStoreSource;

// Which events to read: those overlapping [startDate, endDate) in the calendars named, or only
// the occurrences of one event when eventIdentifier is set.
struct EventKitEventPredicate {
    QDateTime startDate;
    QDateTime endDate;
    QStringList calendarIdentifiers;
    std::optional<QString> eventIdentifier;
};

// The calendar store as the meet repository needs it; LiveEventKitStore is the desktop's, tests
// keep one in memory. Statuses are the CalendarAuthorizationStatus numbers. save and remove throw
// CalendarStoreError with the store's explanation.
class EventKitStoring {
public:
    virtual ~EventKitStoring() = default;

    virtual int authorizationStatus() const = 0;
    virtual bool requestFullAccessToEvents() = 0;

    virtual QList<CalendarStoreCalendar> calendars() const = 0;
    virtual std::optional<CalendarStoreCalendar> calendar(const QString& identifier) const = 0;
    virtual std::optional<CalendarStoreCalendar> defaultCalendarForNewEvents() const = 0;

    EventKitEventPredicate predicateForEvents(
        const QDateTime& start, const QDateTime& end, const QList<CalendarStoreCalendar>& calendars) const
    {
        EventKitEventPredicate predicate {start, end, {}, std::nullopt};
        for (const CalendarStoreCalendar& calendar : calendars)
            predicate.calendarIdentifiers.append(calendar.identifier);
        return predicate;
    }
    // The occurrences of one event in its calendar, however far edits moved them.
    EventKitEventPredicate predicateForOccurrences(const QString& eventIdentifier, const QString& calendarIdentifier,
        const QDateTime& start, const QDateTime& end) const
    {
        return {start, end, {calendarIdentifier}, eventIdentifier};
    }
    virtual QList<CalendarStoreEvent> events(const EventKitEventPredicate& predicate) const = 0;
    virtual std::optional<CalendarStoreEvent> event(const QString& eventIdentifier) const = 0;

    virtual void save(CalendarStoreEvent& event, CalendarStoreSpan span) = 0;
    virtual void remove(const CalendarStoreEvent& event, CalendarStoreSpan span) = 0;
};
