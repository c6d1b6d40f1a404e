#include "networking/APIClient.h"

#include "LogFile.h"
#include "TokenProviders.h"
#include "networking/APIErrorMessageEnum.h"
#include "networking/EmptyBody.h"
#include "platform/AppPaths.h"
#include "support/TestMain.h"
#include "support/http/FakeBackend.h"
#include "wire/JSONObjectReader.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(APIError)
Q_DECLARE_METATYPE(FakeResponse)

namespace QTest {
template <> char* toString(const APIError& error)
{
    return qstrdup(error.debugDescription().toUtf8().constData());
}
} // namespace QTest

namespace {

struct TaskDTO {
    QString tasId;
    QString tasTitle;
    bool tasDone = false;
    QDateTime tasDate;

    static TaskDTO fromJson(const QJsonValue& json)
    {
        const JSONObjectReader reader(json);
        return {reader.string(QLatin1String("tasId")), reader.string(QLatin1String("tasTitle")),
            reader.boolean(QLatin1String("tasDone")), reader.date(QLatin1String("tasDate"))};
    }

    QJsonValue toJson() const
    {
        return QJsonObject {{QStringLiteral("tasId"), tasId}, {QStringLiteral("tasTitle"), tasTitle},
            {QStringLiteral("tasDone"), tasDone}, {QStringLiteral("tasDate"), JSONCoding::encodeDate(tasDate)}};
    }
};

struct BrokenBody {
    QJsonValue toJson() const
    {
        return QJsonObject {{QStringLiteral("ratio"), std::numeric_limits<double>::quiet_NaN()}};
    }
};

const QDateTime nineUtc(QDate(2026, 11, 21), QTime(9, 0), Qt::UTC);

QJsonObject taskJson(const QString& id, const QString& title, bool done)
{
    return TaskDTO {id, title, done, nineUtc}.toJson().toObject();
}

// Runs call and returns the APIError it throws; fails the test when it throws nothing.
template <typename Call> std::optional<APIError> errorOf(Call call)
{
    try {
        call();
    } catch (const APIError& error) {
        return error;
    }
    return std::nullopt;
}

} // namespace

class APIClientTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<FakeBackend> m_backend;
    std::shared_ptr<FixedTokenProvider> m_tokens;
    std::unique_ptr<LogFile> m_log;
    // From where the log stood when these tests began: other tests of the session log too.
    std::unique_ptr<LogFile> m_thisRun;

    APIClient client(std::shared_ptr<AuthTokenProvider> tokens = nullptr, QUrl base = {}) const
    {
        return APIClient(
            base.isEmpty() ? m_backend->baseURL() : base, tokens ? tokens : m_tokens, UrlSession::shared(), true);
    }

    QString endpoint(const QString& method, const QString& pathAndQuery) const
    {
        return method + QLatin1Char(' ') + m_backend->baseURL().toString() + pathAndQuery;
    }

    // The records appended since the test began, each checked against the record format.
    QList<QRegularExpressionMatch> newRecords() const
    {
        const auto records = LogFile::records(m_log->appended());
        if (!records)
            qWarning("the network log holds a malformed record");
        return records.value_or(QList<QRegularExpressionMatch> {QRegularExpressionMatch()});
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Outside the private desktop session the log would land in the developer's own data.
        if (qEnvironmentVariableIsEmpty("TOLVANE_SESSION_ROOT"))
            QSKIP("run inside scripts/with-desktop-session");
        m_thisRun = std::make_unique<LogFile>(
            AppPaths::applicationSupportDirectory() + QStringLiteral("/Tolvane/Logs/network.log"));
    }

    void init()
    {
        m_backend = std::make_unique<FakeBackend>();
        m_tokens = std::make_shared<FixedTokenProvider>(m_backend->bearerToken());
        m_log = std::make_unique<LogFile>(
            AppPaths::applicationSupportDirectory() + QStringLiteral("/Tolvane/Logs/network.log"));
    }

    void cleanup() { m_backend.reset(); }

    void shouldSendAQuerylessGetAsIs()
    {
        m_backend->route("GET", QStringLiteral("/v0/tasks"),
            FakeResponse::json(200, QJsonArray {taskJson(QStringLiteral("T1"), QStringLiteral("Plan"), true)}));

        const QList<TaskDTO> tasks = client().get<QList<TaskDTO>>(QStringLiteral("/v0/tasks"));

        QCOMPARE(tasks.size(), 1);
        QCOMPARE(tasks.first().tasTitle, QStringLiteral("Plan"));
        QCOMPARE(tasks.first().tasDate, nineUtc);
        const QList<RecordedRequest> requests = m_backend->requests();
        QCOMPARE(requests.size(), 1);
        const RecordedRequest& wire = requests.first();
        QCOMPARE(wire.method, QByteArray("GET"));
        QCOMPARE(wire.target, QByteArray("/v0/tasks"));
        QVERIFY(!wire.query.has_value());
        QCOMPARE(wire.header("Content-Type"), QByteArray("application/json"));
        QCOMPARE(wire.header("Authorization"), QByteArray("Bearer ") + FakeBackend::defaultToken);
        QVERIFY(wire.body.isEmpty());
        QCOMPARE(m_tokens->calls.load(), 1);
    }

    void shouldPercentEncodeQueryItems()
    {
        m_backend->route("GET", QStringLiteral("/v0/daily-tasks"), FakeResponse::json(200, QJsonArray()));
        const QList<APIClient::QueryItem> items {{QStringLiteral("date"), QStringLiteral("2026-11-21")},
            {QStringLiteral("q"), QStringLiteral("a b&c=d+e#f/ñ")}};

        client().get<QJsonArray>(QStringLiteral("/v0/daily-tasks"), items);

        const RecordedRequest wire = m_backend->requests().value(0);
        QCOMPARE(wire.target, QByteArray("/v0/daily-tasks?date=2026-11-21&q=a%20b%26c%3Dd%2Be%23f/%C3%B1"));
        QCOMPARE(wire.queryItems(), items);
        const auto records = newRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first().captured(2),
            endpoint(QStringLiteral("GET"),
                QStringLiteral("/v0/daily-tasks?date=2026-11-21&q=a%20b%26c%3Dd%2Be%23f/%C3%B1")));
    }

    void shouldJoinBaseAndPathWithOneSlash_data()
    {
        QTest::addColumn<QString>("basePath");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("bare origin") << QString() << QStringLiteral("/v0/users") << QByteArray("/v0/users");
        QTest::newRow("trailing slash") << QStringLiteral("/") << QStringLiteral("/v0/users")
                                        << QByteArray("/v0/users");
        QTest::newRow("base path") << QStringLiteral("/api/") << QStringLiteral("/v0/users")
                                   << QByteArray("/api/v0/users");
        QTest::newRow("path without slash")
            << QStringLiteral("/api") << QStringLiteral("v0/users") << QByteArray("/api/v0/users");
        QTest::newRow("question mark is path") << QString() << QStringLiteral("/v0/a?b") << QByteArray("/v0/a%3Fb");
    }

    void shouldJoinBaseAndPathWithOneSlash()
    {
        QFETCH(QString, basePath);
        QFETCH(QString, path);
        QFETCH(QByteArray, target);
        m_backend->enqueue(FakeResponse::empty(204));
        QUrl base = m_backend->baseURL();
        base.setPath(basePath);

        client(nullptr, base).delete_(path);

        QCOMPARE(m_backend->requests().value(0).target, target);
    }

    void shouldSendEncodedBodies()
    {
        const TaskDTO sent {QStringLiteral("T9"), QStringLiteral("Écrire"), false, nineUtc};
        m_backend->route("POST", QStringLiteral("/v0/tasks"), [](const RecordedRequest& request, const QStringList&) {
            // Echo, so the answer proves the body arrived intact.
            FakeResponse echo;
            echo.status = 201;
            echo.body = request.body;
            return echo;
        });
        m_backend->route(
            "PUT", QStringLiteral("/v0/tasks/{id}"), [](const RecordedRequest& request, const QStringList& captures) {
                QJsonObject task = QJsonDocument::fromJson(request.body).object();
                task.insert(QStringLiteral("tasId"), captures.value(0));
                return FakeResponse::json(200, task);
            });
        m_backend->route("DELETE", QStringLiteral("/v0/tasks"), FakeResponse::empty(204));

        const TaskDTO created = client().post<TaskDTO>(QStringLiteral("/v0/tasks"), sent);
        const TaskDTO updated = client().put<TaskDTO>(QStringLiteral("/v0/tasks/T7"), sent);
        client().delete_(
            QStringLiteral("/v0/tasks"), QJsonObject {{QStringLiteral("ids"), QJsonArray {QStringLiteral("T9")}}});

        QCOMPARE(created.tasTitle, QStringLiteral("Écrire"));
        QCOMPARE(updated.tasId, QStringLiteral("T7"));
        const QList<RecordedRequest> requests = m_backend->requests();
        QCOMPARE(requests.size(), 3);
        const QByteArray json
            = R"({"tasDate":"2026-11-21T09:00:00Z","tasDone":false,"tasId":"T9","tasTitle":"Écrire"})";
        QCOMPARE(requests.at(0).method, QByteArray("POST"));
        QCOMPARE(requests.at(0).body, json);
        QCOMPARE(requests.at(1).method, QByteArray("PUT"));
        QCOMPARE(requests.at(1).body, json);
        QCOMPARE(requests.at(2).method, QByteArray("DELETE"));
        QCOMPARE(requests.at(2).body, QByteArray(R"({"ids":["T9"]})"));
        for (const RecordedRequest& request : requests) {
            QCOMPARE(request.header("Content-Type"), QByteArray("application/json"));
            QCOMPARE(request.header("Content-Length"), QByteArray::number(request.body.size()));
            QVERIFY(!request.query.has_value());
        }
        // The body is logged as sent.
        const auto records = newRecords();
        QCOMPARE(records.size(), 3);
        QCOMPARE(records.at(0).captured(3).toUtf8(), json);
    }

    void shouldAcceptEmptySuccessOnlyWhereNothingIsDecoded()
    {
        m_backend->route("PATCH", QStringLiteral("/v0/tasks/T1/toggle"), FakeResponse::empty(204));
        m_backend->route("DELETE", QStringLiteral("/v0/tasks/T1"), FakeResponse::empty(200));
        m_backend->route("GET", QStringLiteral("/v0/tasks/T1"), FakeResponse::empty(200));
        m_backend->route("POST", QStringLiteral("/v0/tasks"), FakeResponse::empty(204));
        m_backend->route("PUT", QStringLiteral("/v0/tasks/T1"), FakeResponse::empty(201));

        client().patch(QStringLiteral("/v0/tasks/T1/toggle"));
        client().delete_(QStringLiteral("/v0/tasks/T1"));
        const APIError empty = APIError::decoding(QStringLiteral("The given data was not valid JSON: it is empty."));
        QCOMPARE(errorOf([&] { client().get<TaskDTO>(QStringLiteral("/v0/tasks/T1")); }), empty);
        QCOMPARE(errorOf([&] { client().post<TaskDTO>(QStringLiteral("/v0/tasks"), EmptyBody {}); }), empty);
        QCOMPARE(errorOf([&] { client().put<TaskDTO>(QStringLiteral("/v0/tasks/T1"), EmptyBody {}); }), empty);

        const QList<RecordedRequest> requests = m_backend->requests();
        QCOMPARE(requests.size(), 5);
        QCOMPARE(requests.at(0).method, QByteArray("PATCH"));
        QVERIFY(requests.at(0).body.isEmpty());
        QCOMPARE(requests.at(1).method, QByteArray("DELETE"));
        QVERIFY(requests.at(1).body.isEmpty());
        QCOMPARE(requests.at(3).body, QByteArray("{}"));
        // Every exchange is logged, the decoding failures included (they fail after the log).
        QCOMPARE(newRecords().size(), 5);
    }

    void shouldMapStatusesToErrors_data()
    {
        QTest::addColumn<FakeResponse>("response");
        QTest::addColumn<APIError>("error");
        QTest::addColumn<QString>("message");
        QTest::newRow("400 plain text") << FakeResponse::text(400, "prjName vacío")
                                        << APIError::badRequest(QStringLiteral("prjName vacío"))
                                        << QStringLiteral("prjName vacío");
        QTest::newRow("400 not UTF-8") << FakeResponse::text(400, "\xff\xfe") << APIError::badRequest(QString())
                                       << QString();
        QTest::newRow("401") << FakeResponse::text(401, "expired") << APIError::unauthorized()
                             << QStringLiteral("no autorizado");
        QTest::newRow("403") << FakeResponse::text(403, "not yours") << APIError::forbidden(QStringLiteral("not yours"))
                             << QStringLiteral("not yours");
        QTest::newRow("404") << FakeResponse::json(404, QJsonObject()) << APIError::notFound()
                             << QStringLiteral("tarea no encontrada");
        QTest::newRow("409") << FakeResponse::text(409, "duplicate") << APIError::server(409)
                             << QStringLiteral("error del servidor (409)");
        QTest::newRow("500") << FakeResponse::empty(500) << APIError::server(500)
                             << QStringLiteral("error del servidor (500)");
        QTest::newRow("302 without location")
            << FakeResponse::empty(302) << APIError::server(302) << QStringLiteral("error del servidor (302)");
    }

    void shouldMapStatusesToErrors()
    {
        QFETCH(FakeResponse, response);
        QFETCH(APIError, error);
        QFETCH(QString, message);
        m_backend->route("PATCH", QStringLiteral("/v0/tasks/T1"), response);

        const auto thrown = errorOf([&] { client().patch(QStringLiteral("/v0/tasks/T1")); });

        QCOMPARE(thrown, error);
        QCOMPARE(APIErrorMessageEnum::message(*thrown, QStringLiteral("tarea no encontrada")), message);
        // No retry, whatever the status.
        QCOMPARE(m_backend->requests().size(), 1);
        const auto records = newRecords();
        QCOMPARE(records.size(), 1);
        const QString body = QString::fromUtf8(response.body);
        QCOMPARE(records.first().captured(4),
            QString::number(response.status) + QLatin1Char(' ')
                + (error == APIError::badRequest(QString()) ? QStringLiteral("-") : body));
    }

    void shouldFilterOnlySuccessfulResponsesInTheLog()
    {
        const QJsonArray tasks {taskJson(QStringLiteral("T1"), QStringLiteral("Plan"), true),
            taskJson(QStringLiteral("T2"), QStringLiteral("Call"), false)};
        m_backend->enqueue(FakeResponse::json(200, tasks));
        m_backend->enqueue(FakeResponse::json(404, tasks));

        client().get<QJsonArray>(QStringLiteral("/v0/tasks"));
        QVERIFY(errorOf([&] { client().get<QJsonArray>(QStringLiteral("/v0/tasks")); }).has_value());

        const auto records = newRecords();
        QCOMPARE(records.size(), 2);
        QCOMPARE(records.at(0).captured(2), endpoint(QStringLiteral("GET"), QStringLiteral("/v0/tasks")));
        QCOMPARE(records.at(0).captured(3), QStringLiteral("-"));
        QCOMPARE(records.at(0).captured(4), QStringLiteral(R"(200 [{"tasId":"T1"},{"tasId":"T2"}])"));
        QCOMPARE(
            records.at(1).captured(4), QStringLiteral("404 ") + QString::fromUtf8(FakeResponse::json(404, tasks).body));
    }

    void shouldReportABodyThatDoesNotDecode()
    {
        QJsonObject task = taskJson(QStringLiteral("T1"), QStringLiteral("Plan"), true);
        task.insert(QStringLiteral("tasDone"), QStringLiteral("yes"));
        m_backend->enqueue(FakeResponse::json(200, QJsonArray {task}));

        const auto thrown = errorOf([&] { client().get<QList<TaskDTO>>(QStringLiteral("/v0/tasks")); });

        QCOMPARE(thrown,
            APIError::decoding(QStringLiteral("[0]: \"tasDone\": expected a boolean but found a string instead.")));
    }

    void shouldReportADroppedConnectionAsTransport()
    {
        m_backend->enqueue(FakeResponse::dropped());

        const auto thrown = errorOf([&] { client().get<QJsonValue>(QStringLiteral("/v0/users/me")); });

        QCOMPARE(thrown, APIError::transport(QStringLiteral("Empty reply from server")));
        QCOMPARE(m_backend->requests().size(), 1);
        const auto records = newRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first().captured(4), QStringLiteral("transport error: Empty reply from server"));
    }

    void shouldReportAnUnreachableBackendAsTransport()
    {
        // A port that was just in use and is now closed: the connection is refused.
        const QUrl closed = m_backend->baseURL();
        m_backend.reset();

        const auto thrown = errorOf([&] { client(m_tokens, closed).get<QJsonValue>(QStringLiteral("/v0/users")); });

        QVERIFY(thrown.has_value());
        QCOMPARE(thrown->kind(), APIError::Case::transport);
        QVERIFY2(thrown->text().contains(QLatin1String("Failed to connect")), qPrintable(thrown->text()));
        QCOMPARE(newRecords().value(0).captured(4), QStringLiteral("transport error: ") + thrown->text());
        m_backend = std::make_unique<FakeBackend>();
    }

    void shouldWaitForASlowBackend()
    {
        m_backend->enqueue(FakeResponse::json(200, QJsonValue(true)).delayed(std::chrono::milliseconds(300)));
        QCOMPARE(client().get<QJsonValue>(QStringLiteral("/v0/slow")), QJsonValue(true));
    }

    void shouldSendNothingWhenTheProviderFails()
    {
        const auto thrown = errorOf(
            [&] { client(std::make_shared<ThrowingTokenProvider>()).get<QJsonValue>(QStringLiteral("/v0/users")); });

        QCOMPARE(thrown, APIError::unauthorized());
        QVERIFY(m_backend->requests().isEmpty());
        QCOMPARE(m_log->appended(), QString());
    }

    void shouldRefuseAnUnbuildableURLBeforeAskingForAToken()
    {
        const auto thrown = errorOf(
            [&] { client(nullptr, QUrl(QStringLiteral("backend/without/scheme"))).patch(QStringLiteral("/v0/x")); });

        QCOMPARE(thrown, APIError::badRequest(QStringLiteral("URL inválida")));
        QCOMPARE(m_tokens->calls.load(), 0);
        QCOMPARE(m_log->appended(), QString());
    }

    void shouldRefuseABodyThatCannotBeEncoded()
    {
        const auto thrown = errorOf([&] { client().post<QJsonValue>(QStringLiteral("/v0/tasks"), BrokenBody {}); });

        QCOMPARE(thrown, APIError::badRequest(QStringLiteral("no se pudo codificar la solicitud")));
        // The token comes first, the body after it; nothing goes out and nothing is logged.
        QCOMPARE(m_tokens->calls.load(), 1);
        QVERIFY(m_backend->requests().isEmpty());
        QCOMPARE(m_log->appended(), QString());
    }

    void shouldGiveUpOnAProviderThatNeverAnswers()
    {
        auto silent = std::make_shared<SilentTokenProvider>();
        QElapsedTimer elapsed;
        elapsed.start();

        const auto thrown = errorOf([&] { client(silent).delete_(QStringLiteral("/v0/tasks/T1")); });

        // The limit is 15 seconds, not less.
        QVERIFY(elapsed.elapsed() >= 14900);
        QCOMPARE(thrown, APIError::transport(QStringLiteral("tiempo de espera agotado al autenticar")));
        QVERIFY(m_backend->requests().isEmpty());
        const auto records = newRecords();
        QCOMPARE(records.size(), 1);
        QCOMPARE(records.first().captured(2), endpoint(QStringLiteral("DELETE"), QStringLiteral("/v0/tasks/T1")));
        QCOMPARE(records.first().captured(3), QStringLiteral("-"));
        QCOMPARE(records.first().captured(4), QStringLiteral("auth timeout"));
        silent->release();
    }

    // Last: everything the tests above logged, and only that.
    void shouldHaveWrittenOnlyWellFormedRecordsWithoutPrivateMembers()
    {
        const auto records = LogFile::records(m_thisRun->appended());
        QVERIFY2(records.has_value(), "a record does not follow the format");
        QVERIFY(records->size() >= 15);
        static const QRegularExpression privateKey(
            QStringLiteral("\"[^\"]*(title|done|date)[^\"]*\"\\s*:"), QRegularExpression::CaseInsensitiveOption);
        for (const QRegularExpressionMatch& record : *records) {
            const QString response = record.captured(4);
            if (response.startsWith(QLatin1Char('2')))
                QVERIFY2(!privateKey.match(response).hasMatch(), qPrintable(response));
        }
    }
};

TOLVANE_TEST_MAIN(APIClientTest)
#include "APIClientTest.moc"
