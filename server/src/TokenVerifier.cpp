#include "TokenVerifier.h"

#include "Log.h"
#include "oauth/IDTokenClaims.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace {

QJsonObject objectOf(const std::string& text)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
}

bool contains(const std::vector<std::string>& values, const QString& value)
{
    return std::find(values.begin(), values.end(), value.toStdString()) != values.end();
}

} // namespace

TokenVerifier::TokenVerifier(std::string discoveryUrl, std::vector<std::string> issuers,
    std::vector<std::string> clientIds, Fetch fetch, Monotonic monotonic)
    : m_discoveryUrl(std::move(discoveryUrl))
    , m_issuers(std::move(issuers))
    , m_clientIds(std::move(clientIds))
    , m_fetch(std::move(fetch))
    , m_monotonic(std::move(monotonic))
{
}

std::optional<std::string> TokenVerifier::subject(std::string_view token, std::chrono::system_clock::time_point now)
{
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch()).count();
    const std::string key(token);
    {
        const std::lock_guard lock(m_verifiedMutex);
        if (const auto found = m_verified.find(key); found != m_verified.end()) {
            // The time checks still apply on every use.
            if (found->second.expiresAt + skew.count() > seconds && found->second.issuedAt <= seconds + skew.count())
                return found->second.subject;
            m_verified.erase(found);
            return std::nullopt;
        }
    }
    auto subject = check(token, now);
    if (subject) {
        const auto claims = IDTokenClaims::decode(QString::fromLatin1(key.data(), qsizetype(key.size())));
        const std::lock_guard lock(m_verifiedMutex);
        // Bounded: past this many distinct tokens the oldest knowledge is simply dropped.
        if (m_verified.size() >= 100000)
            m_verified.clear();
        m_verified[key]
            = Verified {*subject, claims->expiration.toSecsSinceEpoch(), claims->issuedAt.toSecsSinceEpoch()};
    }
    return subject;
}

std::optional<std::string> TokenVerifier::check(std::string_view token, std::chrono::system_clock::time_point now)
{
    const auto refuse = [](const char* why) -> std::optional<std::string> {
        slog::debug(std::string("refused a bearer token: ") + why);
        return std::nullopt;
    };
    // Google's ID tokens are around a kilobyte; anything far larger is not one.
    if (token.size() > 16 * 1024)
        return refuse("too long");
    const QString text = QString::fromLatin1(token.data(), qsizetype(token.size()));
    const QList<QByteArray> parts = text.toLatin1().split('.');
    const auto claims = IDTokenClaims::decode(text);
    if (!claims || parts.size() != 3)
        return refuse("unreadable");
    const auto header = IDTokenClaims::decodeBase64Url(parts.at(0));
    const QJsonObject fields = header ? QJsonDocument::fromJson(*header).object() : QJsonObject();
    // The header never chooses the algorithm: "none" or HMAC keyed with the public key would let
    // anyone sign.
    if (fields.value(QLatin1String("alg")).toString() != QLatin1String("RS256"))
        return refuse("not RS256");
    const auto signature = IDTokenClaims::decodeBase64Url(parts.at(2));
    if (!signature)
        return refuse("unreadable signature");
    const auto publicKey = key(fields.value(QLatin1String("kid")).toString().toStdString(), m_monotonic());
    if (!publicKey)
        return refuse("unknown key");
    if (!publicKey->verifiesRS256(parts.at(0) + '.' + parts.at(1), *signature))
        return refuse("bad signature");
    if (!contains(m_issuers, claims->issuer))
        return refuse("other issuer");
    const bool forUs = std::any_of(claims->audience.begin(), claims->audience.end(),
        [this](const QString& audience) { return contains(m_clientIds, audience); });
    if (!forUs || (claims->authorizedParty && !contains(m_clientIds, *claims->authorizedParty)))
        return refuse("other audience");
    const qint64 seconds = std::chrono::duration_cast<std::chrono::seconds>(now.time_since_epoch()).count();
    if (claims->expiration.toSecsSinceEpoch() + skew.count() <= seconds)
        return refuse("expired");
    if (!claims->issuedAt.isValid() || claims->issuedAt.toSecsSinceEpoch() > seconds + skew.count())
        return refuse("issued in the future");
    if (claims->notBefore.isValid() && claims->notBefore.toSecsSinceEpoch() > seconds + skew.count())
        return refuse("not yet valid");
    return claims->subject.toStdString();
}

std::optional<JsonWebKey> TokenVerifier::key(const std::string& keyId, std::chrono::steady_clock::time_point now)
{
    const std::lock_guard lock(m_mutex);
    const auto lookup = [&]() -> std::optional<JsonWebKey> {
        if (!m_keys)
            return std::nullopt;
        const auto found = m_keys->find(keyId);
        return found == m_keys->end() ? std::nullopt : std::optional(found->second);
    };
    if (auto known = lookup())
        return known;
    if (m_keys && now - m_lastFetch < minimumRefetchInterval)
        return std::nullopt;
    try {
        m_keys = fetchKeys();
        m_lastFetch = now;
    } catch (const std::exception& error) {
        slog::warning(std::string("cannot fetch the identity provider's keys: ") + error.what());
        return std::nullopt;
    }
    return lookup();
}

std::map<std::string, JsonWebKey> TokenVerifier::fetchKeys()
{
    const QJsonObject discovery = objectOf(m_fetch(m_discoveryUrl));
    const std::string jwksUri = discovery.value(QLatin1String("jwks_uri")).toString().toStdString();
    if (jwksUri.empty())
        throw std::runtime_error("the discovery document names no jwks_uri");
    std::map<std::string, JsonWebKey> keys;
    for (const QJsonValue& entry : objectOf(m_fetch(jwksUri)).value(QLatin1String("keys")).toArray()) {
        const QJsonObject jwk = entry.toObject();
        if (jwk.value(QLatin1String("kty")).toString() != QLatin1String("RSA"))
            continue;
        const QString use = jwk.value(QLatin1String("use")).toString();
        if (!use.isEmpty() && use != QLatin1String("sig"))
            continue;
        const auto modulus = IDTokenClaims::decodeBase64Url(jwk.value(QLatin1String("n")).toString().toLatin1());
        const auto exponent = IDTokenClaims::decodeBase64Url(jwk.value(QLatin1String("e")).toString().toLatin1());
        const QString keyId = jwk.value(QLatin1String("kid")).toString();
        if (modulus && exponent && !keyId.isEmpty())
            keys[keyId.toStdString()] = JsonWebKey {keyId, *modulus, *exponent};
    }
    slog::info("fetched " + std::to_string(keys.size()) + " signing keys from the identity provider");
    return keys;
}
