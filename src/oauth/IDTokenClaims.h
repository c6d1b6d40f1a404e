#pragma once

#include "oauth/GIDProfileData.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

// What the client reads from an ID token. The token comes straight from the token endpoint over
// TLS in answer to our own request, so its signature is not checked (OpenID Connect Core 3.1.3.7);
// its audience is, so a token minted for another client is never taken for ours.
struct IDTokenClaims {
    QString subject;
    QStringList audience;
    QDateTime expiration;
    std::optional<GIDProfileData> profile;

    // Nothing when the text is not a JWT whose payload is a JSON object with "sub" and "exp".
    static std::optional<IDTokenClaims> decode(const QString& token);
};
