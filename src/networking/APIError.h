#pragma once

#include <QString>

#include <exception>
#include <string>

// How a call to the backend failed. Thrown by APIClient; compared by case and payload.
class APIError : public std::exception {
public:
    // The cases that carry a payload come first.
    enum class Case {
        forbidden, // text: the response body (empty when it is not UTF-8)
        badRequest, // text: the response body, "URL inválida" or "no se pudo codificar la solicitud"
        server, // statusCode: any other status outside 200-299
        transport, // text: why the exchange did not complete
        decoding, // text: why a 2xx body did not fit the expected type
        unauthorized, // status 401, or the token provider failed
        notFound, // status 404
    };

    static APIError forbidden(QString body);
    static APIError badRequest(QString text);
    static APIError server(int statusCode);
    static APIError transport(QString description);
    static APIError decoding(QString description);
    static APIError unauthorized();
    static APIError notFound();

    Case kind() const { return m_case; }
    // The text payload of forbidden, badRequest, transport and decoding; empty for the others.
    const QString& text() const { return m_text; }
    // The status code of server; 0 for the others.
    int statusCode() const { return m_statusCode; }

    // "server(500)", "badRequest(\"URL inválida\")": for logs and test failures.
    QString debugDescription() const;
    const char* what() const noexcept override { return m_what.c_str(); }

    friend bool operator==(const APIError& lhs, const APIError& rhs)
    {
        return lhs.m_case == rhs.m_case && lhs.m_text == rhs.m_text && lhs.m_statusCode == rhs.m_statusCode;
    }

private:
    APIError(Case kind, QString text, int statusCode);

    Case m_case;
    QString m_text;
    int m_statusCode;
    std::string m_what;
};
