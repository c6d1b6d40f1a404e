#include "tasks/dto/DailyTaskResponseDTO.h"

#include "networking/JSONObjectReader.h"

DailyTaskResponseDTO DailyTaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("tasId")), reader.string(QLatin1String("tasUserId")),
        reader.date(QLatin1String("tasDate")), reader.string(QLatin1String("tasTitle")),
        reader.boolean(QLatin1String("tasIsDone"))};
}
