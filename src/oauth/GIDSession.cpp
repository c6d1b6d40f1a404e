#include "oauth/GIDSession.h"

#include "oauth/GIDSignInError.h"
#include "oauth/IDTokenVerifier.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

QJsonValue optionalText(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

std::optional<QString> readOptionalText(const QJsonObject& object, const char* key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isString() ? std::optional<QString>(value.toString()) : std::nullopt;
}

QJsonValue date(const QDateTime& value)
{
    return value.isValid() ? QJsonValue(value.toSecsSinceEpoch()) : QJsonValue(QJsonValue::Null);
}

QDateTime readDate(const QJsonObject& object, const char* key)
{
    const QJsonValue value = object.value(QLatin1String(key));
    return value.isDouble() ? QDateTime::fromSecsSinceEpoch(static_cast<qint64>(value.toDouble()), Qt::UTC)
                            : QDateTime();
}

} // namespace

GIDSession GIDSession::fromTokenResponse(
    const GIDTokenResponse& response, const IDTokenVerifier& verifier, const QDateTime& now, const GIDSession* previous)
{
    if (response.idToken.isEmpty())
        throw GIDSignInError::make(
            GIDSignInError::invalidIdToken, QStringLiteral("The token endpoint sent no ID token."));
    const auto claims = verifier.verify(response.idToken, now);
    if (previous && previous->userID != claims.subject)
        throw GIDSignInError::make(
            GIDSignInError::invalidIdToken, QStringLiteral("The renewed ID token belongs to another user."));

    GIDSession session;
    session.userID = claims.subject;
    session.profile = claims.profile;
    if (!session.profile && previous)
        session.profile = previous->profile;
    session.idToken = {response.idToken, claims.expiration};
    // Whole seconds, as the ID token's own expiry and the stored session have them.
    const QDateTime expiry = QDateTime::fromSecsSinceEpoch(now.toSecsSinceEpoch() + response.expiresIn, Qt::UTC);
    session.accessToken = {response.accessToken, response.expiresIn > 0 ? expiry : QDateTime()};
    session.refreshToken = response.refreshToken;
    if (session.refreshToken.isEmpty() && previous)
        session.refreshToken = previous->refreshToken;
    return session;
}

QByteArray GIDSession::toJson() const
{
    QJsonObject object {
        {QStringLiteral("version"), 1},
        {QStringLiteral("userID"), userID},
        {QStringLiteral("idToken"), idToken.tokenString},
        {QStringLiteral("idTokenExpiration"), date(idToken.expirationDate)},
        {QStringLiteral("accessToken"), accessToken.tokenString},
        {QStringLiteral("accessTokenExpiration"), date(accessToken.expirationDate)},
        {QStringLiteral("refreshToken"), refreshToken},
    };
    if (profile) {
        object.insert(QStringLiteral("profile"),
            QJsonObject {{QStringLiteral("email"), profile->email}, {QStringLiteral("name"), profile->name},
                {QStringLiteral("givenName"), optionalText(profile->givenName)},
                {QStringLiteral("familyName"), optionalText(profile->familyName)}});
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

std::optional<GIDSession> GIDSession::fromJson(const QByteArray& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    if (object.value(QLatin1String("version")).toInt() != 1)
        return std::nullopt;

    GIDSession session;
    session.userID = object.value(QLatin1String("userID")).toString();
    session.idToken = {object.value(QLatin1String("idToken")).toString(), readDate(object, "idTokenExpiration")};
    session.accessToken
        = {object.value(QLatin1String("accessToken")).toString(), readDate(object, "accessTokenExpiration")};
    session.refreshToken = object.value(QLatin1String("refreshToken")).toString();
    if (session.userID.isEmpty() || session.idToken.tokenString.isEmpty())
        return std::nullopt;
    const QJsonValue profile = object.value(QLatin1String("profile"));
    if (profile.isObject()) {
        const QJsonObject fields = profile.toObject();
        session.profile = GIDProfileData {fields.value(QLatin1String("email")).toString(),
            fields.value(QLatin1String("name")).toString(), readOptionalText(fields, "givenName"),
            readOptionalText(fields, "familyName")};
    }
    return session;
}
