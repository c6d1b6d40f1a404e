#pragma once

#include <QString>

#include <optional>

// Hands out the signed-in user's ID token, refreshed when it is about to expire. Blocks on the
// refresh and throws its error.
class GoogleAuthSession {
public:
    virtual ~GoogleAuthSession() = default;
    virtual std::optional<QString> idToken() = 0;
};
