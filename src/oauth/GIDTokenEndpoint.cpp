#include "oauth/GIDTokenEndpoint.h"

#include "oauth/GIDEndpoints.h"
#include "oauth/GIDSignInError.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

constexpr qint64 maximumLifetimeSeconds = 24 * 60 * 60;

QByteArray formEncoded(const QList<std::pair<QString, QString>>& form)
{
    QByteArray body;
    for (const auto& [name, value] : form) {
        if (!body.isEmpty())
            body.append('&');
        body.append(QUrl::toPercentEncoding(name)).append('=').append(QUrl::toPercentEncoding(value));
    }
    return body;
}

// The provider's "error" and "error_description" (RFC 6749 5.2), or the status alone.
std::shared_ptr<const DescribedError> oauthCause(const UrlResponse& response)
{
    const QJsonObject object = QJsonDocument::fromJson(response.body).object();
    const QString error = object.value(QLatin1String("error")).toString();
    const QString details = object.value(QLatin1String("error_description")).toString();
    QString description = error.isEmpty() ? QStringLiteral("HTTP status %1").arg(response.statusCode) : error;
    if (!details.isEmpty())
        description += QStringLiteral(": ") + details;
    return std::make_shared<DescribedError>(description, GIDSignInError::oauthDomain, response.statusCode);
}

} // namespace

GIDTokenEndpoint::GIDTokenEndpoint(UrlSession session, QUrl url, GIDConfiguration configuration)
    : m_session(session)
    , m_url(std::move(url))
    , m_configuration(std::move(configuration))
{
}

GIDTokenResponse GIDTokenEndpoint::exchangeCode(
    const QString& code, const QByteArray& verifier, const QUrl& redirectURI) const
{
    return post(
        {
            {QStringLiteral("grant_type"), QStringLiteral("authorization_code")},
            {QStringLiteral("code"), code},
            {QStringLiteral("code_verifier"), QString::fromLatin1(verifier)},
            {QStringLiteral("redirect_uri"), redirectURI.toString(QUrl::FullyEncoded)},
        },
        GIDSignInError::tokenExchangeFailed, QStringLiteral("The authorization code could not be exchanged."));
}

GIDTokenResponse GIDTokenEndpoint::refresh(const QString& refreshToken) const
{
    return post(
        {
            {QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
            {QStringLiteral("refresh_token"), refreshToken},
        },
        GIDSignInError::refreshFailed, QStringLiteral("The tokens could not be refreshed."));
}

GIDTokenResponse GIDTokenEndpoint::post(
    QList<std::pair<QString, QString>> form, int failureCode, const QString& failure) const
{
    form.append({QStringLiteral("client_id"), m_configuration.clientID});
    if (!m_configuration.clientSecret.isEmpty())
        form.append({QStringLiteral("client_secret"), m_configuration.clientSecret});

    UrlRequest request;
    request.url = m_url;
    request.httpMethod = "POST";
    request.setValue("Content-Type", "application/x-www-form-urlencoded");
    request.setValue("Accept", "application/json");
    request.httpBody = formEncoded(form);
    request.timeoutInterval = std::chrono::seconds(30);

    const auto fail = [&](std::shared_ptr<const DescribedError> cause) {
        return GIDSignInError::make(static_cast<GIDSignInError::Code>(failureCode), failure, std::move(cause));
    };
    // The code, the verifier and the refresh token travel in this request: never in the clear
    // beyond this machine.
    if (!GIDEndpoints::isTrustworthy(m_url)) {
        throw fail(std::make_shared<DescribedError>(
            QStringLiteral("The token endpoint is not served over https."), GIDSignInError::transportDomain, 0));
    }
    UrlResponse response;
    try {
        response = m_session.send(request);
    } catch (const UrlSessionError& error) {
        throw fail(std::make_shared<DescribedError>(error.localizedDescription(), GIDSignInError::transportDomain, 0));
    }
    if (response.statusCode < 200 || response.statusCode > 299)
        throw fail(oauthCause(response));

    const QJsonObject object = QJsonDocument::fromJson(response.body).object();
    GIDTokenResponse tokens;
    tokens.accessToken = object.value(QLatin1String("access_token")).toString();
    // Providers give about an hour. Any number may arrive: one beyond a day only makes the client
    // refresh sooner, while one a 64-bit count cannot hold would overflow on the way to the expiry.
    const double expiresIn = object.value(QLatin1String("expires_in")).toDouble();
    tokens.expiresIn = expiresIn > 0 ? static_cast<qint64>(std::min(expiresIn, double(maximumLifetimeSeconds))) : 0;
    tokens.idToken = object.value(QLatin1String("id_token")).toString();
    tokens.refreshToken = object.value(QLatin1String("refresh_token")).toString();
    if (tokens.accessToken.isEmpty()) {
        throw fail(std::make_shared<DescribedError>(QStringLiteral("The token response carries no access token."),
            GIDSignInError::oauthDomain, response.statusCode));
    }
    return tokens;
}
