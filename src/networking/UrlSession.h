#pragma once

#include "networking/UrlRequest.h"
#include "networking/UrlResponse.h"
#include "networking/UrlSessionError.h"

#include <memory>

// The process's HTTP transport over libcurl. Every UrlSession refers to one process-wide share
// handle, so all requests reuse the same connections, DNS answers and TLS sessions whichever thread
// sends them. A cheap value: copy it freely.
class UrlSession {
public:
    static UrlSession shared();

    // Sends the request and waits for the whole response; follows redirects. Throws
    // UrlSessionError when the exchange does not complete. Safe to call from several threads.
    UrlResponse send(const UrlRequest& request) const;

    class State;

private:
    explicit UrlSession(State* state)
        : m_state(state)
    {
    }

    State* m_state;
};
