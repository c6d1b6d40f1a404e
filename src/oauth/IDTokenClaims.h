#pragma once

#include "oauth/GIDProfileData.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

// What the client reads from an ID token's payload; IDTokenVerifier decides whether to believe it.
struct IDTokenClaims {
    QString issuer;
    QString subject;
    QStringList audience;
    // "azp", when the token names one.
    std::optional<QString> authorizedParty;
    QDateTime expiration;
    // "iat" and "nbf" when present; invalid otherwise.
    QDateTime issuedAt;
    QDateTime notBefore;
    std::optional<GIDProfileData> profile;

    // Nothing when the text is not a JWT whose payload is a JSON object with "sub" and "exp".
    static std::optional<IDTokenClaims> decode(const QString& token);
    // One part of a token or a key field, in unpadded base64url; nullopt when it is not.
    static std::optional<QByteArray> decodeBase64Url(const QByteArray& part);
};
