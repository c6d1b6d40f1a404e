#include "tasks/dto/TaskResponseDTO.h"

#include "networking/JSONObjectReader.h"

TaskResponseDTO TaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("tasId")), reader.string(QLatin1String("prjId")),
        reader.string(QLatin1String("talId")), reader.string(QLatin1String("tasTitle")),
        reader.boolean(QLatin1String("tasIsDone")), reader.optionalDate(QLatin1String("tasDueDate")),
        reader.optionalString(QLatin1String("tasEisenhowerTag"))};
}
