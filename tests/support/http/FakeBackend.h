#pragma once

#include "support/http/FakeResponse.h"
#include "support/http/HttpTestServer.h"
#include "support/http/RecordedRequest.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <deque>
#include <functional>
#include <memory>

// The backend as tests see it: a real HTTP server on loopback that checks the bearer token,
// answers from routes or from scripted responses, and records every request as it arrived.
//
// Each accepted bearer token belongs to one user, so per-user state can be kept by the routes
// (RecordedRequest::userId). Order of answering: a request without "Authorization: Bearer
// <accepted token>" gets 401; else the oldest
// scripted response whose method and path match (empty ones match anything) is used once; else
// the first matching route answers; else 404 "no route".
class FakeBackend {
public:
    // Gets the request and the path segments that matched the route's "{...}" placeholders.
    using RouteHandler = std::function<FakeResponse(const RecordedRequest&, const QStringList& captures)>;

    static constexpr const char* defaultToken = "fake-backend-token";
    // The user of the token given at construction.
    static QUuid defaultUserId();

    explicit FakeBackend(QString bearerToken = QString::fromLatin1(defaultToken));
    ~FakeBackend();

    // "http://127.0.0.1:<port>"
    QUrl baseURL() const;
    const QString& bearerToken() const { return m_bearerToken; }
    // Accepts token as the bearer of userId from now on.
    void acceptToken(const QString& token, const QUuid& userId);
    int connectionCount() const;

    // pathPattern is a decoded path whose "{name}" segments match any one segment:
    // "/v0/projects/{id}".
    void route(const QByteArray& method, const QString& pathPattern, RouteHandler handler);
    // The same response for every matching request.
    void route(const QByteArray& method, const QString& pathPattern, FakeResponse response);
    // Answers the next matching request with response, ahead of any route; for faults.
    void enqueue(FakeResponse response, const QByteArray& method = {}, const QString& path = {});

    QList<RecordedRequest> requests() const;
    void clearRequests();

private:
    struct Route;
    struct Scripted;

    FakeResponse answer(const RecordedRequest& request);

    QString m_bearerToken;
    mutable QMutex m_mutex;
    QHash<QString, QUuid> m_users;
    std::vector<std::shared_ptr<Route>> m_routes;
    std::deque<Scripted> m_scripted;
    QList<RecordedRequest> m_requests;
    std::unique_ptr<HttpTestServer> m_server;
};
