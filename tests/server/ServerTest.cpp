#include "Api.h"
#include "Database.h"
#include "HttpFetch.h"
#include "HttpServer.h"
#include "Log.h"
#include "Migrations.h"
#include "ServerClient.h"
#include "TokenVerifier.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/postgres/PostgresCluster.h"

#include <QUuid>

#include <thread>

namespace {

const QString clientId = QStringLiteral("tolvane-server-test");

// The server as main() puts it together, on a port of its own choosing.
struct RunningServer {
    ConnectionPool pool;
    TokenVerifier verifier;
    Api api;
    HttpServer server;

    RunningServer(const QString& databaseUrl, const LocalIdentityProvider& provider, HttpServer::Options options)
        : pool(databaseUrl.toStdString(), 4)
        , verifier(provider.discoveryURL().toString().toStdString(), {provider.issuer().toStdString()},
              {clientId.toStdString()}, [](const std::string& url) { return httpGet(url); })
        , api(pool, verifier)
        , server(options, [this](const ApiRequest& request) { return api.handle(request); })
    {
        auto connection = pool.acquire();
        applyMigrations(*connection);
        server.start();
    }
};

QJsonObject projectBody(const QString& userId, const QString& name)
{
    return {{QStringLiteral("prjUserId"), userId}, {QStringLiteral("prjName"), name},
        {QStringLiteral("prjDescription"), QStringLiteral("notes")}, {QStringLiteral("prjShowEveryDay"), false}};
}

QJsonObject listBody(const QString& projectId, const QString& name, bool isDefault)
{
    return {{QStringLiteral("prjId"), projectId}, {QStringLiteral("talName"), name},
        {QStringLiteral("talDescription"), QString()}, {QStringLiteral("talIsDefault"), isDefault}};
}

QJsonObject eventBody(const QString& title)
{
    return {{QStringLiteral("evtTitle"), title},
        {QStringLiteral("evtSchedule"), QStringLiteral("2026-03-02T09:30:00Z")},
        {QStringLiteral("evtDurationMinutes"), 45}, {QStringLiteral("evtHasAlarm"), true},
        {QStringLiteral("evtDescription"), QStringLiteral("room 4")},
        {QStringLiteral("evtRepeat"), QStringLiteral("every_week")},
        {QStringLiteral("evtCustomRepeat"), QStringLiteral("mon|wed")}};
}

} // namespace

class ServerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PostgresCluster> m_cluster;
    QString m_databaseUrl;
    std::shared_ptr<SettableClock> m_clock;
    std::unique_ptr<LocalIdentityProvider> m_provider;
    std::unique_ptr<RunningServer> m_server;
    QString m_ada;
    QString m_bob;

    unsigned short port() const { return m_server->server.port(); }

    Reply send(
        const std::string& method, const std::string& target, const QJsonObject& body = {}, const QString& token = {})
    {
        return call(port(), method, target, token.isEmpty() ? m_ada : token, body);
    }

    static HttpServer::Options options()
    {
        HttpServer::Options options;
        options.port = 0;
        options.workers = 4;
        options.headerTimeout = std::chrono::seconds(2);
        options.bodyTimeout = std::chrono::seconds(2);
        return options;
    }

    QString token(const QString& subject)
    {
        return m_provider->idTokenFor({subject, subject + QStringLiteral("@example.org"), subject, {}, {}});
    }

    // The caller's user id, as registration returns it.
    QString userId(const QString& token)
    {
        const Reply reply = send("POST", "/v0/users",
            {{QStringLiteral("usrFirstName"), QStringLiteral("Ada")},
                {QStringLiteral("usrLastName"), QStringLiteral("L")},
                {QStringLiteral("usrEmail"), QStringLiteral("a@example.org")}},
            token);
        return reply.object().value(QStringLiteral("usrId")).toString();
    }

    QString createProject(const QString& token, const QString& name)
    {
        const Reply reply = send("POST", "/v0/projects", projectBody(userId(token), name), token);
        return reply.object().value(QStringLiteral("prjId")).toString();
    }

    int rowCount(const char* table)
    {
        auto connection = m_server->pool.acquire();
        pqxx::work db(*connection);
        return db.exec(std::string("SELECT count(*) FROM ") + table)[0][0].as<int>();
    }

private Q_SLOTS:
    void initTestCase()
    {
        slog::setLevel(slog::Level::warning);
        m_cluster = std::make_unique<PostgresCluster>();
        QVERIFY2(m_cluster->isRunning(), qPrintable(m_cluster->error()));
        m_databaseUrl = m_cluster->createDatabase(QStringLiteral("tolvane"));
        QVERIFY2(!m_databaseUrl.isEmpty(), qPrintable(m_cluster->error()));
        m_clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
        m_provider = std::make_unique<LocalIdentityProvider>(clientId, QString(), m_clock);
        m_server = std::make_unique<RunningServer>(m_databaseUrl, *m_provider, options());
        m_ada = token(QStringLiteral("ada"));
        m_bob = token(QStringLiteral("bob"));
    }

    void cleanupTestCase()
    {
        m_server.reset();
        m_cluster.reset();
    }

    void health_answersWithoutAToken()
    {
        const Reply reply = call(port(), "GET", "/v0/health");
        QCOMPARE(reply.status, 200);
        QCOMPARE(reply.object(),
            (QJsonObject {{QStringLiteral("status"), QStringLiteral("ok")},
                {QStringLiteral("version"), QStringLiteral(TOLVANE_VERSION)}}));
    }

    void users_registrationIsStableAndProfilesUpdate()
    {
        const QString carol = token(QStringLiteral("carol"));
        const QJsonObject profile {{QStringLiteral("usrFirstName"), QStringLiteral("Carol")},
            {QStringLiteral("usrLastName"), QStringLiteral("Shaw")},
            {QStringLiteral("usrEmail"), QStringLiteral("c@x.org")}};
        const Reply first = send("POST", "/v0/users", profile, carol);
        QCOMPARE(first.status, 201);
        QVERIFY(!QUuid::fromString(first.object().value(QStringLiteral("usrId")).toString()).isNull());
        QCOMPARE(first.object().value(QStringLiteral("usrIsGoogleAccount")), QJsonValue(true));
        const Reply again = send("POST", "/v0/users", profile, carol);
        QCOMPARE(again.status, 200);
        QCOMPARE(again.object(), first.object());

        const std::string path = "/v0/users/" + first.object().value(QStringLiteral("usrId")).toString().toStdString();
        QJsonObject changed = profile;
        changed.insert(QStringLiteral("usrLastName"), QStringLiteral("Shaw-Smith"));
        const Reply updated = send("PUT", path, changed, carol);
        QCOMPARE(updated.status, 200);
        QCOMPARE(updated.object().value(QStringLiteral("usrLastName")), QJsonValue(QStringLiteral("Shaw-Smith")));
        // Another user's record is not there for anyone else.
        QCOMPARE(send("PUT", path, changed, m_bob).status, 404);
        QCOMPARE(send("POST", "/v0/users", {{QStringLiteral("usrFirstName"), 1}}, carol).status, 400);
    }

    void support_storesTheMessage()
    {
        const Reply reply = send("POST", "/v0/support", {{QStringLiteral("supMessage"), QStringLiteral("help")}});
        QCOMPARE(reply.status, 201);
        const QJsonObject message = reply.object();
        QCOMPARE(message.value(QStringLiteral("supUserId")).toString(), userId(m_ada));
        QCOMPARE(message.value(QStringLiteral("supType")), QJsonValue(QStringLiteral("support")));
        QVERIFY(QDateTime::fromString(message.value(QStringLiteral("supDate")).toString(), Qt::ISODate).isValid());
        QVERIFY(message.value(QStringLiteral("supDate")).toString().endsWith(QLatin1Char('Z')));
        QCOMPARE(send("POST", "/v0/support", {{QStringLiteral("supMessage"), QStringLiteral("  ")}}).status, 400);
    }

    void projects_lifecycle()
    {
        const QString owner = userId(m_ada);
        const Reply created = send("POST", "/v0/projects", projectBody(owner, QStringLiteral("Garden")));
        QCOMPARE(created.status, 201);
        const QString id = created.object().value(QStringLiteral("prjId")).toString();
        QCOMPARE(id, id.toUpper());
        QCOMPARE(created.object().value(QStringLiteral("prjUserId")).toString(), owner);
        const std::string path = "/v0/projects/" + id.toStdString();
        QCOMPARE(send("GET", path).object(), created.object());

        QJsonObject update = projectBody(owner, QStringLiteral("Orchard"));
        update.remove(QStringLiteral("prjUserId"));
        update.insert(QStringLiteral("prjShowEveryDay"), true);
        const Reply updated = send("PUT", path, update);
        QCOMPARE(updated.status, 200);
        QCOMPARE(updated.object().value(QStringLiteral("prjName")), QJsonValue(QStringLiteral("Orchard")));
        QCOMPARE(updated.object().value(QStringLiteral("prjShowEveryDay")), QJsonValue(true));

        const QJsonArray listed = send("GET", "/v0/projects").array();
        QVERIFY(listed.contains(updated.object()));

        QCOMPARE(send("DELETE", path).status, 204);
        QCOMPARE(send("GET", path).status, 404);
        QCOMPARE(send("DELETE", path).status, 404);
    }

    void projects_refusals_data()
    {
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("status");
        QTest::newRow("blank name")
            << QByteArray("POST") << QByteArray("/v0/projects")
            << QByteArray(
                   "{\"prjUserId\":\"$USER\",\"prjName\":\" \",\"prjDescription\":\"\",\"prjShowEveryDay\":false}")
            << 400;
        QTest::newRow("another owner") << QByteArray("POST") << QByteArray("/v0/projects")
                                       << QByteArray(
                                              "{\"prjUserId\":\"0F5C6D1E-7A2B-4C3D-9E8F-1A2B3C4D5E6F\",\"prjName\":"
                                              "\"x\",\"prjDescription\":\"\",\"prjShowEveryDay\":false}")
                                       << 400;
        QTest::newRow("unknown key") << QByteArray("POST") << QByteArray("/v0/projects")
                                     << QByteArray("{\"prjUserId\":\"$USER\",\"prjName\":\"x\",\"prjDescription\":\"\","
                                                   "\"prjShowEveryDay\":false,\"admin\":true}")
                                     << 400;
        QTest::newRow("flag as text")
            << QByteArray("POST") << QByteArray("/v0/projects")
            << QByteArray(
                   "{\"prjUserId\":\"$USER\",\"prjName\":\"x\",\"prjDescription\":\"\",\"prjShowEveryDay\":\"no\"}")
            << 400;
        QTest::newRow("not json") << QByteArray("POST") << QByteArray("/v0/projects") << QByteArray("{\"prjName\":")
                                  << 400;
        QTest::newRow("array") << QByteArray("POST") << QByteArray("/v0/projects") << QByteArray("[]") << 400;
        QTest::newRow("unknown id") << QByteArray("GET")
                                    << QByteArray("/v0/projects/6F1C0A56-3C0B-4B8E-9E36-2B7B5C1F0D11") << QByteArray()
                                    << 404;
        QTest::newRow("id not a uuid") << QByteArray("GET") << QByteArray("/v0/projects/abc") << QByteArray() << 404;
        QTest::newRow("unknown resource") << QByteArray("GET") << QByteArray("/v0/nothing") << QByteArray() << 404;
        QTest::newRow("method") << QByteArray("PATCH")
                                << QByteArray("/v0/projects/6F1C0A56-3C0B-4B8E-9E36-2B7B5C1F0D11") << QByteArray()
                                << 405;
    }

    void projects_refusals()
    {
        QFETCH(QByteArray, method);
        QFETCH(QByteArray, path);
        QFETCH(QByteArray, body);
        QFETCH(int, status);
        const int before = rowCount("projects");
        Connection connection(port());
        const Reply reply = connection.send(method.toStdString(), path.toStdString(), m_ada,
            QByteArray(body).replace("$USER", userId(m_ada).toLatin1()), false);
        QCOMPARE(reply.status, status);
        QCOMPARE(rowCount("projects"), before);
    }

    void projects_withListsCannotBeDeleted()
    {
        const QString project = createProject(m_ada, QStringLiteral("Busy"));
        const Reply list = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("Inbox"), true));
        QCOMPARE(list.status, 201);
        const std::string path = "/v0/projects/" + project.toStdString();
        QCOMPARE(send("DELETE", path).status, 409);
        QCOMPARE(send("GET", path).status, 200);
        QCOMPARE(
            send("DELETE", "/v0/task-lists/" + list.object().value(QStringLiteral("talId")).toString().toStdString())
                .status,
            204);
        QCOMPARE(send("DELETE", path).status, 204);
    }

    void taskLists_keepOneDefaultPerProject()
    {
        const QString project = createProject(m_ada, QStringLiteral("Lists"));
        const QJsonObject a = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("A"), true)).object();
        const QJsonObject b = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("B"), false)).object();
        const std::string query = "/v0/task-lists?projectId=" + project.toStdString();
        auto defaults = [&] {
            QStringList names;
            for (const QJsonValue& list : send("GET", query).array()) {
                if (list[QStringLiteral("talIsDefault")].toBool())
                    names.append(list[QStringLiteral("talName")].toString());
            }
            return names;
        };
        QCOMPARE(defaults(), QStringList {QStringLiteral("A")});
        const Reply madeDefault
            = send("PUT", "/v0/task-lists/" + b.value(QStringLiteral("talId")).toString().toStdString(),
                {{QStringLiteral("talName"), QStringLiteral("B")}, {QStringLiteral("talDescription"), QString()},
                    {QStringLiteral("talIsDefault"), true}});
        QCOMPARE(madeDefault.status, 200);
        QCOMPARE(defaults(), QStringList {QStringLiteral("B")});
        // Listed in the order they were made.
        const QJsonArray lists = send("GET", query).array();
        QCOMPARE(lists.size(), 2);
        QCOMPARE(lists.at(0)[QStringLiteral("talId")], a.value(QStringLiteral("talId")));

        QCOMPARE(send("POST", "/v0/task-lists",
                     listBody(QUuid::createUuid().toString(QUuid::WithoutBraces), QStringLiteral("Orphan"), false))
                     .status,
            400);
        QCOMPARE(send("GET", "/v0/task-lists").status, 400);
        QCOMPARE(send("GET", "/v0/task-lists?projectId=nope").status, 400);
    }

    void tasks_lifecycleAndCompletedDeletion()
    {
        const QString project = createProject(m_ada, QStringLiteral("Tasks"));
        const QString list = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("L"), true))
                                 .object()[QStringLiteral("talId")]
                                 .toString();
        const QJsonObject body {{QStringLiteral("prjId"), project}, {QStringLiteral("talId"), list},
            {QStringLiteral("tasTitle"), QStringLiteral("Prune")},
            {QStringLiteral("tasDueDate"), QStringLiteral("2026-05-01T10:00:00+02:00")},
            {QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent_important")}};
        const Reply created = send("POST", "/v0/tasks", body);
        QCOMPARE(created.status, 201);
        const QJsonObject task = created.object();
        QCOMPARE(task.value(QStringLiteral("tasIsDone")), QJsonValue(false));
        // Back in UTC with whole seconds, as the client reads dates.
        QCOMPARE(task.value(QStringLiteral("tasDueDate")), QJsonValue(QStringLiteral("2026-05-01T08:00:00Z")));
        QCOMPARE(task.value(QStringLiteral("tasEisenhowerTag")), QJsonValue(QStringLiteral("urgent_important")));

        const std::string path = "/v0/tasks/" + task.value(QStringLiteral("tasId")).toString().toStdString();
        const Reply done = send(
            "PUT", path, {{QStringLiteral("tasTitle"), QStringLiteral("Prune")}, {QStringLiteral("tasIsDone"), true}});
        QCOMPARE(done.status, 200);
        QVERIFY(done.object().value(QStringLiteral("tasDueDate")).isNull());
        QVERIFY(done.object().value(QStringLiteral("tasEisenhowerTag")).isNull());
        QJsonObject open = body;
        open.insert(QStringLiteral("tasTitle"), QStringLiteral("Water"));
        open.remove(QStringLiteral("tasDueDate"));
        const QString openId = send("POST", "/v0/tasks", open).object()[QStringLiteral("tasId")].toString();

        const std::string listPath = "/v0/tasks?taskListId=" + list.toStdString();
        QCOMPARE(send("GET", listPath).array().size(), 2);
        const std::string completed = "/v0/task-lists/" + list.toStdString() + "/completed-tasks";
        QCOMPARE(send("DELETE", completed, {{QStringLiteral("confirm"), false}}).status, 400);
        QCOMPARE(send("GET", listPath).array().size(), 2);
        QCOMPARE(send("DELETE", completed, {{QStringLiteral("confirm"), true}}).status, 204);
        const QJsonArray left = send("GET", listPath).array();
        QCOMPARE(left.size(), 1);
        QCOMPARE(left.at(0)[QStringLiteral("tasId")].toString(), openId);

        QJsonObject wrong = body;
        wrong.insert(QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent"));
        QCOMPARE(send("POST", "/v0/tasks", wrong).status, 400);
        wrong = body;
        wrong.insert(QStringLiteral("prjId"), createProject(m_ada, QStringLiteral("Other")));
        QCOMPARE(send("POST", "/v0/tasks", wrong).status, 400);
        wrong = body;
        wrong.insert(QStringLiteral("tasDueDate"), QStringLiteral("tomorrow"));
        QCOMPARE(send("POST", "/v0/tasks", wrong).status, 400);
        // The schedule keys are optional; a body without them makes a task without a schedule,
        // and each is checked when present.
        QCOMPARE(task.value(QStringLiteral("tasOccurrence")), QJsonValue(1));
        QVERIFY(task.value(QStringLiteral("tasRecurrence")).isNull());
        QCOMPARE(task.value(QStringLiteral("tasDueHasTime")), QJsonValue(false));
        const QJsonObject monthly {{QStringLiteral("frequency"), QStringLiteral("monthly")},
            {QStringLiteral("monthDay"), -1}, {QStringLiteral("anchor"), QStringLiteral("completion")}};
        for (const auto& [key, value] :
            {std::pair {QStringLiteral("tasRecurrence"),
                 QJsonValue(QJsonObject {{QStringLiteral("frequency"), QStringLiteral("hourly")}})},
                std::pair {QStringLiteral("tasRecurrence"), QJsonValue(QStringLiteral("weekly"))},
                std::pair {QStringLiteral("tasOccurrence"), QJsonValue(0)},
                std::pair {QStringLiteral("tasReminderMinutesBefore"), QJsonValue(-5)},
                std::pair {QStringLiteral("tasCompletedAt"), QJsonValue(QStringLiteral("soon"))}}) {
            wrong = body;
            wrong.insert(key, value);
            QCOMPARE(send("POST", "/v0/tasks", wrong).status, 400);
        }
        QCOMPARE(send("GET", listPath).array().size(), 1);
        QJsonObject scheduled = body;
        scheduled.insert(QStringLiteral("tasRecurrence"), monthly);
        scheduled.insert(QStringLiteral("tasReminderMinutesBefore"), 0);
        scheduled.insert(QStringLiteral("tasDueHasTime"), true);
        const QJsonObject made = send("POST", "/v0/tasks", scheduled).object();
        QCOMPARE(made.value(QStringLiteral("tasRecurrence")).toObject(),
            (QJsonObject {{QStringLiteral("frequency"), QStringLiteral("monthly")}, {QStringLiteral("interval"), 1},
                {QStringLiteral("monthDay"), -1}, {QStringLiteral("anchor"), QStringLiteral("completion")}}));
        QCOMPARE(made.value(QStringLiteral("tasReminderMinutesBefore")), QJsonValue(0));
        QCOMPARE(made.value(QStringLiteral("tasDueHasTime")), QJsonValue(true));
        QCOMPARE(
            send("DELETE", "/v0/tasks/" + made.value(QStringLiteral("tasId")).toString().toStdString()).status, 204);

        // A list goes with its tasks.
        QCOMPARE(send("DELETE", "/v0/task-lists/" + list.toStdString()).status, 204);
        QCOMPARE(send("GET", "/v0/tasks/" + openId.toStdString()).status, 404);
    }

    void tasks_titlesComeBackExactly()
    {
        const QString project = createProject(m_ada, QStringLiteral("Text"));
        const QString list = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("L"), true))
                                 .object()[QStringLiteral("talId")]
                                 .toString();
        const QString title = QStringLiteral("say \"hi\" \\ back\n\ttab \u0001 \u00f1 \U0001F600 </script>");
        const Reply created = send("POST", "/v0/tasks",
            {{QStringLiteral("prjId"), project}, {QStringLiteral("talId"), list}, {QStringLiteral("tasTitle"), title}});
        QCOMPARE(created.status, 201);
        QCOMPARE(created.object()[QStringLiteral("tasTitle")].toString(), title);
        const QJsonArray listed = send("GET", "/v0/tasks?taskListId=" + list.toStdString()).array();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.at(0).toObject(), created.object());
    }

    void dailyTasks_byUtcDayAndToggle()
    {
        const QString owner = userId(m_ada);
        auto create = [&](const char* date, const char* title) {
            return send("POST", "/v0/daily-tasks",
                {{QStringLiteral("tasUserId"), owner}, {QStringLiteral("tasDate"), QLatin1String(date)},
                    {QStringLiteral("tasTitle"), QLatin1String(title)}});
        };
        const Reply late = create("2026-04-10T23:30:00Z", "late");
        QCOMPARE(late.status, 201);
        QCOMPARE(create("2026-04-11T01:30:00+02:00", "early").status, 201); // 23:30 UTC the day before
        QCOMPARE(create("2026-04-11T00:00:00Z", "next").status, 201);
        QStringList titles;
        for (const QJsonValue& item : send("GET", "/v0/daily-tasks?date=2026-04-10").array())
            titles.append(item[QStringLiteral("tasTitle")].toString());
        QCOMPARE(titles, (QStringList {QStringLiteral("late"), QStringLiteral("early")}));

        const std::string path = "/v0/daily-tasks/" + late.object()[QStringLiteral("tasId")].toString().toStdString();
        QCOMPARE(send("PATCH", path + "/toggle").object()[QStringLiteral("tasIsDone")], QJsonValue(true));
        QCOMPARE(send("PATCH", path + "/toggle").object()[QStringLiteral("tasIsDone")], QJsonValue(false));
        const Reply renamed = send("PUT", path, {{QStringLiteral("tasTitle"), QStringLiteral("later")}});
        QCOMPARE(renamed.object()[QStringLiteral("tasTitle")], QJsonValue(QStringLiteral("later")));
        QCOMPARE(renamed.object()[QStringLiteral("tasDate")], QJsonValue(QStringLiteral("2026-04-10T23:30:00Z")));
        QCOMPARE(send("PUT", path, {{QStringLiteral("tasTitle"), QStringLiteral(" ")}}).status, 400);
        QCOMPARE(send("DELETE", path).status, 204);
        QCOMPARE(send("PATCH", path + "/toggle").status, 404);
        QCOMPARE(send("GET", "/v0/daily-tasks?date=2026-4-1").status, 400);
        QCOMPARE(send("GET", "/v0/daily-tasks").status, 400);
    }

    void bitacora_lifecycle()
    {
        const QString project = createProject(m_ada, QStringLiteral("Log"));
        const Reply created = send("POST", "/v0/bitacora-entries",
            {{QStringLiteral("prjId"), project}, {QStringLiteral("bteDate"), QStringLiteral("2026-01-05T12:00:00Z")},
                {QStringLiteral("bteContent"), QStringLiteral("first")}});
        QCOMPARE(created.status, 201);
        QCOMPARE(created.object()[QStringLiteral("bteUserId")].toString(), userId(m_ada));
        const std::string path
            = "/v0/bitacora-entries/" + created.object()[QStringLiteral("bteId")].toString().toStdString();
        QCOMPARE(send("PUT", path, {{QStringLiteral("bteContent"), QString()}}).status, 200);
        const QJsonArray listed = send("GET", "/v0/bitacora-entries?projectId=" + project.toStdString()).array();
        QCOMPARE(listed.size(), 1);
        QCOMPARE(listed.at(0)[QStringLiteral("bteContent")], QJsonValue(QString()));
        QCOMPARE(send("DELETE", path).status, 204);
        QCOMPARE(send("GET", path).status, 404);
    }

    void events_lifecycle()
    {
        const Reply created = send("POST", "/v0/events", eventBody(QStringLiteral("Standup")));
        QCOMPARE(created.status, 201);
        QJsonObject expected = eventBody(QStringLiteral("Standup"));
        expected.remove(QStringLiteral("evtHasAlarm"));
        expected.insert(QStringLiteral("evtId"), created.object()[QStringLiteral("evtId")]);
        QCOMPARE(created.object(), expected);
        QVERIFY(send("GET", "/v0/events").array().contains(expected));

        const std::string path = "/v0/events/" + expected[QStringLiteral("evtId")].toString().toStdString();
        const Reply updated = send("PUT", path, eventBody(QStringLiteral("Retro")));
        QCOMPARE(updated.object()[QStringLiteral("evtTitle")], QJsonValue(QStringLiteral("Retro")));
        QJsonObject partial = eventBody(QStringLiteral("x"));
        partial.remove(QStringLiteral("evtRepeat"));
        QCOMPARE(send("POST", "/v0/events", partial).status, 400);
        partial = eventBody(QStringLiteral("x"));
        partial.insert(QStringLiteral("evtDurationMinutes"), 1.5);
        QCOMPARE(send("PUT", path, partial).status, 400);
        QCOMPARE(send("GET", path).object(), updated.object());
        QCOMPARE(send("DELETE", path).status, 204);
        QCOMPARE(send("GET", path).status, 404);
        QCOMPARE(send("PUT", path, eventBody(QStringLiteral("Retro"))).status, 404);

        // A deleted event comes back under its identifier; one in use, even by another user, is refused.
        QJsonObject again = eventBody(QStringLiteral("Retro"));
        again.insert(QStringLiteral("evtId"), expected[QStringLiteral("evtId")]);
        const Reply restored = send("POST", "/v0/events", again);
        QCOMPARE(restored.status, 201);
        QCOMPARE(restored.object()[QStringLiteral("evtId")], expected[QStringLiteral("evtId")]);
        QCOMPARE(send("GET", path).object(), updated.object());
        QCOMPARE(send("POST", "/v0/events", again).status, 409);
        QCOMPARE(send("POST", "/v0/events", again, m_bob).status, 409);
        again.insert(QStringLiteral("evtId"), QStringLiteral("not-an-id"));
        QCOMPARE(send("POST", "/v0/events", again).status, 400);
        QCOMPARE(send("DELETE", path).status, 204);
    }

    void twoUsers_neverSeeEachOthersRows()
    {
        const QString project = createProject(m_ada, QStringLiteral("Private"));
        const QString list = send("POST", "/v0/task-lists", listBody(project, QStringLiteral("Mine"), true))
                                 .object()[QStringLiteral("talId")]
                                 .toString();
        const QString event = send("POST", "/v0/events", eventBody(QStringLiteral("Secret")))
                                  .object()[QStringLiteral("evtId")]
                                  .toString();
        const std::string projectPath = "/v0/projects/" + project.toStdString();

        QCOMPARE(send("GET", projectPath, {}, m_bob).status, 404);
        QCOMPARE(send("PUT", projectPath,
                     {{QStringLiteral("prjName"), QStringLiteral("Mine now")},
                         {QStringLiteral("prjDescription"), QString()}, {QStringLiteral("prjShowEveryDay"), false}},
                     m_bob)
                     .status,
            404);
        QCOMPARE(send("DELETE", projectPath, {}, m_bob).status, 404);
        QCOMPARE(send("GET", "/v0/task-lists/" + list.toStdString(), {}, m_bob).status, 404);
        QCOMPARE(send("GET", "/v0/task-lists?projectId=" + project.toStdString(), {}, m_bob).array(), QJsonArray());
        QCOMPARE(send("DELETE", "/v0/events/" + event.toStdString(), {}, m_bob).status, 404);
        // Writing into the other's project is refused as if it did not exist.
        QCOMPARE(
            send("POST", "/v0/task-lists", listBody(project, QStringLiteral("Intruder"), false), m_bob).status, 400);
        for (const QJsonValue& own : send("GET", "/v0/projects", {}, m_bob).array())
            QVERIFY(own[QStringLiteral("prjId")].toString() != project);
        QVERIFY(!send("GET", "/v0/events", {}, m_bob).array().contains(QJsonValue(event)));
        QCOMPARE(send("GET", projectPath).object()[QStringLiteral("prjName")], QJsonValue(QStringLiteral("Private")));
        QVERIFY(userId(m_ada) != userId(m_bob));
    }

    void tokenDefects_areRefused_data()
    {
        QTest::addColumn<QString>("defect");
        for (const char* defect : {"none", "not a token", "bad signature", "other audience", "other issuer", "expired",
                 "issued in the future", "alg none", "HS256 with the public key", "unknown key id"})
            QTest::newRow(defect) << QString::fromLatin1(defect);
    }

    void tokenDefects_areRefused()
    {
        QFETCH(QString, defect);
        QString bearer;
        const auto withClaims = [&](const QJsonObject& claims) {
            m_provider->overrideClaims(claims);
            bearer = token(QStringLiteral("ada"));
            m_provider->overrideClaims({});
        };
        const auto withSigning = [&](LocalIdentityProvider::Signing signing) {
            m_provider->setSigning(signing);
            bearer = token(QStringLiteral("ada"));
            m_provider->setSigning(LocalIdentityProvider::Signing::publishedKey);
        };
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        if (defect == QLatin1String("not a token")) {
            bearer = QStringLiteral("abc.def");
        } else if (defect == QLatin1String("bad signature")) {
            // Ada's signature on a payload that claims to be Bob.
            const QStringList ada = token(QStringLiteral("ada")).split(QLatin1Char('.'));
            const QStringList bob = m_bob.split(QLatin1Char('.'));
            bearer = ada.at(0) + QLatin1Char('.') + bob.at(1) + QLatin1Char('.') + ada.at(2);
        } else if (defect == QLatin1String("other audience")) {
            withClaims({{QStringLiteral("aud"), QStringLiteral("someone-else")}});
        } else if (defect == QLatin1String("other issuer")) {
            withClaims({{QStringLiteral("iss"), QStringLiteral("https://issuer.example.org")}});
        } else if (defect == QLatin1String("expired")) {
            withClaims({{QStringLiteral("iat"), now - 7200}, {QStringLiteral("exp"), now - 120}});
        } else if (defect == QLatin1String("issued in the future")) {
            withClaims({{QStringLiteral("iat"), now + 600}, {QStringLiteral("exp"), now + 4200}});
        } else if (defect == QLatin1String("alg none")) {
            withSigning(LocalIdentityProvider::Signing::none);
        } else if (defect == QLatin1String("HS256 with the public key")) {
            withSigning(LocalIdentityProvider::Signing::hmacWithPublicKey);
        } else if (defect == QLatin1String("unknown key id")) {
            withSigning(LocalIdentityProvider::Signing::unpublishedKey);
        }
        Connection connection(port());
        const Reply reply = connection.send("GET", "/v0/projects", bearer);
        QCOMPARE(reply.status, 401);
        // Nothing says which check failed.
        QCOMPARE(reply.body, QByteArray("unauthorized\n"));
        QCOMPARE(call(port(), "GET", "/v0/projects", m_ada).status, 200);
    }

    void tokens_withinTheSkewAreAccepted()
    {
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        m_provider->overrideClaims({{QStringLiteral("iat"), now + 30}, {QStringLiteral("exp"), now - 30 + 3600}});
        const QString early = token(QStringLiteral("ada"));
        m_provider->overrideClaims({{QStringLiteral("iat"), now - 3600}, {QStringLiteral("exp"), now - 20}});
        const QString late = token(QStringLiteral("ada"));
        m_provider->overrideClaims({});
        QCOMPARE(send("GET", "/v0/projects", {}, early).status, 200);
        QCOMPARE(send("GET", "/v0/projects", {}, late).status, 200);
    }

    void bodies_oversizedOrMalformed_changeNothing()
    {
        const int before = rowCount("projects");
        QByteArray huge = "{\"prjUserId\":\"" + userId(m_ada).toLatin1() + "\",\"prjName\":\"";
        huge += QByteArray(1024 * 1024 + 16, 'x') + "\",\"prjDescription\":\"\",\"prjShowEveryDay\":false}";
        Connection big(port());
        QCOMPARE(big.send("POST", "/v0/projects", m_ada, huge).status, 413);

        Connection broken(port());
        QCOMPARE(broken.send("POST", "/v0/projects", m_ada, QByteArray("{\"prjName\": \"x\"")).status, 400);
        // Not HTTP at all.
        Connection garbage(port());
        boost::asio::write(garbage.stream(), boost::asio::buffer(std::string("HELLO THERE\r\n\r\n")));
        QCOMPARE(garbage.read().status, 400);
        QCOMPARE(rowCount("projects"), before);
    }

    void connections_keepAliveAndTricklersAreCutOff()
    {
        Connection kept(port());
        QCOMPARE(kept.send("GET", "/v0/health").status, 200);
        QCOMPARE(kept.send("GET", "/v0/projects", m_ada).status, 200);

        // Headers that never finish: the server hangs up once the header deadline passes.
        Connection trickler(port());
        boost::asio::write(
            trickler.stream(), boost::asio::buffer(std::string("GET /v0/health HTTP/1.1\r\nHost: x\r\n")));
        char byte;
        boost::beast::error_code error;
        trickler.stream().expires_after(std::chrono::seconds(60));
        trickler.stream().read_some(boost::asio::buffer(&byte, 1), error);
        QCOMPARE(error, boost::beast::error_code(boost::asio::error::eof));

        Connection slowBody(port());
        boost::asio::write(slowBody.stream(),
            boost::asio::buffer(std::string("POST /v0/support HTTP/1.1\r\nHost: x\r\nContent-Length: 100\r\n\r\n{")));
        slowBody.stream().expires_after(std::chrono::seconds(60));
        slowBody.stream().read_some(boost::asio::buffer(&byte, 1), error);
        QCOMPARE(error, boost::beast::error_code(boost::asio::error::eof));
    }

    void restart_losesNothing()
    {
        const QString project = createProject(m_ada, QStringLiteral("Durable"));
        const QJsonObject before = send("GET", "/v0/projects/" + project.toStdString()).object();
        // The database restarts under a running server: its pooled connections die with it.
        QVERIFY2(m_cluster->stop(), qPrintable(m_cluster->error()));
        QVERIFY2(m_cluster->start(), qPrintable(m_cluster->error()));
        for (int i = 0; i < 6; ++i)
            QCOMPARE(send("GET", "/v0/projects/" + project.toStdString()).object(), before);
        // And then the server restarts too.
        m_server.reset();
        m_server = std::make_unique<RunningServer>(m_databaseUrl, *m_provider, options());
        QCOMPARE(send("GET", "/v0/projects/" + project.toStdString()).object(), before);
        QCOMPARE(userId(m_ada), before[QStringLiteral("prjUserId")].toString());
    }

    void migrations_applyOnce()
    {
        auto connection = m_server->pool.acquire();
        QCOMPARE(applyMigrations(*connection), 0);
        pqxx::work db(*connection);
        QCOMPARE(db.exec("SELECT count(*) FROM schema_migrations")[0][0].as<int>(), int(migrations().size()));
    }

    void stop_letsTheRequestInFlightFinish()
    {
        // A server whose handler takes its time: stop() must wait for the answer, not cut it.
        HttpServer::Options slow = options();
        std::atomic<bool> entered = false;
        HttpServer server(slow, [&entered](const ApiRequest&) {
            entered = true;
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
            return ApiResponse {200, "{}"};
        });
        server.start();
        Connection connection(server.port());
        Connection idle(server.port());
        boost::asio::write(
            connection.stream(), boost::asio::buffer(std::string("GET /v0/health HTTP/1.1\r\nHost: x\r\n\r\n")));
        QTRY_VERIFY(entered.load());
        std::thread stopper([&server] { server.stop(); });
        const Reply reply = connection.read();
        stopper.join();
        QCOMPARE(reply.status, 200);
        char byte;
        boost::beast::error_code error;
        idle.stream().read_some(boost::asio::buffer(&byte, 1), error);
        QCOMPARE(error, boost::beast::error_code(boost::asio::error::eof));
    }
};

TOLVANE_TEST_MAIN(ServerTest)
#include "ServerTest.moc"
