#include "wire/events/EventRequestDTO.h"

#include "wire/JSONObjectReader.h"

EventRequestDTO EventRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("evtTitle"), QLatin1String("evtSchedule"),
        QLatin1String("evtDurationMinutes"), QLatin1String("evtHasAlarm"), QLatin1String("evtDescription"),
        QLatin1String("evtRepeat"), QLatin1String("evtCustomRepeat")});
    return {reader.string(QLatin1String("evtTitle")), reader.date(QLatin1String("evtSchedule")),
        reader.integer(QLatin1String("evtDurationMinutes")), reader.boolean(QLatin1String("evtHasAlarm")),
        reader.string(QLatin1String("evtDescription")), reader.string(QLatin1String("evtRepeat")),
        reader.string(QLatin1String("evtCustomRepeat"))};
}

void EventRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("evtCustomRepeat").string(evtCustomRepeat);
    out.key("evtDescription").string(evtDescription);
    out.key("evtDurationMinutes").integer(evtDurationMinutes);
    out.key("evtHasAlarm").boolean(evtHasAlarm);
    out.key("evtRepeat").string(evtRepeat);
    out.key("evtSchedule").date(evtSchedule);
    out.key("evtTitle").string(evtTitle);
    out.endObject();
}
