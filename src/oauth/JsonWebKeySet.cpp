#include "oauth/JsonWebKeySet.h"

#include "oauth/GIDEndpoints.h"
#include "oauth/GIDSignInError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

DescribedError unreadable(const QString& why, int code = 0)
{
    return DescribedError(why, GIDSignInError::oauthDomain, code);
}

std::optional<QByteArray> base64UrlField(const QJsonObject& object, const char* name)
{
    const auto decoded = QByteArray::fromBase64Encoding(object.value(QLatin1String(name)).toString().toLatin1(),
        QByteArray::Base64UrlEncoding | QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded || decoded.decoded.isEmpty())
        return std::nullopt;
    return *decoded;
}

// Only what may sign an RS256 ID token: RSA keys for signatures, with an id to find them by.
std::optional<JsonWebKey> signingKey(const QJsonObject& entry)
{
    const auto text = [&](const char* name) { return entry.value(QLatin1String(name)).toString(); };
    if (text("kty") != QLatin1String("RSA") || text("kid").isEmpty())
        return std::nullopt;
    if (entry.contains(QLatin1String("use")) && text("use") != QLatin1String("sig"))
        return std::nullopt;
    if (entry.contains(QLatin1String("alg")) && text("alg") != QLatin1String("RS256"))
        return std::nullopt;
    const auto modulus = base64UrlField(entry, "n");
    const auto exponent = base64UrlField(entry, "e");
    if (!modulus || !exponent)
        return std::nullopt;
    return JsonWebKey {text("kid"), *modulus, *exponent};
}

} // namespace

JsonWebKeySet::JsonWebKeySet(UrlSession session, QUrl url)
    : m_session(session)
    , m_url(std::move(url))
{
}

std::optional<JsonWebKey> JsonWebKeySet::key(const QString& keyID)
{
    const QMutexLocker locker(&m_mutex);
    if (!m_keys || !m_keys->contains(keyID))
        m_keys = fetch();
    const auto found = m_keys->constFind(keyID);
    if (found == m_keys->constEnd())
        return std::nullopt;
    return *found;
}

QHash<QString, JsonWebKey> JsonWebKeySet::fetch() const
{
    if (!GIDEndpoints::isTrustworthy(m_url))
        throw unreadable(QStringLiteral("The provider's keys are not served over https."));
    UrlRequest request;
    request.url = m_url;
    request.httpMethod = "GET";
    request.setValue("Accept", "application/json");
    request.timeoutInterval = std::chrono::seconds(30);
    UrlResponse response;
    try {
        response = m_session.send(request);
    } catch (const UrlSessionError& error) {
        throw DescribedError(error.localizedDescription(), GIDSignInError::transportDomain, 0);
    }
    if (response.statusCode < 200 || response.statusCode > 299)
        throw unreadable(QStringLiteral("The provider's keys answered HTTP status %1.").arg(response.statusCode),
            response.statusCode);
    const QJsonValue entries = QJsonDocument::fromJson(response.body).object().value(QLatin1String("keys"));
    if (!entries.isArray())
        throw unreadable(QStringLiteral("The provider's keys cannot be read."), response.statusCode);
    QHash<QString, JsonWebKey> keys;
    for (const QJsonValue& entry : entries.toArray()) {
        if (auto key = signingKey(entry.toObject()))
            keys.insert(key->keyID, *key);
    }
    return keys;
}
