#include "HttpFetch.h"

#include <QUrl>

#include <boost/asio/connect.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/ssl.hpp>
#include <boost/beast/version.hpp>

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;

namespace {

bool isLoopback(const std::string& host)
{
    return host == "localhost" || host == "::1" || host.rfind("127.", 0) == 0;
}

template <typename Stream> std::string exchange(Stream& stream, const std::string& host, const std::string& target)
{
    http::request<http::empty_body> request {http::verb::get, target, 11};
    request.set(http::field::host, host);
    request.set(http::field::user_agent, "tolvane-server");
    request.set(http::field::accept, "application/json");
    http::write(stream, request);
    beast::flat_buffer buffer;
    http::response_parser<http::string_body> parser;
    parser.body_limit(1024 * 1024);
    http::read(stream, buffer, parser);
    if (parser.get().result() != http::status::ok)
        throw FetchError("answered " + std::to_string(parser.get().result_int()));
    return parser.get().body();
}

} // namespace

std::string httpGet(const std::string& text, std::chrono::seconds timeout)
{
    const QUrl url(QString::fromStdString(text));
    const std::string scheme = url.scheme().toStdString();
    const std::string host = url.host().toStdString();
    if (!url.isValid() || host.empty() || (scheme != "https" && !(scheme == "http" && isLoopback(host))))
        throw FetchError("only https, or http to a loopback host, is allowed: " + text);
    const std::string port = std::to_string(url.port(scheme == "https" ? 443 : 80));
    std::string target = url.path(QUrl::FullyEncoded).toStdString();
    if (target.empty())
        target = "/";
    if (url.hasQuery())
        target += "?" + url.query(QUrl::FullyEncoded).toStdString();

    try {
        asio::io_context context;
        asio::ip::tcp::resolver resolver(context);
        const auto endpoints = resolver.resolve(host, port);
        if (scheme == "http") {
            beast::tcp_stream stream(context);
            stream.expires_after(timeout);
            stream.connect(endpoints);
            return exchange(stream, host, target);
        }
        asio::ssl::context tls(asio::ssl::context::tls_client);
        tls.set_default_verify_paths();
        tls.set_verify_mode(asio::ssl::verify_peer);
        beast::ssl_stream<beast::tcp_stream> stream(context, tls);
        if (!SSL_set_tlsext_host_name(stream.native_handle(), host.c_str()))
            throw FetchError("cannot name the host for TLS");
        stream.set_verify_callback(asio::ssl::host_name_verification(host));
        beast::get_lowest_layer(stream).expires_after(timeout);
        beast::get_lowest_layer(stream).connect(endpoints);
        stream.handshake(asio::ssl::stream_base::client);
        return exchange(stream, host, target);
    } catch (const boost::system::system_error& error) {
        throw FetchError(error.what());
    }
}
