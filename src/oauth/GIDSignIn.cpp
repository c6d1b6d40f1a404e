#include "oauth/GIDSignIn.h"

#include "oauth/DesktopBrowserOpener.h"
#include "oauth/GIDSignInError.h"
#include "oauth/IDTokenVerifier.h"
#include "oauth/JsonWebKeySet.h"
#include "oauth/LoopbackRedirectListener.h"
#include "oauth/PKCE.h"
#include "platform/Logging.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemClock.h"
#include "platform/SystemSecureRandom.h"

#include <QScopeGuard>
#include <QUrlQuery>

namespace {

const QString scopes = QStringLiteral("openid email profile");

DescribedError notConfigured()
{
    return GIDSignInError::make(GIDSignInError::notConfigured, QStringLiteral("Google sign-in is not configured."));
}

QUrl authorizationURL(const QUrl& endpoint, const GIDConfiguration& configuration, const QUrl& redirectURI,
    const QByteArray& challenge, const QByteArray& state)
{
    QUrlQuery query(endpoint);
    query.addQueryItem(QStringLiteral("client_id"), configuration.clientID);
    query.addQueryItem(QStringLiteral("redirect_uri"), redirectURI.toString());
    query.addQueryItem(QStringLiteral("response_type"), QStringLiteral("code"));
    query.addQueryItem(QStringLiteral("scope"), scopes);
    query.addQueryItem(QStringLiteral("code_challenge"), QString::fromLatin1(challenge));
    query.addQueryItem(QStringLiteral("code_challenge_method"), QStringLiteral("S256"));
    query.addQueryItem(QStringLiteral("state"), QString::fromLatin1(state));
    QUrl url = endpoint;
    // QUrlQuery leaves '+' alone, which the provider would read as a space.
    QString encoded = query.toString(QUrl::FullyEncoded);
    encoded.replace(QLatin1Char('+'), QLatin1String("%2B"));
    url.setQuery(encoded, QUrl::StrictMode);
    return url;
}

QString queryValue(const QUrlQuery& query, const char* name)
{
    return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
}

// The provider's "error" redirect parameter (RFC 6749 4.1.2.1) as a sign-in error.
DescribedError authorizationError(const QUrlQuery& query)
{
    const QString error = queryValue(query, "error");
    QString description = error;
    const QString details = queryValue(query, "error_description");
    if (!details.isEmpty())
        description += QStringLiteral(": ") + details;
    auto cause = std::make_shared<DescribedError>(description, GIDSignInError::oauthDomain, 0);
    if (error == QLatin1String("access_denied"))
        return GIDSignInError::make(
            GIDSignInError::canceled, QStringLiteral("The user canceled the sign-in flow."), std::move(cause));
    return GIDSignInError::make(
        GIDSignInError::authorizationFailed, QStringLiteral("The sign-in was refused."), std::move(cause));
}

} // namespace

GIDSignInServices GIDSignInServices::live()
{
    return {std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(),
        std::make_shared<SystemClock>(), std::make_shared<DesktopBrowserOpener>(), UrlSession::shared(),
        GIDEndpoints::fromEnvironment()};
}

GIDSignIn& GIDSignIn::sharedInstance()
{
    static GIDSignIn instance(GIDSignInServices::live());
    return instance;
}

GIDSignIn::GIDSignIn(GIDSignInServices services)
    : m_services(std::move(services))
    , m_keys(std::make_shared<JsonWebKeySet>(m_services.http, m_services.endpoints.jwks))
{
}

GIDSignIn::~GIDSignIn() = default;

std::optional<GIDConfiguration> GIDSignIn::configuration() const
{
    const QMutexLocker locker(&m_mutex);
    return m_configuration;
}

void GIDSignIn::setConfiguration(std::optional<GIDConfiguration> configuration)
{
    const QMutexLocker locker(&m_mutex);
    m_configuration = std::move(configuration);
}

std::shared_ptr<GIDGoogleUser> GIDSignIn::currentUser() const
{
    const QMutexLocker locker(&m_mutex);
    return m_currentUser;
}

void GIDSignIn::setRedirectTimeLimit(std::chrono::milliseconds limit)
{
    const QMutexLocker locker(&m_mutex);
    m_redirectTimeLimit = limit;
}

IDTokenVerifier GIDSignIn::idTokenVerifier(const GIDConfiguration& configuration) const
{
    return IDTokenVerifier(m_keys, m_services.endpoints.issuers, configuration.clientID);
}

std::shared_ptr<GIDGoogleUser> GIDSignIn::makeUser(
    GIDSession session, const GIDConfiguration& configuration, GIDSignInEpoch::Epoch epoch) const
{
    return std::make_shared<GIDGoogleUser>(std::move(session),
        GIDTokenEndpoint(m_services.http, m_services.endpoints.token, configuration), idTokenVerifier(configuration),
        m_services.clock, GIDSessionStore(m_services.keychain, configuration.clientID), m_epochs, epoch);
}

bool GIDSignIn::adopt(
    GIDSignInEpoch::Epoch epoch, std::shared_ptr<GIDGoogleUser> user, const std::function<void()>& keep)
{
    return m_epochs->whileCurrent(epoch, [&] {
        keep();
        const QMutexLocker locker(&m_mutex);
        m_currentUser = std::move(user);
    });
}

std::shared_ptr<GIDGoogleUser> GIDSignIn::signIn(QObject* presentingWindow)
{
    Q_UNUSED(presentingWindow);
    const GIDSignInEpoch::Epoch epoch = m_epochs->current();
    LoopbackRedirectListener listener;
    std::optional<GIDConfiguration> configuration;
    std::chrono::milliseconds timeLimit;
    {
        const QMutexLocker locker(&m_mutex);
        if (!m_configuration)
            throw notConfigured();
        if (m_attempt)
            throw GIDSignInError::make(
                GIDSignInError::alreadyInProgress, QStringLiteral("A sign-in is already in progress."));
        configuration = m_configuration;
        timeLimit = m_redirectTimeLimit;
        m_attempt = &listener;
    }
    const auto endAttempt = qScopeGuard([this] {
        const QMutexLocker locker(&m_mutex);
        m_attempt = nullptr;
    });

    const QByteArray verifier = PKCE::makeVerifier(*m_services.random);
    const QByteArray state = PKCE::makeState(*m_services.random);
    if (verifier.isEmpty() || state.isEmpty())
        throw GIDSignInError::make(GIDSignInError::unknown, QStringLiteral("No secure random bytes are available."));

    QString listenError;
    if (!listener.listen(&listenError)) {
        throw GIDSignInError::make(GIDSignInError::listenerFailed,
            QStringLiteral("The sign-in cannot receive the browser's answer."),
            std::make_shared<DescribedError>(listenError, GIDSignInError::transportDomain, 0));
    }
    const QUrl redirectURI = listener.redirectURI();
    const QUrl url = authorizationURL(
        m_services.endpoints.authorization, *configuration, redirectURI, PKCE::challenge(verifier), state);
    if (!m_services.browser->open(url))
        throw GIDSignInError::make(
            GIDSignInError::browserUnavailable, QStringLiteral("No web browser could be opened."));

    switch (listener.waitForRedirect(timeLimit)) {
    case LoopbackRedirectListener::Outcome::received:
        break;
    case LoopbackRedirectListener::Outcome::timedOut:
        throw GIDSignInError::make(GIDSignInError::timedOut, QStringLiteral("The browser did not come back in time."));
    case LoopbackRedirectListener::Outcome::canceled:
        throw GIDSignInError::make(GIDSignInError::canceled, QStringLiteral("The user canceled the sign-in flow."));
    }

    const QUrlQuery query(listener.redirectURL());
    // Checked first: a redirect that does not carry our state was not caused by this attempt, and
    // nothing in it (not even an error) is to be believed.
    if (queryValue(query, "state") != QString::fromLatin1(state)) {
        listener.finish(false, QStringLiteral("This answer does not belong to the sign-in in progress."));
        throw GIDSignInError::make(
            GIDSignInError::stateMismatch, QStringLiteral("The browser's answer does not match the sign-in request."));
    }
    if (query.hasQueryItem(QStringLiteral("error"))) {
        const DescribedError error = authorizationError(query);
        listener.finish(false, error.localizedDescription() + QStringLiteral(" You can close this page."));
        throw error;
    }
    const QString code = queryValue(query, "code");
    if (code.isEmpty()) {
        listener.finish(false, QStringLiteral("The answer carries no authorization code."));
        throw GIDSignInError::make(
            GIDSignInError::authorizationFailed, QStringLiteral("The browser's answer carries no authorization code."));
    }

    GIDSession session;
    try {
        const GIDTokenEndpoint endpoint(m_services.http, m_services.endpoints.token, *configuration);
        session = GIDSession::fromTokenResponse(endpoint.exchangeCode(code, verifier, redirectURI),
            idTokenVerifier(*configuration), m_services.clock->now());
    } catch (const DescribedError& error) {
        listener.finish(false, error.localizedDescription() + QStringLiteral(" Please try again in Tolvane."));
        throw;
    }
    listener.finish(true, QStringLiteral("You can close this page and go back to Tolvane."));

    auto user = makeUser(session, *configuration, epoch);
    const bool adopted = adopt(epoch, user, [&] {
        try {
            GIDSessionStore(m_services.keychain, configuration->clientID).save(session);
        } catch (const DescribedError& error) {
            // Signed in for this run all the same; the next start asks again.
            qCWarning(lcLogin) << "sign-in not stored:" << error.localizedDescription();
        }
    });
    if (!adopted)
        throw GIDSignInError::make(
            GIDSignInError::signedOut, QStringLiteral("The user signed out during the sign-in."));
    return user;
}

void GIDSignIn::cancelSignIn()
{
    const QMutexLocker locker(&m_mutex);
    if (m_attempt)
        m_attempt->cancel();
}

std::shared_ptr<GIDGoogleUser> GIDSignIn::restorePreviousSignIn()
{
    const auto configuration = this->configuration();
    if (!configuration)
        throw notConfigured();
    const GIDSignInEpoch::Epoch epoch = m_epochs->current();
    auto user = makeUser(GIDSessionStore(m_services.keychain, configuration->clientID).load(), *configuration, epoch);
    if (!adopt(epoch, user, [] {}))
        throw GIDSignInError::make(
            GIDSignInError::signedOut, QStringLiteral("The user signed out during the restore."));
    return user;
}

bool GIDSignIn::handle(const QUrl& url)
{
    Q_UNUSED(url);
    return false;
}

void GIDSignIn::signOut()
{
    m_epochs->end([this] {
        std::optional<GIDConfiguration> configuration;
        {
            const QMutexLocker locker(&m_mutex);
            m_currentUser.reset();
            configuration = m_configuration;
        }
        if (configuration && !GIDSessionStore(m_services.keychain, configuration->clientID).remove())
            qCWarning(lcLogin) << "the stored sign-in could not be deleted from the keyring";
    });
}
