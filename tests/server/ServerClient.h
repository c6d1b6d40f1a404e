#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

// A plain HTTP/1.1 client for the server under test, one connection per request unless a
// Connection is kept; synchronous, since every test waits for its answer anyway.
struct Reply {
    int status = 0;
    QByteArray body;
    QJsonObject object() const { return QJsonDocument::fromJson(body).object(); }
    QJsonArray array() const { return QJsonDocument::fromJson(body).array(); }
};

class Connection {
public:
    explicit Connection(unsigned short port)
        : m_stream(m_io)
    {
        m_stream.connect(boost::asio::ip::tcp::endpoint(boost::asio::ip::make_address("127.0.0.1"), port));
        m_stream.expires_after(std::chrono::seconds(60));
    }

    Reply send(const std::string& method, const std::string& target, const QString& token = {},
        const QByteArray& body = {}, bool keepAlive = true)
    {
        namespace http = boost::beast::http;
        http::request<http::string_body> request {http::string_to_verb(method), target, 11};
        request.set(http::field::host, "127.0.0.1");
        if (!token.isEmpty())
            request.set(http::field::authorization, "Bearer " + token.toStdString());
        if (!body.isEmpty()) {
            request.set(http::field::content_type, "application/json");
            request.body() = body.toStdString();
        }
        request.keep_alive(keepAlive);
        request.prepare_payload();
        http::write(m_stream, request);
        return read();
    }

    Reply read()
    {
        namespace http = boost::beast::http;
        http::response<http::string_body> response;
        http::read(m_stream, m_buffer, response);
        return {response.result_int(), QByteArray::fromStdString(response.body())};
    }

    boost::beast::tcp_stream& stream() { return m_stream; }

private:
    boost::asio::io_context m_io;
    boost::beast::tcp_stream m_stream;
    boost::beast::flat_buffer m_buffer;
};

inline Reply call(unsigned short port, const std::string& method, const std::string& target, const QString& token = {},
    const QJsonObject& body = {})
{
    Connection connection(port);
    return connection.send(method, target, token,
        body.isEmpty() ? QByteArray() : QJsonDocument(body).toJson(QJsonDocument::Compact), false);
}
