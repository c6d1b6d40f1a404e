#include "tasks/dto/TaskListResponseDTO.h"

#include "networking/JSONObjectReader.h"

TaskListResponseDTO TaskListResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("talId")), reader.string(QLatin1String("prjId")),
        reader.string(QLatin1String("talName")), reader.string(QLatin1String("talDescription")),
        reader.boolean(QLatin1String("talIsDefault"))};
}
