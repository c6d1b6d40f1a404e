#pragma once

#include "oauth/IDTokenClaims.h"

#include <QDateTime>
#include <QStringList>

#include <chrono>
#include <memory>

class JsonWebKeySet;

// Decides whether an ID token is one the provider issued to this client and that holds now: signed
// RS256 with a key the provider publishes, from the expected issuer, for this client (audience and,
// when named, authorized party), not expired, and not dated in the future beyond the clock skew
// tolerated between this machine and the provider.
class IDTokenVerifier {
public:
    IDTokenVerifier(std::shared_ptr<JsonWebKeySet> keys, QStringList issuers, QString clientID);

    // The token's claims; throws a GIDSignInError invalidIdToken saying what does not check out.
    IDTokenClaims verify(const QString& token, const QDateTime& now) const;

    static constexpr std::chrono::seconds clockSkew {std::chrono::minutes(5)};

private:
    void verifySignature(const QList<QByteArray>& parts) const;

    std::shared_ptr<JsonWebKeySet> m_keys;
    QStringList m_issuers;
    QString m_clientID;
};
