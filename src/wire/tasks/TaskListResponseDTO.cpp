#include "wire/tasks/TaskListResponseDTO.h"

#include "wire/JSONObjectReader.h"

TaskListResponseDTO TaskListResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("talId")), reader.string(QLatin1String("prjId")),
        reader.string(QLatin1String("talName")), reader.string(QLatin1String("talDescription")),
        reader.boolean(QLatin1String("talIsDefault"))};
}

void TaskListResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talDescription").string(talDescription);
    out.key("talId").string(talId);
    out.key("talIsDefault").boolean(talIsDefault);
    out.key("talName").string(talName);
    out.endObject();
}
