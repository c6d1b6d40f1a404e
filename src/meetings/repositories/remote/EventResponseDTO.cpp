#include "meetings/repositories/remote/EventResponseDTO.h"

#include "networking/JSONObjectReader.h"

EventResponseDTO EventResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("evtId")), reader.string(QLatin1String("evtTitle")),
        reader.date(QLatin1String("evtSchedule")), reader.integer(QLatin1String("evtDurationMinutes")),
        reader.string(QLatin1String("evtDescription")), reader.string(QLatin1String("evtRepeat")),
        reader.string(QLatin1String("evtCustomRepeat"))};
}
