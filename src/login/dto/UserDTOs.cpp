#include "login/dto/UserDTOs.h"

#include "networking/JSONObjectReader.h"

#include <QJsonObject>

namespace {

QJsonValue names(const QString& first, const QString& last, const QString& email)
{
    return QJsonObject {{QStringLiteral("usrFirstName"), first}, {QStringLiteral("usrLastName"), last},
        {QStringLiteral("usrEmail"), email}};
}

} // namespace

QJsonValue CreateUserRequestDTO::toJson() const
{
    return names(usrFirstName, usrLastName, usrEmail);
}

QJsonValue UpdateUserRequestDTO::toJson() const
{
    return names(usrFirstName, usrLastName, usrEmail);
}

UserResponseDTO UserResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("usrId")), reader.string(QLatin1String("usrFirstName")),
        reader.string(QLatin1String("usrLastName")), reader.string(QLatin1String("usrEmail")),
        reader.boolean(QLatin1String("usrIsGoogleAccount"))};
}
