#pragma once

#include "networking/UrlSession.h"
#include "oauth/BrowserOpener.h"
#include "oauth/GIDConfiguration.h"
#include "oauth/GIDEndpoints.h"
#include "oauth/GIDGoogleUser.h"
#include "oauth/GIDSignInEpoch.h"

#include <QMutex>
#include <QObject>

#include <chrono>
#include <memory>
#include <optional>

class Clock;
class IDTokenVerifier;
class JsonWebKeySet;
class Keychain;
class LoopbackRedirectListener;
class SecureRandom;

// What the sign-in client works with; tests swap each one.
struct GIDSignInServices {
    std::shared_ptr<Keychain> keychain;
    std::shared_ptr<SecureRandom> random;
    std::shared_ptr<const Clock> clock;
    std::shared_ptr<BrowserOpener> browser;
    UrlSession http = UrlSession::shared();
    GIDEndpoints endpoints;

    // The login keyring, the kernel's random bytes, the system clock, the user's browser, and
    // Google's endpoints unless the environment names others.
    static GIDSignInServices live();
};

// Google sign-in for an installed application: the OAuth 2.0 authorization code flow with PKCE
// in the user's own browser, redirected back to a loopback listener (RFC 8252), with the session
// kept in the keyring so it survives restarts.
//
// Every call is synchronous and may block on the network or on the user, so run it off the GUI
// thread. Failures are thrown as DescribedError in GIDSignInError::domain.
class GIDSignIn {
public:
    // The one instance the application composes with, over the live services.
    static GIDSignIn& sharedInstance();

    explicit GIDSignIn(GIDSignInServices services);
    ~GIDSignIn();

    std::optional<GIDConfiguration> configuration() const;
    void setConfiguration(std::optional<GIDConfiguration> configuration);

    // The signed-in user, or nullptr.
    std::shared_ptr<GIDGoogleUser> currentUser() const;

    // Opens the authorization page in the browser and waits, at most redirectTimeLimit, for the
    // browser to come back; the user denying access, cancelSignIn() and the time limit are errors
    // (GIDSignInError::canceled, canceled, timedOut). The presenting window is where the request
    // came from; the page itself opens in the browser.
    std::shared_ptr<GIDGoogleUser> signIn(QObject* presentingWindow = nullptr);
    // Ends a sign-in in progress with GIDSignInError::canceled. Thread-safe.
    void cancelSignIn();

    // Brings back the session stored by an earlier sign-in; throws hasNoAuthInKeychain when there
    // is none.
    std::shared_ptr<GIDGoogleUser> restorePreviousSignIn();

    // Always false: the redirect reaches the loopback listener directly, no URL is handed over.
    bool handle(const QUrl& url);

    // Forgets the current user and deletes the stored session. Final: a sign-in, restore or token
    // refresh still under way fails and stores nothing.
    void signOut();

    static constexpr std::chrono::minutes defaultRedirectTimeLimit {5};
    void setRedirectTimeLimit(std::chrono::milliseconds limit);

private:
    IDTokenVerifier idTokenVerifier(const GIDConfiguration& configuration) const;
    std::shared_ptr<GIDGoogleUser> makeUser(
        GIDSession session, const GIDConfiguration& configuration, GIDSignInEpoch::Epoch epoch) const;
    // Makes user the current one, running keep first, unless a sign-out came since epoch began.
    bool adopt(GIDSignInEpoch::Epoch epoch, std::shared_ptr<GIDGoogleUser> user, const std::function<void()>& keep);

    GIDSignInServices m_services;
    // Shared by the sign-in and every refresh, so the provider's keys are fetched once.
    std::shared_ptr<JsonWebKeySet> m_keys;
    // Taken before m_mutex wherever both are held.
    std::shared_ptr<GIDSignInEpoch> m_epochs = std::make_shared<GIDSignInEpoch>();
    mutable QMutex m_mutex;
    std::optional<GIDConfiguration> m_configuration;
    std::shared_ptr<GIDGoogleUser> m_currentUser;
    LoopbackRedirectListener* m_attempt = nullptr;
    std::chrono::milliseconds m_redirectTimeLimit = defaultRedirectTimeLimit;
};
