#include "support/identity/LocalIdentityProvider.h"

#include "platform/Clock.h"
#include "support/identity/RsaSigningKey.h"

#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMessageAuthenticationCode>
#include <QUrlQuery>
#include <QUuid>

namespace {

QByteArray base64Url(const QByteArray& bytes)
{
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QString randomToken()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

QHash<QString, QString> formOf(const QByteArray& body)
{
    QHash<QString, QString> form;
    const QUrlQuery query(QString::fromUtf8(body).replace(QLatin1Char('+'), QLatin1Char(' ')));
    for (const auto& [name, value] : query.queryItems(QUrl::FullyDecoded))
        form.insert(name, value);
    return form;
}

} // namespace

struct LocalIdentityProvider::Grant {
    QString clientID;
    QString redirectURI;
    QString challenge;
    Account account;
};

LocalIdentityProvider::LocalIdentityProvider(QString clientID, QString clientSecret, std::shared_ptr<const Clock> clock)
    : m_clientID(std::move(clientID))
    , m_clientSecret(std::move(clientSecret))
    , m_clock(std::move(clock))
    , m_key(std::make_unique<RsaSigningKey>(QStringLiteral("local-key-1")))
    , m_account {QStringLiteral("108234567890123456789"), QStringLiteral("ada@example.org"),
          QStringLiteral("Ada Lovelace"), QStringLiteral("Ada"), QStringLiteral("Lovelace")}
    , m_server(std::make_unique<HttpTestServer>([this](const RecordedRequest& request) { return answer(request); }))
{
}

LocalIdentityProvider::~LocalIdentityProvider()
{
    releaseTokenAnswers();
    m_server.reset();
}

GIDEndpoints LocalIdentityProvider::endpoints() const
{
    return {authorizationEndpoint(), tokenEndpoint(), {issuer()}, jwksURI()};
}

QUrl LocalIdentityProvider::jwksURI() const
{
    return QUrl(m_server->url().toString() + QStringLiteral("/oauth2/v3/certs"));
}

QUrl LocalIdentityProvider::discoveryURL() const
{
    return QUrl(m_server->url().toString() + QStringLiteral("/.well-known/openid-configuration"));
}

QString LocalIdentityProvider::issuer() const
{
    return m_server->url().toString();
}

void LocalIdentityProvider::setSigning(Signing signing)
{
    const QMutexLocker locker(&m_mutex);
    m_signing = signing;
}

void LocalIdentityProvider::rotateSigningKey()
{
    const int generation = [this] {
        const QMutexLocker locker(&m_mutex);
        return ++m_keyGeneration;
    }();
    // Made outside the lock: RSA key generation takes a while, and the provider keeps answering.
    auto key = std::make_unique<RsaSigningKey>(QStringLiteral("local-key-%1").arg(generation));
    const QMutexLocker locker(&m_mutex);
    m_key = std::move(key);
}

void LocalIdentityProvider::overrideClaims(const QJsonObject& claims)
{
    const QMutexLocker locker(&m_mutex);
    m_claimOverrides = claims;
}

void LocalIdentityProvider::holdTokenAnswers()
{
    const QMutexLocker locker(&m_mutex);
    m_holdingTokens = true;
}

void LocalIdentityProvider::releaseTokenAnswers()
{
    const QMutexLocker locker(&m_mutex);
    m_holdingTokens = false;
    m_tokenGate.wakeAll();
}

bool LocalIdentityProvider::waitForHeldTokenRequest(int milliseconds) const
{
    const QDeadlineTimer deadline(milliseconds);
    const QMutexLocker locker(&m_mutex);
    while (m_heldTokenRequests == 0) {
        if (!m_tokenGate.wait(&m_mutex, deadline))
            return m_heldTokenRequests > 0;
    }
    return true;
}

int LocalIdentityProvider::jwksFetches() const
{
    const QMutexLocker locker(&m_mutex);
    return m_jwksFetches;
}

QUrl LocalIdentityProvider::authorizationEndpoint() const
{
    return QUrl(m_server->url().toString() + QStringLiteral("/o/oauth2/auth"));
}

QUrl LocalIdentityProvider::tokenEndpoint() const
{
    return QUrl(m_server->url().toString() + QStringLiteral("/token"));
}

void LocalIdentityProvider::setAccount(Account account)
{
    const QMutexLocker locker(&m_mutex);
    m_account = std::move(account);
}

void LocalIdentityProvider::setIdTokenLifetime(qint64 seconds)
{
    const QMutexLocker locker(&m_mutex);
    m_lifetime = seconds;
}

void LocalIdentityProvider::denyNextAuthorization(const QString& error)
{
    const QMutexLocker locker(&m_mutex);
    m_denial = error;
}

void LocalIdentityProvider::forgeNextState()
{
    const QMutexLocker locker(&m_mutex);
    m_forgeState = true;
}

void LocalIdentityProvider::revokeRefreshTokens()
{
    const QMutexLocker locker(&m_mutex);
    m_refreshTokens.clear();
}

void LocalIdentityProvider::onIdTokenIssued(std::function<void(const QString&, const QString&)> callback)
{
    const QMutexLocker locker(&m_mutex);
    m_onIssued = std::move(callback);
}

int LocalIdentityProvider::codeExchanges() const
{
    const QMutexLocker locker(&m_mutex);
    return m_codeExchanges;
}

int LocalIdentityProvider::refreshes() const
{
    const QMutexLocker locker(&m_mutex);
    return m_refreshes;
}

QString LocalIdentityProvider::lastIdToken() const
{
    const QMutexLocker locker(&m_mutex);
    return m_lastIdToken;
}

QStringList LocalIdentityProvider::refreshTokens() const
{
    const QMutexLocker locker(&m_mutex);
    return m_refreshTokens.keys();
}

QString LocalIdentityProvider::lastTokenError() const
{
    const QMutexLocker locker(&m_mutex);
    return m_lastTokenError;
}

QString LocalIdentityProvider::signedToken(const QJsonObject& claims)
{
    QJsonObject header {{QStringLiteral("typ"), QStringLiteral("JWT")}};
    const RsaSigningKey* key = m_key.get();
    switch (m_signing) {
    case Signing::publishedKey:
        break;
    case Signing::unpublishedKey:
        if (!m_unpublishedKey)
            m_unpublishedKey = std::make_unique<RsaSigningKey>(QStringLiteral("unpublished-key"));
        key = m_unpublishedKey.get();
        break;
    case Signing::none:
        header.insert(QStringLiteral("alg"), QStringLiteral("none"));
        break;
    case Signing::hmacWithPublicKey:
        header.insert(QStringLiteral("alg"), QStringLiteral("HS256"));
        header.insert(QStringLiteral("kid"), m_key->keyID());
        break;
    }
    if (!header.contains(QStringLiteral("alg"))) {
        header.insert(QStringLiteral("alg"), QStringLiteral("RS256"));
        header.insert(QStringLiteral("kid"), key->keyID());
    }
    const QByteArray signingInput = base64Url(QJsonDocument(header).toJson(QJsonDocument::Compact)) + '.'
        + base64Url(QJsonDocument(claims).toJson(QJsonDocument::Compact));
    QByteArray signature;
    if (m_signing == Signing::hmacWithPublicKey) {
        const QByteArray secret = m_key->publicJwk().value(QStringLiteral("n")).toString().toLatin1();
        signature = QMessageAuthenticationCode::hash(signingInput, secret, QCryptographicHash::Sha256);
    } else if (m_signing != Signing::none) {
        signature = key->signRS256(signingInput);
    }
    return QString::fromLatin1(signingInput + '.' + base64Url(signature));
}

FakeResponse LocalIdentityProvider::answer(const RecordedRequest& request)
{
    if (request.method == "GET" && request.path == QLatin1String("/o/oauth2/auth"))
        return authorize(request);
    if (request.method == "POST" && request.path == QLatin1String("/token"))
        return token(request);
    if (request.method == "GET" && request.path == QLatin1String("/oauth2/v3/certs"))
        return jwks();
    if (request.method == "GET" && request.path == QLatin1String("/.well-known/openid-configuration"))
        return FakeResponse::json(200,
            QJsonObject {{QStringLiteral("issuer"), issuer()},
                {QStringLiteral("authorization_endpoint"), authorizationEndpoint().toString()},
                {QStringLiteral("token_endpoint"), tokenEndpoint().toString()},
                {QStringLiteral("jwks_uri"), jwksURI().toString()},
                {QStringLiteral("id_token_signing_alg_values_supported"), QJsonArray {QStringLiteral("RS256")}}});

    return FakeResponse::text(404, "no such endpoint");
}

FakeResponse LocalIdentityProvider::authorize(const RecordedRequest& request)
{
    QHash<QString, QString> query;
    for (const auto& [name, value] : request.queryItems())
        query.insert(name, value);
    const QMutexLocker locker(&m_mutex);
    const QUrl redirect(query.value(QStringLiteral("redirect_uri")));
    // Only loopback redirects are registered for a desktop client.
    if (query.value(QStringLiteral("client_id")) != m_clientID || redirect.host() != QLatin1String("127.0.0.1")
        || query.value(QStringLiteral("response_type")) != QLatin1String("code")
        || query.value(QStringLiteral("code_challenge_method")) != QLatin1String("S256")
        || query.value(QStringLiteral("code_challenge")).isEmpty())
        return FakeResponse::text(400, "invalid_request");

    QUrlQuery back;
    if (m_denial) {
        back.addQueryItem(QStringLiteral("error"), *m_denial);
        m_denial.reset();
    } else {
        const QString code = randomToken();
        m_codes.insert(code,
            std::make_shared<Grant>(
                Grant {m_clientID, redirect.toString(), query.value(QStringLiteral("code_challenge")), m_account}));
        back.addQueryItem(QStringLiteral("code"), code);
    }
    back.addQueryItem(
        QStringLiteral("state"), m_forgeState ? QStringLiteral("forged") : query.value(QStringLiteral("state")));
    m_forgeState = false;
    QUrl location = redirect;
    location.setQuery(back);
    FakeResponse response = FakeResponse::empty(302);
    response.headers.append({"Location", location.toEncoded()});
    return response;
}

FakeResponse LocalIdentityProvider::token(const RecordedRequest& request)
{
    const QHash<QString, QString> form = formOf(request.body);
    const QMutexLocker locker(&m_mutex);
    ++m_heldTokenRequests;
    m_tokenGate.wakeAll();
    while (m_holdingTokens)
        m_tokenGate.wait(&m_mutex);
    --m_heldTokenRequests;
    if (form.value(QStringLiteral("client_id")) != m_clientID
        || form.value(QStringLiteral("client_secret")) != m_clientSecret)
        return refuse(QStringLiteral("invalid_client"), QStringLiteral("Unknown client."));

    const QString grantType = form.value(QStringLiteral("grant_type"));
    if (grantType == QLatin1String("authorization_code")) {
        ++m_codeExchanges;
        // Codes are good for one exchange, whatever its outcome.
        const std::shared_ptr<Grant> grant = m_codes.take(form.value(QStringLiteral("code")));
        if (!grant)
            return refuse(QStringLiteral("invalid_grant"), QStringLiteral("Unknown or used code."));
        if (form.value(QStringLiteral("redirect_uri")) != grant->redirectURI)
            return refuse(QStringLiteral("invalid_grant"), QStringLiteral("Redirect URI mismatch."));
        const QByteArray verifier = form.value(QStringLiteral("code_verifier")).toLatin1();
        if (base64Url(QCryptographicHash::hash(verifier, QCryptographicHash::Sha256)) != grant->challenge.toLatin1())
            return refuse(QStringLiteral("invalid_grant"), QStringLiteral("Code verifier does not match."));
        return issue(grant->account, true);
    }
    if (grantType == QLatin1String("refresh_token")) {
        ++m_refreshes;
        const auto found = m_refreshTokens.constFind(form.value(QStringLiteral("refresh_token")));
        if (found == m_refreshTokens.constEnd())
            return refuse(QStringLiteral("invalid_grant"), QStringLiteral("Token has been expired or revoked."));
        return issue(found.value(), false);
    }
    return refuse(QStringLiteral("unsupported_grant_type"), grantType);
}

QString LocalIdentityProvider::idToken(const Account& account)
{
    const qint64 now = m_clock->now().toSecsSinceEpoch();
    QJsonObject claims {{QStringLiteral("iss"), issuer()}, {QStringLiteral("aud"), m_clientID},
        {QStringLiteral("sub"), account.subject}, {QStringLiteral("email"), account.email},
        {QStringLiteral("email_verified"), true}, {QStringLiteral("name"), account.name}, {QStringLiteral("iat"), now},
        {QStringLiteral("exp"), now + m_lifetime}, {QStringLiteral("jti"), randomToken()}};
    if (account.givenName)
        claims.insert(QStringLiteral("given_name"), *account.givenName);
    if (account.familyName)
        claims.insert(QStringLiteral("family_name"), *account.familyName);
    for (auto override = m_claimOverrides.begin(); override != m_claimOverrides.end(); ++override) {
        if (override->isNull())
            claims.remove(override.key());
        else
            claims.insert(override.key(), *override);
    }
    return signedToken(claims);
}

QString LocalIdentityProvider::idTokenFor(const Account& account)
{
    const QMutexLocker locker(&m_mutex);
    return idToken(account);
}

FakeResponse LocalIdentityProvider::issue(const Account& account, bool withRefreshToken)
{
    const QString idToken = this->idToken(account);
    m_lastIdToken = idToken;
    m_lastTokenError.clear();

    QJsonObject body {{QStringLiteral("access_token"), randomToken()}, {QStringLiteral("expires_in"), m_lifetime},
        {QStringLiteral("token_type"), QStringLiteral("Bearer")}, {QStringLiteral("id_token"), idToken},
        {QStringLiteral("scope"), QStringLiteral("openid email profile")}};
    if (withRefreshToken) {
        const QString refreshToken = randomToken();
        m_refreshTokens.insert(refreshToken, account);
        body.insert(QStringLiteral("refresh_token"), refreshToken);
    }
    if (m_onIssued)
        m_onIssued(idToken, account.subject);
    return FakeResponse::json(200, body);
}

FakeResponse LocalIdentityProvider::refuse(const QString& error, const QString& description)
{
    m_lastTokenError = error;
    return FakeResponse::json(
        400, QJsonObject {{QStringLiteral("error"), error}, {QStringLiteral("error_description"), description}});
}

FakeResponse LocalIdentityProvider::jwks()
{
    const QMutexLocker locker(&m_mutex);
    ++m_jwksFetches;
    return FakeResponse::json(200, QJsonObject {{QStringLiteral("keys"), QJsonArray {m_key->publicJwk()}}});
}
