#pragma once

#include "oauth/GIDEndpoints.h"
#include "support/http/HttpTestServer.h"

#include <QDateTime>
#include <QHash>
#include <QJsonObject>
#include <QMutex>
#include <QStringList>
#include <QUrl>
#include <QWaitCondition>

#include <functional>
#include <memory>
#include <optional>

class Clock;
class RsaSigningKey;

// An OpenID provider on loopback, strict where a real one is: the authorization endpoint redirects
// to the client's loopback URI with a one-time code and the client's state; the token endpoint
// checks client, redirect URI and the PKCE verifier against the S256 challenge before it issues an
// ID token (RS256 with a key made for this run, claims of the account below) and a refresh token;
// the refresh grant renews it. Publishes its signing keys (JWKS).
class LocalIdentityProvider {
public:
    struct Account {
        QString subject;
        QString email;
        QString name;
        std::optional<QString> givenName;
        std::optional<QString> familyName;
    };

    // Expiry is counted from clock's now, the same clock the client under test reads.
    LocalIdentityProvider(QString clientID, QString clientSecret, std::shared_ptr<const Clock> clock);
    ~LocalIdentityProvider();

    // How to configure a client for this provider: its endpoints, issuer and keys.
    GIDEndpoints endpoints() const;
    QUrl authorizationEndpoint() const;
    QUrl tokenEndpoint() const;
    QUrl jwksURI() const;
    // The OpenID discovery document, which names the JWKS; what a relying party is configured with.
    QUrl discoveryURL() const;
    // "http://127.0.0.1:<port>", what its tokens carry as "iss" unless told otherwise.
    QString issuer() const;

    // How the ID tokens issued from now on are signed.
    enum class Signing {
        publishedKey, // RS256 with the key the JWKS publishes
        unpublishedKey, // RS256 with a key of its own, under a key id the JWKS does not list
        none, // "alg":"none" and no signature
        hmacWithPublicKey, // HS256 keyed with the published key's modulus: the algorithm confusion attack
    };
    void setSigning(Signing signing);
    // Replaces the signing key by a new one under a new key id; the JWKS lists only the new one.
    void rotateSigningKey();
    // Claims to put into every ID token issued from now on, over the usual ones; a null value
    // leaves that claim out.
    void overrideClaims(const QJsonObject& claims);

    // Who consents at the authorization endpoint from now on.
    void setAccount(Account account);
    void setIdTokenLifetime(qint64 seconds);
    // An ID token for account as the token endpoint would issue it after a sign-in (same claims,
    // overrides and signing), for tests of a relying party that do not need the browser flow.
    QString idTokenFor(const Account& account);
    // The next authorization redirects with "error=<error>" instead of a code.
    void denyNextAuthorization(const QString& error);
    // The next authorization redirects with a state that is not the client's.
    void forgeNextState();
    // Every refresh token issued so far stops working.
    void revokeRefreshTokens();

    // A slow token endpoint: from holdTokenAnswers() on, token requests wait for
    // releaseTokenAnswers() before they are answered.
    void holdTokenAnswers();
    void releaseTokenAnswers();
    // Waits until a token request is being held; false when none came in time.
    bool waitForHeldTokenRequest(int milliseconds = 30000) const;

    // Called, on the provider's thread, with every ID token issued and its subject.
    void onIdTokenIssued(std::function<void(const QString& idToken, const QString& subject)> callback);

    int codeExchanges() const;
    int refreshes() const;
    int jwksFetches() const;
    QString lastIdToken() const;
    // Every refresh token issued and not revoked.
    QStringList refreshTokens() const;
    // The "error" of the last refused token request.
    QString lastTokenError() const;

private:
    struct Grant;
    FakeResponse answer(const RecordedRequest& request);
    FakeResponse authorize(const RecordedRequest& request);
    FakeResponse token(const RecordedRequest& request);
    FakeResponse issue(const Account& account, bool withRefreshToken);
    // Called with m_mutex held.
    QString idToken(const Account& account);
    FakeResponse refuse(const QString& error, const QString& description);
    FakeResponse jwks();
    QString signedToken(const QJsonObject& claims);

    QString m_clientID;
    QString m_clientSecret;
    std::shared_ptr<const Clock> m_clock;
    mutable QMutex m_mutex;
    mutable QWaitCondition m_tokenGate;
    bool m_holdingTokens = false;
    int m_heldTokenRequests = 0;
    std::unique_ptr<RsaSigningKey> m_key;
    std::unique_ptr<RsaSigningKey> m_unpublishedKey;
    int m_keyGeneration = 1;
    Signing m_signing = Signing::publishedKey;
    QJsonObject m_claimOverrides;
    Account m_account;
    qint64 m_lifetime = 3600;
    std::optional<QString> m_denial;
    bool m_forgeState = false;
    QHash<QString, std::shared_ptr<Grant>> m_codes;
    QHash<QString, Account> m_refreshTokens;
    std::function<void(const QString&, const QString&)> m_onIssued;
    int m_codeExchanges = 0;
    int m_refreshes = 0;
    int m_jwksFetches = 0;
    QString m_lastIdToken;
    QString m_lastTokenError;
    std::unique_ptr<HttpTestServer> m_server;
};
