#include "wire/events/EventResponseDTO.h"

#include "wire/JSONObjectReader.h"

EventResponseDTO EventResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("evtId")), reader.string(QLatin1String("evtTitle")),
        reader.date(QLatin1String("evtSchedule")), reader.integer(QLatin1String("evtDurationMinutes")),
        reader.string(QLatin1String("evtDescription")), reader.string(QLatin1String("evtRepeat")),
        reader.string(QLatin1String("evtCustomRepeat"))};
}

void EventResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("evtCustomRepeat").string(evtCustomRepeat);
    out.key("evtDescription").string(evtDescription);
    out.key("evtDurationMinutes").integer(evtDurationMinutes);
    out.key("evtId").string(evtId);
    out.key("evtRepeat").string(evtRepeat);
    out.key("evtSchedule").date(evtSchedule);
    out.key("evtTitle").string(evtTitle);
    out.endObject();
}
