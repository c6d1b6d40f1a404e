#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateBitacoraEntryRequestDTO CreateBitacoraEntryRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys(
        {QLatin1String("bteId"), QLatin1String("prjId"), QLatin1String("bteDate"), QLatin1String("bteContent")});
    CreateBitacoraEntryRequestDTO request {reader.string(QLatin1String("prjId")), reader.date(QLatin1String("bteDate")),
        reader.string(QLatin1String("bteContent"))};
    request.bteId = reader.optionalString(QLatin1String("bteId"));
    return request;
}

void CreateBitacoraEntryRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("bteContent").string(bteContent);
    out.key("bteDate").date(bteDate);
    if (bteId)
        out.key("bteId").string(*bteId);
    out.key("prjId").string(prjId);
    out.endObject();
}
