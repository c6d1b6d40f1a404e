#include "screens/schedule/MiniCalendarHolidaySource.h"

#include "calendar_providers/stores/HiddenCalendarsStore.h"

namespace {

class StoreHolidaySource final : public MiniCalendarHolidaySource {
public:
    StoreHolidaySource(CalendarStore& store, HiddenCalendarsStore hidden)
        : m_store(store)
        , m_hidden(std::move(hidden))
    {
    }

    int authorizationStatus() const override { return m_store.authorizationStatus(); }
    QList<CalendarStoreCalendar> calendars() const override { return m_store.calendars(); }
    QSet<QString> hiddenCalendarIdentifiers() const override { return m_hidden.load(); }
    QList<CalendarStoreEvent> events(
        const QDateTime& start, const QDateTime& end, const QStringList& calendarIdentifiers) const override
    {
        return m_store.events(start, end, calendarIdentifiers);
    }

private:
    CalendarStore& m_store;
    HiddenCalendarsStore m_hidden;
};

} // namespace

bool MiniCalendarHolidaySource::isHolidayCalendar(const CalendarStoreCalendar& calendar)
{
    const QString title = calendar.title.toLower();
    return title.contains(QStringLiteral("holiday")) || title.contains(QStringLiteral("festivo"))
        || title.contains(QStringLiteral("feriado"));
}

MiniCalendarHolidayMarks MiniCalendarHolidaySource::holidayMarks(const QDate& month) const
{
    MiniCalendarHolidayMarks marks;
    if (authorizationStatus() != CalendarAuthorizationStatus::fullAccess)
        return marks;
    const QSet<QString> hidden = hiddenCalendarIdentifiers();
    QHash<QString, CalendarStoreCalendar> holidayCalendars;
    QStringList identifiers;
    for (const CalendarStoreCalendar& calendar : calendars()) {
        if (hidden.contains(calendar.identifier) || !isHolidayCalendar(calendar))
            continue;
        holidayCalendars.insert(calendar.identifier, calendar);
        identifiers.append(calendar.identifier);
    }
    if (identifiers.isEmpty())
        return marks;
    const QDate first(month.year(), month.month(), 1);
    const QList<CalendarStoreEvent> events
        = this->events(first.startOfDay(), first.addMonths(1).startOfDay(), identifiers);
    for (const CalendarStoreEvent& event : events) {
        const auto calendar = holidayCalendars.constFind(event.calendarIdentifier);
        if (calendar == holidayCalendars.cend())
            continue;
        marks[event.startDate.toLocalTime().date()].append({QColor(calendar->color), event.title});
    }
    return marks;
}

std::shared_ptr<const MiniCalendarHolidaySource> MiniCalendarHolidaySource::live(NotificationCenter& center)
{
    return std::make_shared<StoreHolidaySource>(CalendarStore::shared(), HiddenCalendarsStore::standard(center));
}
