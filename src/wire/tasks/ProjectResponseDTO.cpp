#include "wire/tasks/ProjectResponseDTO.h"

#include "wire/JSONObjectReader.h"

ProjectResponseDTO ProjectResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("prjId")), reader.string(QLatin1String("prjUserId")),
        reader.string(QLatin1String("prjName")), reader.string(QLatin1String("prjDescription")),
        reader.boolean(QLatin1String("prjShowEveryDay"))};
}

void ProjectResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjDescription").string(prjDescription);
    out.key("prjId").string(prjId);
    out.key("prjName").string(prjName);
    out.key("prjShowEveryDay").boolean(prjShowEveryDay);
    out.key("prjUserId").string(prjUserId);
    out.endObject();
}
