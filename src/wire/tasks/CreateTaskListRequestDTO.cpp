#include "wire/tasks/CreateTaskListRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateTaskListRequestDTO CreateTaskListRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("talId"), QLatin1String("prjId"), QLatin1String("talName"),
        QLatin1String("talDescription"), QLatin1String("talIsDefault")});
    CreateTaskListRequestDTO request {reader.string(QLatin1String("prjId")), reader.string(QLatin1String("talName")),
        reader.string(QLatin1String("talDescription")), reader.boolean(QLatin1String("talIsDefault"))};
    request.talId = reader.optionalString(QLatin1String("talId"));
    return request;
}

void CreateTaskListRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talDescription").string(talDescription);
    if (talId)
        out.key("talId").string(*talId);
    out.key("talIsDefault").boolean(talIsDefault);
    out.key("talName").string(talName);
    out.endObject();
}
