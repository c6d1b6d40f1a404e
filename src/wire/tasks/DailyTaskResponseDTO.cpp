#include "wire/tasks/DailyTaskResponseDTO.h"

#include "wire/JSONObjectReader.h"

DailyTaskResponseDTO DailyTaskResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("tasId")), reader.string(QLatin1String("tasUserId")),
        reader.date(QLatin1String("tasDate")), reader.string(QLatin1String("tasTitle")),
        reader.boolean(QLatin1String("tasIsDone"))};
}

void DailyTaskResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("tasDate").date(tasDate);
    out.key("tasId").string(tasId);
    out.key("tasIsDone").boolean(tasIsDone);
    out.key("tasTitle").string(tasTitle);
    out.key("tasUserId").string(tasUserId);
    out.endObject();
}
