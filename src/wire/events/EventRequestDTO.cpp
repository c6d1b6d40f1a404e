#include "wire/events/EventRequestDTO.h"

#include "wire/JSONObjectReader.h"

EventRequestDTO EventRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("evtId"), QLatin1String("evtTitle"), QLatin1String("evtSchedule"),
        QLatin1String("evtDurationMinutes"), QLatin1String("evtHasAlarm"), QLatin1String("evtDescription"),
        QLatin1String("evtRepeat"), QLatin1String("evtCustomRepeat")});
    EventRequestDTO request;
    request.evtTitle = reader.string(QLatin1String("evtTitle"));
    request.evtSchedule = reader.date(QLatin1String("evtSchedule"));
    request.evtDurationMinutes = reader.integer(QLatin1String("evtDurationMinutes"));
    request.evtHasAlarm = reader.boolean(QLatin1String("evtHasAlarm"));
    request.evtDescription = reader.string(QLatin1String("evtDescription"));
    request.evtRepeat = reader.string(QLatin1String("evtRepeat"));
    request.evtCustomRepeat = reader.string(QLatin1String("evtCustomRepeat"));
    request.evtId = reader.optionalString(QLatin1String("evtId"));
    return request;
}

void EventRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("evtCustomRepeat").string(evtCustomRepeat);
    out.key("evtDescription").string(evtDescription);
    out.key("evtDurationMinutes").integer(evtDurationMinutes);
    out.key("evtHasAlarm").boolean(evtHasAlarm);
    if (evtId)
        out.key("evtId").string(*evtId);
    out.key("evtRepeat").string(evtRepeat);
    out.key("evtSchedule").date(evtSchedule);
    out.key("evtTitle").string(evtTitle);
    out.endObject();
}
