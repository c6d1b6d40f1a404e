#include "login/dto/SupportDTOs.h"

#include "networking/JSONObjectReader.h"

#include <QJsonObject>

QJsonValue SupportRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("supMessage"), supMessage}};
}

SupportResponseDTO SupportResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("supId")), reader.string(QLatin1String("supUserId")),
        reader.string(QLatin1String("supType")), reader.date(QLatin1String("supDate")),
        reader.string(QLatin1String("supMessage"))};
}
