#include "wire/tasks/DeleteCompletedTasksRequestDTO.h"

#include "wire/JSONObjectReader.h"

DeleteCompletedTasksRequestDTO DeleteCompletedTasksRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("confirm")});
    return {reader.boolean(QLatin1String("confirm"))};
}

void DeleteCompletedTasksRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("confirm").boolean(confirm);
    out.endObject();
}
