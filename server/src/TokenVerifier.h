#pragma once

#include "oauth/JsonWebKey.h"

#include <QtGlobal>

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

// Decides whether a bearer is an ID token this server may believe, as a careful relying party:
// RS256 only, signed with a key the provider publishes (JWKS found through its discovery
// document, kept, fetched again once when a token names a key id it does not know), "iss" among
// the configured issuers, "aud" (and "azp" when present) a configured client id, "exp" and "iat"
// within a minute of skew. Callers learn only yes (the subject) or no: which check failed is
// nobody's business outside the log at debug level.
class TokenVerifier {
public:
    using Fetch = std::function<std::string(const std::string& url)>;
    // The monotonic time the refetch interval is counted in.
    using Monotonic = std::function<std::chrono::steady_clock::time_point()>;

    TokenVerifier(
        std::string discoveryUrl, std::vector<std::string> issuers, std::vector<std::string> clientIds, Fetch fetch,
        Monotonic monotonic = [] { return std::chrono::steady_clock::now(); });

    // The token's "sub" when every check passes. Thread-safe.
    std::optional<std::string> subject(std::string_view token, std::chrono::system_clock::time_point now);

    static constexpr std::chrono::seconds skew {60};
    // A flood of made-up key ids must not turn into a flood of fetches at the provider.
    static constexpr std::chrono::seconds minimumRefetchInterval {10};

private:
    std::optional<std::string> check(std::string_view token, std::chrono::system_clock::time_point now);
    std::optional<JsonWebKey> key(const std::string& keyId, std::chrono::steady_clock::time_point now);
    std::map<std::string, JsonWebKey> fetchKeys();

    std::string m_discoveryUrl;
    std::vector<std::string> m_issuers;
    std::vector<std::string> m_clientIds;
    Fetch m_fetch;
    Monotonic m_monotonic;
    std::mutex m_mutex;
    std::optional<std::map<std::string, JsonWebKey>> m_keys;
    std::chrono::steady_clock::time_point m_lastFetch;
    // Tokens that passed every check, with their subject and expiry: a client sends the same
    // token for an hour, and checking its signature again each time would cost most of a request.
    struct Verified {
        std::string subject;
        qint64 expiresAt;
        qint64 issuedAt;
    };
    std::mutex m_verifiedMutex;
    std::unordered_map<std::string, Verified> m_verified;
};
