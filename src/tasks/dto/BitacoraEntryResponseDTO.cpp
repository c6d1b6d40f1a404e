#include "tasks/dto/BitacoraEntryResponseDTO.h"

#include "networking/JSONObjectReader.h"

BitacoraEntryResponseDTO BitacoraEntryResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("bteId")), reader.string(QLatin1String("bteUserId")),
        reader.string(QLatin1String("prjId")), reader.date(QLatin1String("bteDate")),
        reader.string(QLatin1String("bteContent"))};
}
