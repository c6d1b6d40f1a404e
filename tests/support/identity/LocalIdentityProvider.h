#pragma once

#include "support/http/HttpTestServer.h"

#include <QDateTime>
#include <QHash>
#include <QMutex>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

class Clock;

// An OpenID provider on loopback, strict where a real one is: the authorization endpoint redirects
// to the client's loopback URI with a one-time code and the client's state; the token endpoint
// checks client, redirect URI and the PKCE verifier against the S256 challenge before it issues an
// ID token (HS256, claims of the account below) and a refresh token; the refresh grant renews it.
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

    QUrl authorizationEndpoint() const;
    QUrl tokenEndpoint() const;

    // Who consents at the authorization endpoint from now on.
    void setAccount(Account account);
    void setIdTokenLifetime(qint64 seconds);
    // The next authorization redirects with "error=<error>" instead of a code.
    void denyNextAuthorization(const QString& error);
    // The next authorization redirects with a state that is not the client's.
    void forgeNextState();
    // Every refresh token issued so far stops working.
    void revokeRefreshTokens();

    // Called, on the provider's thread, with every ID token issued and its subject.
    void onIdTokenIssued(std::function<void(const QString& idToken, const QString& subject)> callback);

    int codeExchanges() const;
    int refreshes() const;
    QString lastIdToken() const;
    // The "error" of the last refused token request.
    QString lastTokenError() const;

    // An ID token as this provider signs them, for tests that build sessions by hand.
    static QString makeIdToken(const QJsonObject& claims);

private:
    struct Grant;
    FakeResponse answer(const RecordedRequest& request);
    FakeResponse authorize(const RecordedRequest& request);
    FakeResponse token(const RecordedRequest& request);
    FakeResponse issue(const Account& account, bool withRefreshToken);
    FakeResponse refuse(const QString& error, const QString& description);

    QString m_clientID;
    QString m_clientSecret;
    std::shared_ptr<const Clock> m_clock;
    mutable QMutex m_mutex;
    Account m_account;
    qint64 m_lifetime = 3600;
    std::optional<QString> m_denial;
    bool m_forgeState = false;
    QHash<QString, std::shared_ptr<Grant>> m_codes;
    QHash<QString, Account> m_refreshTokens;
    std::function<void(const QString&, const QString&)> m_onIssued;
    int m_codeExchanges = 0;
    int m_refreshes = 0;
    QString m_lastIdToken;
    QString m_lastTokenError;
    std::unique_ptr<HttpTestServer> m_server;
};
