#include "wire/tasks/UpdateDailyTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateDailyTaskRequestDTO UpdateDailyTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasTitle")});
    return {reader.string(QLatin1String("tasTitle"))};
}

void UpdateDailyTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
