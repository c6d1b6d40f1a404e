#pragma once

#include "Database.h"
#include "TokenVerifier.h"

#include <mutex>
#include <string>
#include <unordered_map>

struct ApiRequest {
    std::string method;
    // Path and query as they arrived: "/v0/tasks?taskListId=...".
    std::string target;
    std::string authorization;
    std::string body;
};

struct ApiResponse {
    int status = 200;
    std::string body;
    std::string contentType = "application/json";
};

// The /v0 REST resources. Every handler runs in one transaction on a pooled connection and names
// the caller's user id in each statement, so a user's rows are reachable only with that user's
// token: another user's identifiers answer 404, as if they did not exist.
class Api {
public:
    Api(ConnectionPool& pool, TokenVerifier& verifier);

    // Blocking; call it off the I/O threads. Never throws.
    ApiResponse handle(const ApiRequest& request);

private:
    std::string userIdOf(const std::string& subject);

    ConnectionPool& m_pool;
    TokenVerifier& m_verifier;
    std::mutex m_usersMutex;
    std::unordered_map<std::string, std::string> m_users;
};
