#include "wire/tasks/UpdateTaskListRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateTaskListRequestDTO UpdateTaskListRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("talName"), QLatin1String("talDescription"), QLatin1String("talIsDefault")});
    return {reader.string(QLatin1String("talName")), reader.string(QLatin1String("talDescription")),
        reader.boolean(QLatin1String("talIsDefault"))};
}

void UpdateTaskListRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("talDescription").string(talDescription);
    out.key("talIsDefault").boolean(talIsDefault);
    out.key("talName").string(talName);
    out.endObject();
}
