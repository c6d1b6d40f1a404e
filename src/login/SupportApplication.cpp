#include "login/SupportApplication.h"

#include "login/SupportDomain.h"

LoginResultEntity SupportApplication::sendSupportMessage(const QString& message) const
{
    LoginResultEntity validation = SupportDomain::validate(message);
    if (!validation.result)
        return validation;
    return repository->sendSupportMessage(message.trimmed());
}
