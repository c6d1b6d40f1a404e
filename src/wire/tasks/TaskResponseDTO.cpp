#include "wire/tasks/TaskResponseDTO.h"

#include "wire/JSONObjectReader.h"

TaskResponseDTO TaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("tasId")), reader.string(QLatin1String("prjId")),
        reader.string(QLatin1String("talId")), reader.string(QLatin1String("tasTitle")),
        reader.boolean(QLatin1String("tasIsDone")), reader.optionalDate(QLatin1String("tasDueDate")),
        reader.optionalString(QLatin1String("tasEisenhowerTag"))};
}

void TaskResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talId").string(talId);
    out.key("tasDueDate").optionalDate(tasDueDate);
    out.key("tasEisenhowerTag").optionalString(tasEisenhowerTag);
    out.key("tasId").string(tasId);
    out.key("tasIsDone").boolean(tasIsDone);
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
