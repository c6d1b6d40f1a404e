#include "oauth/GIDGoogleUser.h"

#include "oauth/GIDSignInError.h"
#include "platform/Clock.h"
#include "platform/Logging.h"

namespace {

bool expiresBefore(const GIDToken& token, const QDateTime& limit)
{
    return token.expirationDate.isValid() && token.expirationDate <= limit;
}

DescribedError signedOut()
{
    return GIDSignInError::make(GIDSignInError::signedOut, QStringLiteral("The user has signed out."));
}

} // namespace

GIDGoogleUser::GIDGoogleUser(GIDSession session, GIDTokenEndpoint endpoint, IDTokenVerifier verifier,
    std::shared_ptr<const Clock> clock, GIDSessionStore store, std::shared_ptr<GIDSignInEpoch> epochs,
    GIDSignInEpoch::Epoch epoch)
    : m_session(std::move(session))
    , m_endpoint(std::move(endpoint))
    , m_verifier(std::move(verifier))
    , m_clock(std::move(clock))
    , m_store(std::move(store))
    , m_epochs(std::move(epochs))
    , m_epoch(epoch)
{
}

QString GIDGoogleUser::userID() const
{
    const QMutexLocker locker(&m_mutex);
    return m_session.userID;
}

std::optional<GIDProfileData> GIDGoogleUser::profile() const
{
    const QMutexLocker locker(&m_mutex);
    return m_session.profile;
}

std::optional<GIDToken> GIDGoogleUser::idToken() const
{
    const QMutexLocker locker(&m_mutex);
    if (m_session.idToken.tokenString.isEmpty())
        return std::nullopt;
    return m_session.idToken;
}

GIDToken GIDGoogleUser::accessToken() const
{
    const QMutexLocker locker(&m_mutex);
    return m_session.accessToken;
}

GIDSession GIDGoogleUser::session() const
{
    const QMutexLocker locker(&m_mutex);
    return m_session;
}

void GIDGoogleUser::refreshTokensIfNeeded()
{
    // Held across the network exchange on purpose: requests that need a token meanwhile wait for
    // this refresh instead of spending the refresh token a second time.
    const QMutexLocker locker(&m_mutex);
    if (m_epochs->current() != m_epoch)
        throw signedOut();
    const QDateTime now = m_clock->now();
    const QDateTime limit = now.addSecs(refreshMarginSeconds);
    if (!expiresBefore(m_session.idToken, limit) && !expiresBefore(m_session.accessToken, limit))
        return;
    if (m_session.refreshToken.isEmpty())
        throw GIDSignInError::make(
            GIDSignInError::refreshFailed, QStringLiteral("The session expired and cannot be renewed."));

    GIDSession renewed
        = GIDSession::fromTokenResponse(m_endpoint.refresh(m_session.refreshToken), m_verifier, now, &m_session);
    const bool kept = m_epochs->whileCurrent(m_epoch, [&] {
        m_session = std::move(renewed);
        try {
            m_store.save(m_session);
        } catch (const DescribedError& error) {
            // The renewed tokens still serve this run; the next start refreshes again.
            qCWarning(lcLogin) << "renewed sign-in not stored:" << error.localizedDescription();
        }
    });
    if (!kept)
        throw signedOut();
}
