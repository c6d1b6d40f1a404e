#include "tasks/dto/ProjectResponseDTO.h"

#include "networking/JSONObjectReader.h"

ProjectResponseDTO ProjectResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("prjId")), reader.string(QLatin1String("prjUserId")),
        reader.string(QLatin1String("prjName")), reader.string(QLatin1String("prjDescription")),
        reader.boolean(QLatin1String("prjShowEveryDay"))};
}
