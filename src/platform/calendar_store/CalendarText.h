#pragma once

#include "platform/calendar_store/CalendarStore.h"

#include <QByteArray>
#include <QList>
#include <QString>

// The events of an iCalendar text (a VCALENDAR, or a lone VEVENT) read exactly as the store reads
// the events it keeps: times with a TZID take their zone from the text's own VTIMEZONEs, or float
// in the local zone; events called off (STATUS:CANCELLED) are left out. Nothing when the text is
// not iCalendar. Lets the reading be checked against any text, without a calendar server.
QList<CalendarStoreEvent> calendarStoreEventsFromText(const QByteArray& icalendar, const QString& calendarIdentifier);
