#pragma once

#include "platform/calendar_store/CalendarStore.h"
#include "screens/schedule/MiniCalendarEntities.h"

#include <QHash>
#include <QSet>

class NotificationCenter;

using MiniCalendarHolidayMarks = QHash<QDate, QList<MiniCalendarHolidayMarkEntity>>;

// Where the mini calendar finds holidays: the calendars of the user's calendar store whose title
// says they hold holidays, less the ones the user hid.
class MiniCalendarHolidaySource {
public:
    virtual ~MiniCalendarHolidaySource() = default;

    virtual int authorizationStatus() const = 0;
    virtual QList<CalendarStoreCalendar> calendars() const = 0;
    virtual QSet<QString> hiddenCalendarIdentifiers() const = 0;
    virtual QList<CalendarStoreEvent> events(
        const QDateTime& start, const QDateTime& end, const QStringList& calendarIdentifiers) const = 0;

    // "holiday", "festivo" or "feriado" in the title, in any letter case.
    static bool isHolidayCalendar(const CalendarStoreCalendar& calendar);

    // The holidays that start in month (any date in it), by local day, in the order the store
    // gave them. Nothing without full access to the store. Blocking: call it off the GUI thread.
    MiniCalendarHolidayMarks holidayMarks(const QDate& month) const;

    // The desktop's calendar store and the user's hidden calendars. The first call must come
    // from the GUI thread, where the store is created.
    static std::shared_ptr<const MiniCalendarHolidaySource> live(NotificationCenter& center);
};
