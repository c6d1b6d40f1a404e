// The bearer-token verifier with everything it reads from outside: the token a client sends,
// the identity provider's discovery document and its key set (JWKS). The three are split from the
// input at zero bytes. The verifier is built afresh for each input so that no key is kept from
// one run to the next.
#include "FuzzInput.h"
#include "Log.h"
#include "TokenVerifier.h"

#include <chrono>
#include <string>

namespace {

const std::string discoveryUrl = "https://accounts.example.test/.well-known/openid-configuration";

// The parts of the input between zero bytes; missing parts are empty.
std::string part(const std::string& input, int index)
{
    size_t begin = 0;
    for (int i = 0; i < index; ++i) {
        begin = input.find('\0', begin);
        if (begin == std::string::npos)
            return {};
        ++begin;
    }
    const size_t end = input.find('\0', begin);
    return input.substr(begin, end == std::string::npos ? std::string::npos : end - begin);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const bool quiet = [] {
        slog::setLevel(slog::Level::error);
        return true;
    }();
    (void)quiet;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::string token = part(input, 0);
    const std::string discovery = part(input, 1);
    const std::string keys = part(input, 2);
    TokenVerifier verifier(discoveryUrl, {"https://accounts.example.test"}, {"client.example.test"},
        [&](const std::string& url) { return url == discoveryUrl ? discovery : keys; });
    // The seeds' tokens are valid at this instant.
    const auto now = std::chrono::system_clock::time_point(std::chrono::seconds(1800000000));
    // Twice: the second answer comes from what the first one kept.
    const auto first = verifier.subject(token, now);
    const auto second = verifier.subject(token, now);
    if (first != second)
        __builtin_trap();
    return 0;
}
