#pragma once

#include "networking/APIError.h"
#include "networking/AuthTokenProvider.h"
#include "networking/NetworkLogger.h"
#include "networking/UrlSession.h"
#include "wire/JSONCoding.h"

#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <utility>

// The one client of the backend's JSON API. Every call is synchronous (run it off the GUI thread):
// it fetches a bearer token (at most 15 seconds), sends one request with "Content-Type:
// application/json", logs the exchange, and maps any status outside 200-299 to an APIError.
// There is no retry. Every failure is thrown as an APIError.
//
// Response and body types follow JSONCoding.h:
//
//     auto projects = client.get<QList<ProjectResponseDTO>>("/v0/projects");
//     auto created = client.post<ProjectResponseDTO>("/v0/projects", CreateProjectRequestDTO { ... });
//     client.delete_("/v0/projects/" + id);
//
// A value type with nothing mutable; copies share the token provider and the session.
class APIClient {
public:
    using QueryItem = std::pair<QString, QString>;

    APIClient(QUrl baseURL, std::shared_ptr<AuthTokenProvider> tokenProvider, UrlSession session, bool loggingEnabled);
    APIClient(QUrl baseURL, std::shared_ptr<AuthTokenProvider> tokenProvider, UrlSession session, NetworkLogger logger);

    const QUrl& baseURL() const { return m_baseURL; }
    const NetworkLogger& logger() const { return m_logger; }

    // Query items are percent-encoded; an empty list sends no "?" at all.
    template <typename T> T get(const QString& path, const QList<QueryItem>& queryItems = {}) const
    {
        return decodeBody<T>(send("GET", path, queryItems, {}));
    }

    template <typename T, typename Body> T post(const QString& path, const Body& body) const
    {
        return decodeBody<T>(send("POST", path, {}, encoder(body)));
    }

    template <typename T, typename Body> T put(const QString& path, const Body& body) const
    {
        return decodeBody<T>(send("PUT", path, {}, encoder(body)));
    }

    // The response body, if any, is not read.
    void patch(const QString& path) const { send("PATCH", path, {}, {}); }
    void delete_(const QString& path) const { send("DELETE", path, {}, {}); }

    template <typename Body> void delete_(const QString& path, const Body& body) const
    {
        send("DELETE", path, {}, encoder(body));
    }

private:
    using BodyEncoder = std::function<QJsonValue()>;

    template <typename Body> static BodyEncoder encoder(const Body& body)
    {
        return [&body] { return JSONCoding::encodeValue(body); };
    }

    template <typename T> static T decodeBody(const QByteArray& data)
    {
        try {
            return JSONCoding::decode<T>(data);
        } catch (const DecodingError& error) {
            throw APIError::decoding(error.localizedDescription());
        }
    }

    // The whole exchange; returns the body of a 2xx response.
    QByteArray send(const char* method, const QString& path, const QList<QueryItem>& queryItems,
        const BodyEncoder& encodeBody) const;
    QUrl requestURL(const QString& path, const QList<QueryItem>& queryItems) const;

    QUrl m_baseURL;
    std::shared_ptr<AuthTokenProvider> m_tokenProvider;
    UrlSession m_session;
    NetworkLogger m_logger;
    // Worked out once: every request starts from them.
    bool m_baseIsUsable;
    QString m_basePath;
};
