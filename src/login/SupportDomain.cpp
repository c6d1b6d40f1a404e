#include "login/SupportDomain.h"

#include "platform/Text.h"

namespace SupportDomain {

LoginResultEntity validate(const QString& message)
{
    return LoginResultEntity::domainCheck(!Text::isBlank(message), QStringLiteral("The message cannot be empty"));
}

} // namespace SupportDomain
