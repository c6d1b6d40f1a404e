#pragma once

#include <QByteArray>

class SecureRandom;

// Proof Key for Code Exchange (RFC 7636) with the "S256" method, and the state of an attempt.
namespace PKCE {

// base64url text of 32 secure random bytes, without padding: 43 characters. Empty when the random
// source fails, which must stop the attempt: a predictable verifier protects nothing.
QByteArray makeVerifier(SecureRandom& random);
// base64url(SHA-256(verifier)), without padding.
QByteArray challenge(const QByteArray& verifier);
// A fresh value for the "state" parameter; empty when the random source fails.
QByteArray makeState(SecureRandom& random);

QByteArray base64Url(const QByteArray& bytes);

} // namespace PKCE
