#pragma once

#include <QByteArray>
#include <QString>

// An RSA public key as a provider publishes it for verifying its ID tokens (RFC 7517): the key id
// and the big-endian bytes of modulus and exponent.
struct JsonWebKey {
    QString keyID;
    QByteArray modulus;
    QByteArray exponent;

    // Whether signature is an RSASSA-PKCS1-v1_5 SHA-256 signature ("RS256") of signingInput made
    // with this key. Keys shorter than 2048 bits verify nothing.
    bool verifiesRS256(const QByteArray& signingInput, const QByteArray& signature) const;
};
