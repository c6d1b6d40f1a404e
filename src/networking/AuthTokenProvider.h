#pragma once

#include <QString>

// Supplies the bearer token for each request. token() may block (a token refresh goes over the
// network) and may throw; APIClient calls it once per request, under a time limit, from a worker
// thread, so an implementation must be safe to call from any thread.
class AuthTokenProvider {
public:
    virtual ~AuthTokenProvider() = default;
    virtual QString token() = 0;
};
