#include "oauth/GIDEndpoints.h"

#include <QHostAddress>

namespace {

QString setting(const char* variable, const char* google)
{
    const QString overridden = qEnvironmentVariable(variable).trimmed();
    return overridden.isEmpty() ? QString::fromLatin1(google) : overridden;
}

} // namespace

GIDEndpoints GIDEndpoints::fromEnvironment()
{
    GIDEndpoints endpoints {
        QUrl(setting("TOLVANE_GOOGLE_AUTHORIZATION_ENDPOINT", "https://accounts.google.com/o/oauth2/v2/auth")),
        QUrl(setting("TOLVANE_GOOGLE_TOKEN_ENDPOINT", "https://oauth2.googleapis.com/token")),
        {setting("TOLVANE_GOOGLE_ISSUER", "https://accounts.google.com")},
        QUrl(setting("TOLVANE_GOOGLE_JWKS_URI", "https://www.googleapis.com/oauth2/v3/certs")),
    };
    // Google documents both forms of its issuer and still signs some tokens with the bare one.
    if (endpoints.issuers.first() == QLatin1String("https://accounts.google.com"))
        endpoints.issuers.append(QStringLiteral("accounts.google.com"));
    return endpoints;
}

bool GIDEndpoints::isTrustworthy(const QUrl& url)
{
    if (!url.isValid() || url.host().isEmpty())
        return false;
    if (url.scheme() == QLatin1String("https"))
        return true;
    const QHostAddress address(url.host());
    return url.scheme() == QLatin1String("http") && !address.isNull() && address.isLoopback();
}
