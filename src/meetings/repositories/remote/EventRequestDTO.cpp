#include "meetings/repositories/remote/EventRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

QJsonValue CreateEventRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("evtTitle"), evtTitle},
        {QStringLiteral("evtSchedule"), JSONCoding::encodeDate(evtSchedule)},
        {QStringLiteral("evtDurationMinutes"), evtDurationMinutes}, {QStringLiteral("evtHasAlarm"), evtHasAlarm},
        {QStringLiteral("evtDescription"), evtDescription}, {QStringLiteral("evtRepeat"), evtRepeat},
        {QStringLiteral("evtCustomRepeat"), evtCustomRepeat}};
}
