#include "wire/login/UserDTOs.h"

#include "wire/JSONObjectReader.h"

UserProfileRequestDTO UserProfileRequestDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    reader.refuseOtherKeys({QLatin1String("usrFirstName"), QLatin1String("usrLastName"), QLatin1String("usrEmail")});
    return {reader.string(QLatin1String("usrFirstName")), reader.string(QLatin1String("usrLastName")),
        reader.string(QLatin1String("usrEmail"))};
}

void UserProfileRequestDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("usrEmail").string(usrEmail);
    out.key("usrFirstName").string(usrFirstName);
    out.key("usrLastName").string(usrLastName);
    out.endObject();
}

UserResponseDTO UserResponseDTO::fromJson(const QJsonValue& json)
{
    const JSONObjectReader reader(json);
    return {reader.string(QLatin1String("usrId")), reader.string(QLatin1String("usrFirstName")),
        reader.string(QLatin1String("usrLastName")), reader.string(QLatin1String("usrEmail")),
        reader.boolean(QLatin1String("usrIsGoogleAccount"))};
}

void UserResponseDTO::writeJson(JSONWriter& out) const
{
    out.beginObject();
    out.key("usrEmail").string(usrEmail);
    out.key("usrFirstName").string(usrFirstName);
    out.key("usrId").string(usrId);
    out.key("usrIsGoogleAccount").boolean(usrIsGoogleAccount);
    out.key("usrLastName").string(usrLastName);
    out.endObject();
}
