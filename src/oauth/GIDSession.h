#pragma once

#include "oauth/GIDProfileData.h"
#include "oauth/GIDToken.h"

#include <QByteArray>
#include <QDateTime>

#include <optional>

class IDTokenVerifier;

// What the token endpoint answered, as far as the client uses it.
struct GIDTokenResponse {
    QString accessToken;
    // Seconds from the answer; 0 when the endpoint gave none.
    qint64 expiresIn = 0;
    QString idToken;
    QString refreshToken;
};

// A signed-in user's tokens and profile: what the keyring keeps between runs.
struct GIDSession {
    QString userID;
    std::optional<GIDProfileData> profile;
    GIDToken idToken;
    GIDToken accessToken;
    // Empty when the provider issued none; the session then cannot be refreshed.
    QString refreshToken;

    // The session a token response opens (or renews, with previous: the provider keeps the same
    // refresh token unless it sends a new one). Throws a GIDSignInError invalidIdToken when the
    // response has no ID token, one the verifier refuses, or, on renewal, another user's.
    static GIDSession fromTokenResponse(const GIDTokenResponse& response, const IDTokenVerifier& verifier,
        const QDateTime& now, const GIDSession* previous = nullptr);

    QByteArray toJson() const;
    static std::optional<GIDSession> fromJson(const QByteArray& json);

    friend bool operator==(const GIDSession&, const GIDSession&) = default;
};
