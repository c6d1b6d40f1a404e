#include "oauth/GIDSessionStore.h"

#include "oauth/GIDSignInError.h"
#include "platform/Keychain.h"

namespace {

std::shared_ptr<const DescribedError> keychainCause(int status)
{
    return std::make_shared<DescribedError>(
        QStringLiteral("The keyring answered status %1.").arg(status), GIDSignInError::keychainDomain, status);
}

} // namespace

GIDSessionStore::GIDSessionStore(std::shared_ptr<Keychain> keychain, QString clientID)
    : m_keychain(std::move(keychain))
    , m_account(std::move(clientID))
{
}

GIDSession GIDSessionStore::load() const
{
    const KeychainLookup lookup = m_keychain->copyMatching(service, m_account);
    if (lookup.status == KeychainStatus::itemNotFound)
        throw GIDSignInError::make(
            GIDSignInError::hasNoAuthInKeychain, QStringLiteral("No previous sign-in is stored."));
    if (lookup.status != KeychainStatus::success)
        throw GIDSignInError::make(GIDSignInError::keychain, QStringLiteral("The stored sign-in cannot be read."),
            keychainCause(lookup.status));
    const auto session = lookup.data ? GIDSession::fromJson(*lookup.data) : std::nullopt;
    if (!session)
        throw GIDSignInError::make(
            GIDSignInError::hasNoAuthInKeychain, QStringLiteral("The stored sign-in cannot be understood."));
    return *session;
}

void GIDSessionStore::save(const GIDSession& session) const
{
    // The keyring interface adds but does not replace.
    const int removed = m_keychain->remove(service, m_account);
    const int status = removed == KeychainStatus::success || removed == KeychainStatus::itemNotFound
        ? m_keychain->add(service, m_account, session.toJson())
        : removed;
    if (status != KeychainStatus::success)
        throw GIDSignInError::make(
            GIDSignInError::keychain, QStringLiteral("The sign-in cannot be stored."), keychainCause(status));
}

bool GIDSessionStore::remove() const
{
    const int status = m_keychain->remove(service, m_account);
    return status == KeychainStatus::success || status == KeychainStatus::itemNotFound;
}
