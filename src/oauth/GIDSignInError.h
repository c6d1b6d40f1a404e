#pragma once

#include "oauth/DescribedError.h"

// Why the sign-in client failed. Every error thrown by GIDSignIn and GIDGoogleUser is one.
namespace GIDSignInError {

inline const QString domain = QStringLiteral("com.quorvel.tolvane.GIDSignIn");
// The domains of the causes chained below a sign-in error.
inline const QString oauthDomain = QStringLiteral("com.quorvel.tolvane.OAuth2");
inline const QString transportDomain = QStringLiteral("com.quorvel.tolvane.UrlSession");
inline const QString keychainDomain = QStringLiteral("com.quorvel.tolvane.Keychain");

enum Code {
    unknown = -1,
    keychain = -2,
    hasNoAuthInKeychain = -4,
    canceled = -5,
    notConfigured = -10,
    browserUnavailable = -11,
    listenerFailed = -12,
    timedOut = -13,
    stateMismatch = -14,
    authorizationFailed = -15,
    tokenExchangeFailed = -16,
    invalidIdToken = -17,
    refreshFailed = -18,
    alreadyInProgress = -19,
    signedOut = -20,
};

DescribedError make(Code code, const QString& description, std::shared_ptr<const DescribedError> underlying = {});

} // namespace GIDSignInError
