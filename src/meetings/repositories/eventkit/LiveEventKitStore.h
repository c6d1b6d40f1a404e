#pragma once

#include "meetings/repositories/eventkit/EventKitStoring.h"

#include <memory>

// The desktop's calendar store behind EventKitStoring.
class LiveEventKitStore final : public EventKitStoring {
public:
    // The one store every repository of the process shares, made on first use over
    // CalendarStore::shared(); the first call must come from the GUI thread, later ones from any.
    static std::shared_ptr<LiveEventKitStore> shared();

    explicit LiveEventKitStore(CalendarStore& store);

    int authorizationStatus() const override;
    bool requestFullAccessToEvents() override;
    QList<CalendarStoreCalendar> calendars() const override;
    std::optional<CalendarStoreCalendar> calendar(const QString& identifier) const override;
    std::optional<CalendarStoreCalendar> defaultCalendarForNewEvents() const override;
    QList<CalendarStoreEvent> events(const EventKitEventPredicate& predicate) const override;
    std::optional<CalendarStoreEvent> event(const QString& eventIdentifier) const override;
    void save(CalendarStoreEvent& event, CalendarStoreSpan span) override;
    void remove(const CalendarStoreEvent& event, CalendarStoreSpan span) override;

private:
    CalendarStore& m_store;
};
