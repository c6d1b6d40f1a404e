// The HTTP/1.1 request parser with the server's limits, fed the way a connection feeds it: in
// pieces as they arrive (the first byte sets their size), several requests one after another on
// a kept-alive connection, each read as the server reads it (method, target, authorization,
// body, keep-alive). A parse error is the expected outcome of bad bytes, anything else is a
// finding.
#include "HttpServer.h"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/http.hpp>
#include <cstddef>
#include <cstdint>
#include <string>

namespace http = boost::beast::http;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const size_t piece = size_t(data[0]) + 1;
    const std::string input(reinterpret_cast<const char*>(data + 1), size - 1);
    size_t offset = 0;
    size_t arrived = std::min(piece, input.size());
    while (offset < input.size()) {
        http::request_parser<http::string_body> parser;
        parser.header_limit(16 * 1024);
        parser.body_limit(HttpServer::Options {}.bodyLimit);
        parser.eager(true);
        boost::beast::error_code error;
        while (!parser.is_done()) {
            const size_t used = parser.put(boost::asio::buffer(input.data() + offset, arrived - offset), error);
            offset += used;
            if (error && error != http::error::need_more)
                return 0;
            if (error || used == 0) {
                if (arrived == input.size()) {
                    // The peer closed the connection.
                    error = {};
                    parser.put_eof(error);
                    if (error || !parser.is_done())
                        return 0;
                    break;
                }
                arrived = std::min(arrived + piece, input.size());
                error = {};
            }
        }
        auto& message = parser.get();
        const std::string method(message.method_string());
        const std::string target(message.target());
        const std::string authorization(message[http::field::authorization]);
        const std::string body = std::move(message.body());
        if (body.size() > HttpServer::Options {}.bodyLimit)
            __builtin_trap();
        if (!message.keep_alive())
            return 0;
        arrived = std::max(arrived, std::min(offset + piece, input.size()));
    }
    return 0;
}
