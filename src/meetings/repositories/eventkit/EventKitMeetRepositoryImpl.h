#pragma once

#include "meetings/entities/EventKitAccountCalendarsEntity.h"
#include "meetings/repositories/MeetRepository.h"
#include "meetings/repositories/eventkit/EventKitStoring.h"

#include <QSet>
#include <QTimeZone>

#include <memory>
#include <optional>

class Clock;

// Meets read from and written to the calendar store. Every operation first checks calendar
// access; the date range runs from the start of today minus daysBehind days to the start of
// today plus daysAhead days, days counted in the time zone `calendar`.
class EventKitMeetRepositoryImpl final : public MeetRepository {
public:
    EventKitMeetRepositoryImpl(std::shared_ptr<EventKitStoring> eventStore, QTimeZone calendar, int daysBehind,
        int daysAhead, QSet<QString> hiddenCalendarIdentifiers, std::optional<QString> defaultCalendarIdentifier,
        std::shared_ptr<const Clock> clock);

    // As the screens build it: the shared desktop store, the system zone and clock, yesterday to
    // fourteen days after today, without the hidden calendars; new events go to
    // defaultCalendarIdentifier when given, else to the store's default calendar.
    static std::shared_ptr<EventKitMeetRepositoryImpl> live(
        QSet<QString> hiddenCalendarIdentifiers, std::optional<QString> defaultCalendarIdentifier = std::nullopt);

    QList<MeetEntity> fetchMeets() override;
    MeetEntity createMeet(const MeetDraft& draft) override;
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) override;
    void deleteMeet(const MeetEntity& meet) override;

    // Every account of the store with all of its calendars, hidden ones included, in the store's
    // order.
    QList<EventKitAccountCalendarsEntity> accountCalendars();

    // The meet an event of the store reads as, in the calendar that holds it.
    static MeetEntity meet(const CalendarStoreEvent& event, const CalendarStoreCalendar& calendar);
    // The rules written for a repetition; a weekly one without weekdays repeats on the start's
    // weekday in zone.
    static QList<CalendarStoreRecurrenceRule> rules(
        MeetRecurrenceFrequency frequency, const QSet<int>& weekdays, const QDateTime& start, const QTimeZone& zone);

    // Where a series with these rules, chosen to start at start, really starts: a weekly one on
    // the first of its weekdays from start on, in zone, at the same time of day.
    static QDateTime firstOccurrence(
        const QList<CalendarStoreRecurrenceRule>& rules, const QDateTime& start, const QTimeZone& zone);

private:
    void requireAccess();
    CalendarStoreEvent findOccurrence(const MeetEntity& meet) const;
    void apply(const MeetDraft& draft, CalendarStoreEvent& event) const;
    MeetEntity converted(const CalendarStoreEvent& event) const;

    std::shared_ptr<EventKitStoring> eventStore;
    QTimeZone calendar;
    int daysBehind;
    int daysAhead;
    QSet<QString> hiddenCalendarIdentifiers;
    std::optional<QString> defaultCalendarIdentifier;
    std::shared_ptr<const Clock> clock;
};
