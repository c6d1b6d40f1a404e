#pragma once

#include "oauth/GIDProfileData.h"
#include "oauth/GIDSession.h"
#include "oauth/GIDSessionStore.h"
#include "oauth/GIDSignInEpoch.h"
#include "oauth/GIDToken.h"
#include "oauth/GIDTokenEndpoint.h"
#include "oauth/IDTokenVerifier.h"

#include <QMutex>

#include <memory>
#include <optional>

class Clock;

// The signed-in user. Its tokens change when they are refreshed, so it is shared, never copied;
// every member may be called from any thread.
class GIDGoogleUser {
public:
    // The session, and what refreshing it needs: where to ask, how to check the answer, when it is,
    // where to keep it, and the sign-in epoch it belongs to (a sign-out ends it).
    GIDGoogleUser(GIDSession session, GIDTokenEndpoint endpoint, IDTokenVerifier verifier,
        std::shared_ptr<const Clock> clock, GIDSessionStore store, std::shared_ptr<GIDSignInEpoch> epochs,
        GIDSignInEpoch::Epoch epoch);

    QString userID() const;
    std::optional<GIDProfileData> profile() const;
    std::optional<GIDToken> idToken() const;
    GIDToken accessToken() const;
    GIDSession session() const;

    // Renews the tokens with the refresh token when the ID token or the access token expires within
    // five minutes, and stores the renewed session. Throws a GIDSignInError refreshFailed (the
    // provider refused or could not be reached) or invalidIdToken (the renewed ID token does not
    // check out); the old session stays then, in memory and in the keyring.
    // Throws signedOut, and keeps nothing it obtained, once the user has signed out, even when the
    // sign-out came while the provider was answering. Concurrent callers wait for one refresh
    // rather than each starting their own.
    void refreshTokensIfNeeded();

    static constexpr qint64 refreshMarginSeconds = 5 * 60;

private:
    mutable QMutex m_mutex;
    GIDSession m_session;
    GIDTokenEndpoint m_endpoint;
    IDTokenVerifier m_verifier;
    std::shared_ptr<const Clock> m_clock;
    GIDSessionStore m_store;
    std::shared_ptr<GIDSignInEpoch> m_epochs;
    GIDSignInEpoch::Epoch m_epoch;
};
