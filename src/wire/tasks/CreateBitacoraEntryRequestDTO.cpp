#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"

#include "wire/JSONObjectReader.h"

CreateBitacoraEntryRequestDTO CreateBitacoraEntryRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("prjId"), QLatin1String("bteDate"), QLatin1String("bteContent")});
    return {reader.string(QLatin1String("prjId")), reader.date(QLatin1String("bteDate")),
        reader.string(QLatin1String("bteContent"))};
}

void CreateBitacoraEntryRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("bteContent").string(bteContent);
    out.key("bteDate").date(bteDate);
    out.key("prjId").string(prjId);
    out.endObject();
}
