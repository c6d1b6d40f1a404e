#include "login/GoogleAuthTokenProvider.h"

#include "login/GoogleSignInRepositoryError.h"
#include "oauth/GIDSignIn.h"

LiveGoogleAuthSession::LiveGoogleAuthSession(GIDSignIn& client)
    : m_client(client)
{
}

std::optional<QString> LiveGoogleAuthSession::idToken()
{
    const auto user = m_client.currentUser();
    if (!user)
        return std::nullopt;
    user->refreshTokensIfNeeded();
    const auto token = user->idToken();
    if (!token)
        return std::nullopt;
    return token->tokenString;
}

GoogleAuthTokenProvider::GoogleAuthTokenProvider(GIDSignIn& client)
    : GoogleAuthTokenProvider(client, std::make_shared<LiveGoogleAuthSession>(client))
{
}

GoogleAuthTokenProvider::GoogleAuthTokenProvider(GIDSignIn& client, std::shared_ptr<GoogleAuthSession> session)
    : session(std::move(session))
    , m_client(client)
{
}

QString GoogleAuthTokenProvider::token()
{
    if (!m_client.currentUser())
        throw GoogleSignInRepositoryError(GoogleSignInRepositoryError::Case::notSignedIn);
    const auto token = session->idToken();
    // missingProfile stands for a missing ID token as well; the API client only needs to know
    // that there is no bearer.
    if (!token)
        throw GoogleSignInRepositoryError(GoogleSignInRepositoryError::Case::missingProfile);
    return *token;
}
