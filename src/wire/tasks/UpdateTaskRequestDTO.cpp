#include "wire/tasks/UpdateTaskRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateTaskRequestDTO UpdateTaskRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("tasTitle"), QLatin1String("tasIsDone"), QLatin1String("tasDueDate"),
        QLatin1String("tasEisenhowerTag")});
    return {reader.string(QLatin1String("tasTitle")), reader.boolean(QLatin1String("tasIsDone")),
        reader.optionalDate(QLatin1String("tasDueDate")), reader.optionalString(QLatin1String("tasEisenhowerTag"))};
}

void UpdateTaskRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    if (tasDueDate)
        out.key("tasDueDate").date(*tasDueDate);
    if (tasEisenhowerTag)
        out.key("tasEisenhowerTag").string(*tasEisenhowerTag);
    out.key("tasIsDone").boolean(tasIsDone);
    out.key("tasTitle").string(tasTitle);
    out.endObject();
}
