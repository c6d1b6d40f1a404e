#include "meetings/domain/MeetTexts.h"

#include <QtGlobal>

namespace {

QString translated(const char* key, const char* english)
{
    const QString text = qtTrId(key);
    return text == QLatin1String(key) ? QString::fromUtf8(english) : text;
}

} // namespace

namespace MeetTexts {

QString untitled()
{
    return translated("eventkit-meet-untitled", "Untitled event");
}

QString noDefaultCalendar()
{
    return translated("eventkit-meet-no-default-calendar", "There is no calendar to add the event to");
}

} // namespace MeetTexts
