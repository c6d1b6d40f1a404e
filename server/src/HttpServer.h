#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

struct ApiRequest;
struct ApiResponse;

// The HTTP/1.1 front: a fixed number of I/O threads accept and parse (keep-alive, 1 MiB body
// limit, deadlines on headers and body, so a client that trickles bytes is cut off), and a fixed
// pool of workers runs the handler, which may block on the database. stop() refuses new
// connections, lets requests in flight finish, and closes idle connections.
class HttpServer {
public:
    struct Options {
        std::string host = "127.0.0.1";
        unsigned short port = 8080;
        int ioThreads = 2;
        int workers = 8;
        std::size_t bodyLimit = 1024 * 1024;
        // Waiting for the next request on a kept-alive connection, and reading its headers.
        std::chrono::seconds headerTimeout {30};
        std::chrono::seconds bodyTimeout {30};
    };
    using Handler = std::function<ApiResponse(const ApiRequest&)>;

    HttpServer(Options options, Handler handler);
    ~HttpServer();

    // Binds and starts serving; throws when the address cannot be bound.
    void start();
    // The port bound, which differs from the one asked for when that was 0.
    unsigned short port() const;
    // Graceful: returns when every connection is closed and every thread joined.
    void stop();
    // Blocks until SIGTERM or SIGINT, then stops gracefully.
    void runUntilSignalled();

    struct State;

private:
    std::shared_ptr<State> m_state;
};
