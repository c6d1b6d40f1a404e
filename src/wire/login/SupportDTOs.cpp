#include "wire/login/SupportDTOs.h"

#include "wire/JSONObjectReader.h"

SupportRequestDTO SupportRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("supMessage")});
    return {reader.string(QLatin1String("supMessage"))};
}

void SupportRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject().key("supMessage").string(supMessage).endObject();
}

SupportResponseDTO SupportResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("supId")), reader.string(QLatin1String("supUserId")),
        reader.string(QLatin1String("supType")), reader.date(QLatin1String("supDate")),
        reader.string(QLatin1String("supMessage"))};
}

void SupportResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("supDate").date(supDate);
    out.key("supId").string(supId);
    out.key("supMessage").string(supMessage);
    out.key("supType").string(supType);
    out.key("supUserId").string(supUserId);
    out.endObject();
}
