#include "HttpServer.h"

#include "Api.h"
#include "Log.h"

#include <array>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <mutex>
#include <set>
#include <thread>

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = asio::ip::tcp;

class Session;

struct HttpServer::State {
    Options options;
    Handler handler;
    asio::io_context io;
    std::optional<asio::executor_work_guard<asio::io_context::executor_type>> work;
    tcp::acceptor acceptor {io};
    std::unique_ptr<asio::thread_pool> workers;
    std::vector<std::thread> threads;
    std::mutex sessionsMutex;
    std::set<std::weak_ptr<Session>, std::owner_less<std::weak_ptr<Session>>> sessions;
    std::atomic<bool> stopping {false};
    bool started = false;
    bool stopped = false;
};

class Session : public std::enable_shared_from_this<Session> {
public:
    Session(tcp::socket socket, std::shared_ptr<HttpServer::State> state)
        : m_stream(std::move(socket))
        , m_state(std::move(state))
    {
    }

    void start()
    {
        asio::dispatch(m_stream.get_executor(), [self = shared_from_this()] { self->readHeader(); });
    }

    // From the server's stop: an idle connection closes now, a busy one after its answer.
    void stop()
    {
        asio::dispatch(m_stream.get_executor(), [self = shared_from_this()] {
            if (!self->m_busy)
                self->close();
        });
    }

private:
    void readHeader()
    {
        if (m_state->stopping)
            return close();
        m_parser.emplace();
        m_parser->header_limit(16 * 1024);
        m_parser->body_limit(m_state->options.bodyLimit);
        m_stream.expires_after(m_state->options.headerTimeout);
        http::async_read_header(m_stream, m_buffer, *m_parser,
            [self = shared_from_this()](beast::error_code error, std::size_t) { self->onHeader(error); });
    }

    void onHeader(beast::error_code error)
    {
        if (error)
            return failed(error);
        m_busy = true;
        m_stream.expires_after(m_state->options.bodyTimeout);
        http::async_read(m_stream, m_buffer, *m_parser,
            [self = shared_from_this()](beast::error_code error, std::size_t) { self->onRequest(error); });
    }

    void failed(beast::error_code error)
    {
        if (error == http::error::body_limit)
            return answerAndClose(413, "request body too large");
        if (error == http::error::header_limit)
            return answerAndClose(431, "request header too large");
        if (error.category() == beast::error_code(http::error::bad_target).category()
            && error != http::error::end_of_stream && error != http::error::partial_message)
            return answerAndClose(400, "malformed request");
        // A deadline, a reset or the peer closing: nothing more to say.
        close();
    }

    void onRequest(beast::error_code error)
    {
        if (error)
            return failed(error);
        m_stream.expires_never();
        auto& message = m_parser->get();
        auto request = std::make_shared<ApiRequest>();
        request->method = std::string(message.method_string());
        request->target = std::string(message.target());
        request->authorization = std::string(message[http::field::authorization]);
        request->body = std::move(message.body());
        m_keepAlive = message.keep_alive();
        m_version = message.version();
        // The guard keeps the I/O threads running while the answer is being worked out, so that a
        // stop in the meantime still writes it.
        asio::post(*m_state->workers,
            [self = shared_from_this(), request, work = asio::make_work_guard(m_stream.get_executor())] {
                ApiResponse response = self->m_state->handler(*request);
                asio::post(self->m_stream.get_executor(),
                    [self, response = std::move(response)]() mutable { self->write(std::move(response)); });
            });
    }

    void write(ApiResponse response)
    {
        auto message = std::make_shared<http::response<http::string_body>>(
            static_cast<http::status>(response.status), m_version);
        message->set(http::field::server, "tolvane-server");
        if (!response.contentType.empty())
            message->set(http::field::content_type, response.contentType);
        message->body() = std::move(response.body);
        const bool keepAlive = m_keepAlive && !m_state->stopping;
        message->keep_alive(keepAlive);
        message->prepare_payload();
        m_stream.expires_after(m_state->options.bodyTimeout);
        http::async_write(
            m_stream, *message, [self = shared_from_this(), message, keepAlive](beast::error_code error, std::size_t) {
                self->m_busy = false;
                if (error)
                    return self->close();
                if (!keepAlive)
                    return self->m_refused ? self->linger() : self->close();
                self->readHeader();
            });
    }

    void answerAndClose(int status, const char* reason)
    {
        m_keepAlive = false;
        m_refused = true;
        m_busy = true;
        write({status, std::string(reason) + '\n', "text/plain; charset=utf-8"});
    }

    // A refused request may still be arriving (a body over the limit): closing at once would reset
    // the connection and the client would lose the answer. The rest is read and dropped until the
    // client stops or a short deadline passes.
    void linger()
    {
        beast::error_code ignored;
        m_stream.socket().shutdown(tcp::socket::shutdown_send, ignored);
        m_stream.expires_after(std::chrono::seconds(2));
        drain();
    }

    void drain()
    {
        m_stream.async_read_some(
            asio::buffer(m_drained), [self = shared_from_this()](beast::error_code error, std::size_t) {
                if (error)
                    return self->close();
                self->drain();
            });
    }

    void close()
    {
        beast::error_code ignored;
        m_stream.socket().shutdown(tcp::socket::shutdown_both, ignored);
        m_stream.close();
    }

    beast::tcp_stream m_stream;
    std::shared_ptr<HttpServer::State> m_state;
    beast::flat_buffer m_buffer;
    std::optional<http::request_parser<http::string_body>> m_parser;
    bool m_keepAlive = false;
    bool m_busy = false;
    bool m_refused = false;
    std::array<char, 16 * 1024> m_drained {};
    unsigned m_version = 11;
};

namespace {

void accept(const std::shared_ptr<HttpServer::State>& state)
{
    state->acceptor.async_accept(asio::make_strand(state->io), [state](beast::error_code error, tcp::socket socket) {
        if (error) {
            if (error == asio::error::operation_aborted || state->stopping)
                return;
            slog::warning("accept failed: " + error.message());
        } else {
            auto session = std::make_shared<Session>(std::move(socket), state);
            {
                const std::lock_guard lock(state->sessionsMutex);
                // Forget the sessions that have ended, so the set does not grow without bound.
                std::erase_if(state->sessions, [](const auto& weak) { return weak.expired(); });
                state->sessions.insert(session);
            }
            session->start();
        }
        if (!state->stopping)
            accept(state);
    });
}

} // namespace

HttpServer::HttpServer(Options options, Handler handler)
    : m_state(std::make_shared<State>())
{
    m_state->options = std::move(options);
    m_state->handler = std::move(handler);
}

HttpServer::~HttpServer()
{
    stop();
}

void HttpServer::start()
{
    auto& state = *m_state;
    const tcp::endpoint endpoint(asio::ip::make_address(state.options.host), state.options.port);
    state.acceptor.open(endpoint.protocol());
    state.acceptor.set_option(asio::socket_base::reuse_address(true));
    state.acceptor.bind(endpoint);
    state.acceptor.listen(asio::socket_base::max_listen_connections);
    state.workers = std::make_unique<asio::thread_pool>(state.options.workers);
    state.work.emplace(state.io.get_executor());
    accept(m_state);
    for (int i = 0; i < state.options.ioThreads; ++i)
        state.threads.emplace_back([this] { m_state->io.run(); });
    state.started = true;
}

unsigned short HttpServer::port() const
{
    return m_state->acceptor.local_endpoint().port();
}

void HttpServer::stop()
{
    auto& state = *m_state;
    if (!state.started || state.stopped)
        return;
    state.stopped = true;
    state.stopping = true;
    asio::post(state.io, [this] {
        beast::error_code ignored;
        m_state->acceptor.close(ignored);
    });
    {
        const std::lock_guard lock(state.sessionsMutex);
        for (const auto& weak : state.sessions) {
            if (const auto session = weak.lock())
                session->stop();
        }
    }
    // The io_context runs out of work once the last connection has closed.
    state.work.reset();
    for (std::thread& thread : state.threads)
        thread.join();
    state.workers->join();
}

void HttpServer::runUntilSignalled()
{
    asio::io_context signals;
    asio::signal_set set(signals, SIGTERM, SIGINT);
    set.async_wait([](beast::error_code, int) {});
    signals.run();
    slog::info("stopping: finishing the requests in flight");
    stop();
}
