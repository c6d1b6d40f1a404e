#include "oauth/GIDEndpoints.h"

namespace {

QUrl endpoint(const char* variable, const char* google)
{
    const QString overridden = qEnvironmentVariable(variable).trimmed();
    return QUrl(overridden.isEmpty() ? QString::fromLatin1(google) : overridden);
}

} // namespace

GIDEndpoints GIDEndpoints::fromEnvironment()
{
    return {endpoint("TOLVANE_GOOGLE_AUTHORIZATION_ENDPOINT", "https://accounts.google.com/o/oauth2/v2/auth"),
        endpoint("TOLVANE_GOOGLE_TOKEN_ENDPOINT", "https://oauth2.googleapis.com/token")};
}
