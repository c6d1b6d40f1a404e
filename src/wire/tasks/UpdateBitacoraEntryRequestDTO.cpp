#include "wire/tasks/UpdateBitacoraEntryRequestDTO.h"

#include "wire/JSONObjectReader.h"

UpdateBitacoraEntryRequestDTO UpdateBitacoraEntryRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("bteContent")});
    return {reader.string(QLatin1String("bteContent"))};
}

void UpdateBitacoraEntryRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("bteContent").string(bteContent);
    out.endObject();
}
