// An iCalendar text as any calendar account can hold it: parsed by libical, read into events as
// the calendar store reads them (zones from the text's own VTIMEZONEs, rules, all-day dates) and
// turned into the meets the schedule shows.
#include "FuzzInput.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "platform/calendar_store/CalendarText.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const CalendarStoreCalendar calendar {
        QStringLiteral("fuzz"), QStringLiteral("Fuzz"), QStringLiteral("#336699"), QStringLiteral("local"), true, {}};
    for (const CalendarStoreEvent& event : calendarStoreEventsFromText(fuzzBytes(data, size), calendar.identifier))
        EventKitMeetRepositoryImpl::meet(event, calendar);
    return 0;
}
