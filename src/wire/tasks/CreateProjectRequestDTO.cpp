#include "wire/tasks/CreateProjectRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateProjectRequestDTO CreateProjectRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("prjId"), QLatin1String("prjUserId"), QLatin1String("prjName"),
        QLatin1String("prjDescription"), QLatin1String("prjShowEveryDay")});
    CreateProjectRequestDTO request {reader.string(QLatin1String("prjUserId")), reader.string(QLatin1String("prjName")),
        reader.string(QLatin1String("prjDescription")), reader.boolean(QLatin1String("prjShowEveryDay"))};
    request.prjId = reader.optionalString(QLatin1String("prjId"));
    return request;
}

void CreateProjectRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjDescription").string(prjDescription);
    if (prjId)
        out.key("prjId").string(*prjId);
    out.key("prjName").string(prjName);
    out.key("prjShowEveryDay").boolean(prjShowEveryDay);
    out.key("prjUserId").string(prjUserId);
    out.endObject();
}
