#include "wire/tasks/CreateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateTaskRequestDTO CreateTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasId"), QLatin1String("prjId"), QLatin1String("talId"),
        QLatin1String("tasTitle"), QLatin1String("tasDueDate"), QLatin1String("tasEisenhowerTag")});
    CreateTaskRequestDTO request {reader.string(QLatin1String("prjId")), reader.string(QLatin1String("talId")),
        reader.string(QLatin1String("tasTitle")), reader.optionalDate(QLatin1String("tasDueDate")),
        reader.optionalString(QLatin1String("tasEisenhowerTag"))};
    request.tasId = reader.optionalString(QLatin1String("tasId"));
    return request;
}

void CreateTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("prjId").string(prjId);
    out.key("talId").string(talId);
    if (tasDueDate)
        out.key("tasDueDate").date(*tasDueDate);
    if (tasEisenhowerTag)
        out.key("tasEisenhowerTag").string(*tasEisenhowerTag);
    if (tasId)
        out.key("tasId").string(*tasId);
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
