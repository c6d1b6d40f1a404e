#pragma once

#include "login/GoogleAuthSession.h"
#include "networking/AuthTokenProvider.h"

#include <memory>

class GIDSignIn;

// The session of the live sign-in client.
class LiveGoogleAuthSession final : public GoogleAuthSession {
public:
    explicit LiveGoogleAuthSession(GIDSignIn& client);
    std::optional<QString> idToken() override;

private:
    GIDSignIn& m_client;
};

// The backend's bearer: the Google ID token (not the access token) of the signed-in user, fresh
// for every request.
class GoogleAuthTokenProvider final : public AuthTokenProvider {
public:
    // Over the live session of client.
    explicit GoogleAuthTokenProvider(GIDSignIn& client);
    GoogleAuthTokenProvider(GIDSignIn& client, std::shared_ptr<GoogleAuthSession> session);

    // Throws GoogleSignInRepositoryError notSignedIn, without a word to the network, when nobody is
    // signed in; missingProfile when the session has no ID token; a refresh's error unchanged.
    QString token() override;

    const std::shared_ptr<GoogleAuthSession> session;

private:
    GIDSignIn& m_client;
};
