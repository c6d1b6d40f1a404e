#include "meetings/repositories/eventkit/LiveEventKitStore.h"

std::shared_ptr<LiveEventKitStore> LiveEventKitStore::shared()
{
    static const std::shared_ptr<LiveEventKitStore> store
        = std::make_shared<LiveEventKitStore>(CalendarStore::shared());
    return store;
}

LiveEventKitStore::LiveEventKitStore(CalendarStore& store)
    : m_store(store)
{
}

int LiveEventKitStore::authorizationStatus() const
{
    return m_store.authorizationStatus();
}

bool LiveEventKitStore::requestFullAccessToEvents()
{
    return m_store.requestFullAccessToEvents();
}

QList<CalendarStoreCalendar> LiveEventKitStore::calendars() const
{
    return m_store.calendars();
}

std::optional<CalendarStoreCalendar> LiveEventKitStore::calendar(const QString& identifier) const
{
    return m_store.calendar(identifier);
}

std::optional<CalendarStoreCalendar> LiveEventKitStore::defaultCalendarForNewEvents() const
{
    return m_store.defaultCalendar();
}

QList<CalendarStoreEvent> LiveEventKitStore::events(const EventKitEventPredicate& predicate) const
{
    if (predicate.eventIdentifier) {
        QList<CalendarStoreEvent> found;
        for (const QString& calendarIdentifier : predicate.calendarIdentifiers)
            found.append(m_store.occurrences(
                calendarIdentifier, *predicate.eventIdentifier, predicate.startDate, predicate.endDate));
        return found;
    }
    return m_store.events(predicate.startDate, predicate.endDate, predicate.calendarIdentifiers);
}

std::optional<CalendarStoreEvent> LiveEventKitStore::event(const QString& eventIdentifier) const
{
    return m_store.event(eventIdentifier);
}

void LiveEventKitStore::save(CalendarStoreEvent& event, CalendarStoreSpan span)
{
    m_store.save(event, span);
}

void LiveEventKitStore::remove(const CalendarStoreEvent& event, CalendarStoreSpan span)
{
    m_store.remove(event, span);
}
