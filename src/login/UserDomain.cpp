#include "login/UserDomain.h"

#include "platform/Text.h"

namespace UserDomain {

LoginResultEntity validate(const UserEntity& user)
{
    if (Text::isBlank(user.usrFirstName))
        return LoginResultEntity::domainFailure(QStringLiteral("The first name cannot be empty"));
    if (Text::isBlank(user.usrLastName))
        return LoginResultEntity::domainFailure(QStringLiteral("The last name cannot be empty"));
    return LoginResultEntity::success();
}

} // namespace UserDomain
