#include "wire/tasks/CreateDailyTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateDailyTaskRequestDTO CreateDailyTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasUserId"), QLatin1String("tasDate"), QLatin1String("tasTitle")});
    return {reader.string(QLatin1String("tasUserId")), reader.date(QLatin1String("tasDate")),
        reader.string(QLatin1String("tasTitle"))};
}

void CreateDailyTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("tasDate").date(tasDate);
    out.key("tasTitle").string(tasTitle);
    out.key("tasUserId").string(tasUserId);
    out.endObject();
}
