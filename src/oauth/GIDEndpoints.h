#pragma once

#include <QStringList>
#include <QUrl>

// The identity provider the client signs in with: where the authorization and token requests go,
// who issues its ID tokens and where it publishes the keys that sign them.
struct GIDEndpoints {
    QUrl authorization;
    QUrl token;
    // The "iss" values an ID token may carry; the first is the provider's canonical one.
    QStringList issuers;
    // The provider's JSON Web Key Set.
    QUrl jwks;

    // Google's identity service, unless TOLVANE_GOOGLE_AUTHORIZATION_ENDPOINT,
    // TOLVANE_GOOGLE_TOKEN_ENDPOINT, TOLVANE_GOOGLE_ISSUER or TOLVANE_GOOGLE_JWKS_URI name
    // another (tests run a provider of their own).
    static GIDEndpoints fromEnvironment();

    // Whether tokens and keys may be fetched from url: over https, or over plain http from a
    // loopback address (a provider on this machine), never from a name that could be pointed
    // elsewhere.
    static bool isTrustworthy(const QUrl& url);
};
