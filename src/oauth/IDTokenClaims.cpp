#include "oauth/IDTokenClaims.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

std::optional<QString> stringClaim(const QJsonObject& claims, const char* name)
{
    const QJsonValue value = claims.value(QLatin1String(name));
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

// A NumericDate claim (seconds since the epoch); invalid when absent or not a number.
QDateTime dateClaim(const QJsonObject& claims, const char* name)
{
    const QJsonValue value = claims.value(QLatin1String(name));
    return value.isDouble() ? QDateTime::fromSecsSinceEpoch(static_cast<qint64>(value.toDouble()), Qt::UTC)
                            : QDateTime();
}

} // namespace

std::optional<QByteArray> IDTokenClaims::decodeBase64Url(const QByteArray& part)
{
    const auto decoded
        = QByteArray::fromBase64Encoding(part, QByteArray::Base64UrlEncoding | QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return std::nullopt;
    return decoded.decoded;
}

std::optional<IDTokenClaims> IDTokenClaims::decode(const QString& token)
{
    const QList<QByteArray> parts = token.toLatin1().split('.');
    if (parts.size() != 3)
        return std::nullopt;
    const auto payload = decodeBase64Url(parts.at(1));
    if (!payload)
        return std::nullopt;
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(*payload, &error);
    if (error.error != QJsonParseError::NoError || !document.isObject())
        return std::nullopt;
    const QJsonObject claims = document.object();

    IDTokenClaims result;
    const auto subject = stringClaim(claims, "sub");
    result.expiration = dateClaim(claims, "exp");
    if (!subject || subject->isEmpty() || !result.expiration.isValid())
        return std::nullopt;
    result.subject = *subject;
    result.issuer = stringClaim(claims, "iss").value_or(QString());
    result.authorizedParty = stringClaim(claims, "azp");
    result.issuedAt = dateClaim(claims, "iat");
    result.notBefore = dateClaim(claims, "nbf");

    const QJsonValue audience = claims.value(QLatin1String("aud"));
    if (audience.isString())
        result.audience.append(audience.toString());
    for (const QJsonValue& entry : audience.toArray())
        result.audience.append(entry.toString());

    // Google leaves the profile claims out unless the "email" and "profile" scopes were granted.
    if (const auto email = stringClaim(claims, "email")) {
        result.profile = GIDProfileData {*email, stringClaim(claims, "name").value_or(QString()),
            stringClaim(claims, "given_name"), stringClaim(claims, "family_name")};
    }
    return result;
}
