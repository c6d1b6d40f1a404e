#include "wire/tasks/UpdateProjectRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateProjectRequestDTO UpdateProjectRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys(
        {QLatin1String("prjName"), QLatin1String("prjDescription"), QLatin1String("prjShowEveryDay")});
    return {reader.string(QLatin1String("prjName")), reader.string(QLatin1String("prjDescription")),
        reader.boolean(QLatin1String("prjShowEveryDay"))};
}

void UpdateProjectRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjDescription").string(prjDescription);
    out.key("prjName").string(prjName);
    out.key("prjShowEveryDay").boolean(prjShowEveryDay);
    out.endObject();
}
