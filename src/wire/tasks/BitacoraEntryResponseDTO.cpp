#include "wire/tasks/BitacoraEntryResponseDTO.h"

#include "wire/JSONObjectReader.h"

BitacoraEntryResponseDTO BitacoraEntryResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("bteId")), reader.string(QLatin1String("bteUserId")),
        reader.string(QLatin1String("prjId")), reader.date(QLatin1String("bteDate")),
        reader.string(QLatin1String("bteContent"))};
}

void BitacoraEntryResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("bteContent").string(bteContent);
    out.key("bteDate").date(bteDate);
    out.key("bteId").string(bteId);
    out.key("bteUserId").string(bteUserId);
    out.key("prjId").string(prjId);
    out.endObject();
}
