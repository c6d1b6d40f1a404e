#include "login/UserEntity.h"

#include "wire/JSONObjectReader.h"

#include <QJsonObject>

QJsonValue UserEntity::toJson() const
{
    return QJsonObject {{QStringLiteral("usrId"), usrId}, {QStringLiteral("usrFirstName"), usrFirstName},
        {QStringLiteral("usrLastName"), usrLastName}, {QStringLiteral("usrEmail"), usrEmail},
        {QStringLiteral("usrIsGoogleAccount"), usrIsGoogleAccount}};
}

UserEntity UserEntity::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("usrId")), reader.string(QLatin1String("usrFirstName")),
        reader.string(QLatin1String("usrLastName")), reader.string(QLatin1String("usrEmail")),
        reader.boolean(QLatin1String("usrIsGoogleAccount"))};
}
