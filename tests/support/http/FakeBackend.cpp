#include "support/http/FakeBackend.h"

struct FakeBackend::Route {
    QByteArray method;
    QStringList segments;
    RouteHandler handler;

    // The placeholders' values when path fits this route.
    std::optional<QStringList> match(const RecordedRequest& request) const
    {
        if (request.method != method)
            return std::nullopt;
        const QStringList parts = request.path.split(QLatin1Char('/'));
        if (parts.size() != segments.size())
            return std::nullopt;
        QStringList captures;
        for (qsizetype i = 0; i < parts.size(); ++i) {
            const QString& segment = segments.at(i);
            if (segment.startsWith(QLatin1Char('{')) && segment.endsWith(QLatin1Char('}')))
                captures.append(parts.at(i));
            else if (segment != parts.at(i))
                return std::nullopt;
        }
        return captures;
    }
};

struct FakeBackend::Scripted {
    QByteArray method;
    QString path;
    FakeResponse response;
};

QUuid FakeBackend::defaultUserId()
{
    return QUuid::fromString(u"0F5C6D1E-7A2B-4C3D-9E8F-1A2B3C4D5E6F");
}

FakeBackend::FakeBackend(QString bearerToken)
    : m_bearerToken(std::move(bearerToken))
    , m_users {{m_bearerToken, defaultUserId()}}
    , m_server(std::make_unique<HttpTestServer>([this](const RecordedRequest& request) { return answer(request); }))
{
}

void FakeBackend::acceptToken(const QString& token, const QUuid& userId)
{
    const QMutexLocker locker(&m_mutex);
    m_users.insert(token, userId);
}

FakeBackend::~FakeBackend()
{
    // The server's thread calls answer(); it must stop before the members it reads go.
    m_server.reset();
}

QUrl FakeBackend::baseURL() const
{
    return m_server->url();
}

int FakeBackend::connectionCount() const
{
    return m_server->connectionCount();
}

void FakeBackend::route(const QByteArray& method, const QString& pathPattern, RouteHandler handler)
{
    auto route = std::make_shared<Route>(Route {method, pathPattern.split(QLatin1Char('/')), std::move(handler)});
    const QMutexLocker locker(&m_mutex);
    m_routes.push_back(std::move(route));
}

void FakeBackend::route(const QByteArray& method, const QString& pathPattern, FakeResponse response)
{
    route(method, pathPattern, [response](const RecordedRequest&, const QStringList&) { return response; });
}

void FakeBackend::enqueue(FakeResponse response, const QByteArray& method, const QString& path)
{
    const QMutexLocker locker(&m_mutex);
    m_scripted.push_back(Scripted {method, path, std::move(response)});
}

QList<RecordedRequest> FakeBackend::requests() const
{
    const QMutexLocker locker(&m_mutex);
    return m_requests;
}

void FakeBackend::clearRequests()
{
    const QMutexLocker locker(&m_mutex);
    m_requests.clear();
}

FakeResponse FakeBackend::answer(const RecordedRequest& arrived)
{
    QMutexLocker locker(&m_mutex);
    RecordedRequest request = arrived;
    const QByteArray authorization = request.header("Authorization");
    if (authorization.startsWith("Bearer "))
        request.userId = m_users.value(QString::fromUtf8(authorization.mid(7)));
    m_requests.append(request);

    if (request.userId.isNull())
        return FakeResponse::text(401, "missing or wrong bearer token");

    for (auto it = m_scripted.begin(); it != m_scripted.end(); ++it) {
        if ((it->method.isEmpty() || it->method == request.method)
            && (it->path.isEmpty() || it->path == request.path)) {
            FakeResponse response = std::move(it->response);
            m_scripted.erase(it);
            return response;
        }
    }

    for (const auto& route : m_routes) {
        if (const auto captures = route->match(request)) {
            // A handler may take its time or call back into the backend (requests(), enqueue()).
            const std::shared_ptr<Route> chosen = route;
            locker.unlock();
            return chosen->handler(request, *captures);
        }
    }
    return FakeResponse::text(404, "no route");
}
