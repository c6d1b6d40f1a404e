#include "networking/UrlSession.h"

#include "networking/APIClient.h"
#include "support/TestMain.h"
#include "support/http/FakeBackend.h"

#include <QTest>

#include <atomic>
#include <thread>

namespace {

UrlRequest requestTo(const FakeBackend& backend, const QString& path)
{
    UrlRequest request;
    request.url = backend.baseURL().resolved(QUrl(path));
    request.setValue("Authorization", "Bearer " + backend.bearerToken().toUtf8());
    return request;
}

class StaticToken final : public AuthTokenProvider {
public:
    QString token() override { return QString::fromLatin1(FakeBackend::defaultToken); }
};

} // namespace

class UrlSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldReuseOneConnectionAcrossRequests()
    {
        FakeBackend backend;
        backend.route("GET", QStringLiteral("/v0/ping"), FakeResponse::json(200, QJsonArray {1}));
        const UrlSession session = UrlSession::shared();

        for (int i = 0; i < 3; ++i) {
            const UrlResponse response = session.send(requestTo(backend, QStringLiteral("/v0/ping")));
            QVERIFY(response.isHTTP);
            QCOMPARE(response.statusCode, 200);
            QCOMPARE(response.body, QByteArray("[1]"));
        }
        // A copy of the session is the same session.
        const UrlSession copy = session;
        copy.send(requestTo(backend, QStringLiteral("/v0/ping")));
        QCOMPARE(backend.connectionCount(), 1);
    }

    void shouldStartEachRequestClean()
    {
        // Handles are reused: nothing of a request with a body may leak into the next ones.
        FakeBackend backend;
        UrlRequest post = requestTo(backend, QStringLiteral("/v0/a"));
        post.httpMethod = "POST";
        post.httpBody = QByteArray(R"({"x":1})");
        post.setValue("X-Only-Here", "1");
        UrlRequest get = requestTo(backend, QStringLiteral("/v0/b"));
        UrlRequest remove = requestTo(backend, QStringLiteral("/v0/c"));
        remove.httpMethod = "DELETE";

        for (const UrlRequest& request : {post, get, remove, get})
            UrlSession::shared().send(request);

        const QList<RecordedRequest> requests = backend.requests();
        QCOMPARE(requests.size(), 4);
        QCOMPARE(requests.at(0).method, QByteArray("POST"));
        QCOMPARE(requests.at(0).body, QByteArray(R"({"x":1})"));
        for (qsizetype i = 1; i < requests.size(); ++i) {
            QCOMPARE(requests.at(i).method, i == 2 ? QByteArray("DELETE") : QByteArray("GET"));
            QVERIFY(requests.at(i).body.isEmpty());
            QVERIFY(!requests.at(i).hasHeader("Content-Length"));
            QVERIFY(!requests.at(i).hasHeader("X-Only-Here"));
        }
    }

    void shouldServeSeveralThreadsAtOnce()
    {
        FakeBackend backend;
        backend.route("GET", QStringLiteral("/v0/items/{n}"), [](const RecordedRequest&, const QStringList& captures) {
            return FakeResponse::json(200, QJsonArray {captures.value(0)});
        });
        const APIClient client(backend.baseURL(), std::make_shared<StaticToken>(), UrlSession::shared(), false);
        constexpr int threads = 4;
        constexpr int perThread = 25;
        std::atomic<int> wrong = 0;

        std::vector<std::thread> workers;
        for (int t = 0; t < threads; ++t) {
            workers.emplace_back([&, t] {
                for (int i = 0; i < perThread; ++i) {
                    const QString n = QString::number(t * 100 + i);
                    try {
                        if (client.get<QJsonArray>(QStringLiteral("/v0/items/") + n) != QJsonArray {n})
                            ++wrong;
                    } catch (const APIError&) {
                        ++wrong;
                    }
                }
            });
        }
        for (std::thread& worker : workers)
            worker.join();

        QCOMPARE(wrong.load(), 0);
        QCOMPARE(backend.requests().size(), threads * perThread);
        // Connections come back to the shared pool: never more than were busy at once.
        QVERIFY(backend.connectionCount() <= threads);
    }

    void shouldGiveUpOnAnIdleExchange()
    {
        FakeBackend backend;
        backend.enqueue(FakeResponse::json(200, QJsonArray()).delayed(std::chrono::seconds(3)));
        UrlRequest request = requestTo(backend, QStringLiteral("/v0/slow"));
        request.timeoutInterval = std::chrono::seconds(1);

        try {
            UrlSession::shared().send(request);
            QFAIL("an idle exchange completed");
        } catch (const UrlSessionError& error) {
            QVERIFY2(error.localizedDescription().startsWith(QLatin1String("Operation too slow")),
                qPrintable(error.localizedDescription()));
        }
    }

    void shouldFollowRedirects()
    {
        FakeBackend backend;
        FakeResponse moved = FakeResponse::empty(307);
        moved.headers.append(std::pair<QByteArray, QByteArray>("Location", "/v0/new"));
        backend.route("DELETE", QStringLiteral("/v0/old"), moved);
        backend.route("DELETE", QStringLiteral("/v0/new"), FakeResponse::empty(204));
        UrlRequest request = requestTo(backend, QStringLiteral("/v0/old"));
        request.httpMethod = "DELETE";

        QCOMPARE(UrlSession::shared().send(request).statusCode, 204);
        const QList<RecordedRequest> requests = backend.requests();
        QCOMPARE(requests.size(), 2);
        QCOMPARE(requests.at(1).method, QByteArray("DELETE"));
        QCOMPARE(requests.at(1).path, QStringLiteral("/v0/new"));
    }

    void shouldRefuseSchemesOtherThanHttp()
    {
        UrlRequest request;
        request.url = QUrl(QStringLiteral("file:///etc/hostname"));
        QVERIFY_THROWS_EXCEPTION(UrlSessionError, UrlSession::shared().send(request));
    }
};

TOLVANE_TEST_MAIN(UrlSessionTest)
#include "UrlSessionTest.moc"
