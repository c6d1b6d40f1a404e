#pragma once

#include <chrono>
#include <stdexcept>
#include <string>

struct FetchError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The body of a 200 answer to GET url. HTTPS with the system's trusted certificates; plain HTTP
// only to a loopback host (a local identity provider for development and tests). Throws FetchError.
std::string httpGet(const std::string& url, std::chrono::seconds timeout = std::chrono::seconds(10));
