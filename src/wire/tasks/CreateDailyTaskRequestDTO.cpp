#include "wire/tasks/CreateDailyTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateDailyTaskRequestDTO CreateDailyTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys(
        {QLatin1String("tasId"), QLatin1String("tasUserId"), QLatin1String("tasDate"), QLatin1String("tasTitle")});
    CreateDailyTaskRequestDTO request {reader.string(QLatin1String("tasUserId")), reader.date(QLatin1String("tasDate")),
        reader.string(QLatin1String("tasTitle"))};
    request.tasId = reader.optionalString(QLatin1String("tasId"));
    return request;
}

void CreateDailyTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("tasDate").date(tasDate);
    if (tasId)
        out.key("tasId").string(*tasId);
    out.key("tasTitle").string(tasTitle);
    out.key("tasUserId").string(tasUserId);
    out.endObject();
}
