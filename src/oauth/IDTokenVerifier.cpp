#include "oauth/IDTokenVerifier.h"

#include "oauth/GIDSignInError.h"
#include "oauth/IDTokenClaims.h"
#include "oauth/JsonWebKeySet.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

DescribedError invalid(const QString& why, std::shared_ptr<const DescribedError> cause = {})
{
    return GIDSignInError::make(GIDSignInError::invalidIdToken, why, std::move(cause));
}

} // namespace

IDTokenVerifier::IDTokenVerifier(std::shared_ptr<JsonWebKeySet> keys, QStringList issuers, QString clientID)
    : m_keys(std::move(keys))
    , m_issuers(std::move(issuers))
    , m_clientID(std::move(clientID))
{
}

IDTokenClaims IDTokenVerifier::verify(const QString& token, const QDateTime& now) const
{
    const auto claims = IDTokenClaims::decode(token);
    if (!claims)
        throw invalid(QStringLiteral("The ID token cannot be read."));
    verifySignature(token.toLatin1().split('.'));
    if (!m_issuers.contains(claims->issuer))
        throw invalid(QStringLiteral("The ID token comes from another issuer."));
    if (!claims->audience.contains(m_clientID) || (claims->authorizedParty && *claims->authorizedParty != m_clientID))
        throw invalid(QStringLiteral("The ID token was issued to another client."));
    if (claims->expiration <= now)
        throw invalid(QStringLiteral("The ID token has expired."));
    const QDateTime latest = now.addSecs(clockSkew.count());
    if ((claims->issuedAt.isValid() && claims->issuedAt > latest)
        || (claims->notBefore.isValid() && claims->notBefore > latest))
        throw invalid(QStringLiteral("The ID token is not valid yet."));
    return *claims;
}

void IDTokenVerifier::verifySignature(const QList<QByteArray>& parts) const
{
    const auto header = IDTokenClaims::decodeBase64Url(parts.value(0));
    const QJsonObject fields = header ? QJsonDocument::fromJson(*header).object() : QJsonObject();
    // Only the algorithm Google signs with: "none" and the HMAC family would let whoever knows the
    // published key sign, so the header never gets to choose.
    if (fields.value(QLatin1String("alg")).toString() != QLatin1String("RS256"))
        throw invalid(QStringLiteral("The ID token is not signed with RS256."));
    const QString keyID = fields.value(QLatin1String("kid")).toString();
    std::optional<JsonWebKey> key;
    try {
        key = m_keys->key(keyID);
    } catch (const DescribedError& error) {
        throw invalid(
            QStringLiteral("The provider's signing keys cannot be fetched."), std::make_shared<DescribedError>(error));
    }
    if (!key)
        throw invalid(QStringLiteral("The ID token is signed with a key the provider does not publish."));
    const auto signature = IDTokenClaims::decodeBase64Url(parts.value(2));
    if (!signature || !key->verifiesRS256(parts.value(0) + '.' + parts.value(1), *signature))
        throw invalid(QStringLiteral("The ID token's signature does not verify."));
}
