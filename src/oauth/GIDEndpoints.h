#pragma once

#include <QUrl>

// Where the authorization and token requests go.
struct GIDEndpoints {
    QUrl authorization;
    QUrl token;

    // Google's identity service, unless TOLVANE_GOOGLE_AUTHORIZATION_ENDPOINT or
    // TOLVANE_GOOGLE_TOKEN_ENDPOINT name another (tests run a provider of their own).
    static GIDEndpoints fromEnvironment();
};
