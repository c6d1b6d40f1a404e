#pragma once

#include "support/http/FakeResponse.h"
#include "support/http/RecordedRequest.h"

#include <QThread>
#include <QUrl>

#include <functional>

class HttpTestServerWorker;

// A small HTTP/1.1 server on 127.0.0.1 with a port of the system's choosing, running on a thread of
// its own so that a test can call a blocking client from its own thread. Keeps connections alive,
// reads Content-Length bodies, answers "100 Continue" when asked. The handler runs on the server's
// thread, one request at a time.
class HttpTestServer {
public:
    using Handler = std::function<FakeResponse(const RecordedRequest&)>;

    explicit HttpTestServer(Handler handler);
    ~HttpTestServer();
    HttpTestServer(const HttpTestServer&) = delete;
    HttpTestServer& operator=(const HttpTestServer&) = delete;

    quint16 port() const { return m_port; }
    // "http://127.0.0.1:<port>"
    QUrl url() const;
    // Connections accepted so far: shows whether a client reused its connection.
    int connectionCount() const;

private:
    QThread m_thread;
    HttpTestServerWorker* m_worker = nullptr;
    quint16 m_port = 0;
};
