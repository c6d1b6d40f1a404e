// Throughput and memory of tolvane-server under wrk, against a private PostgreSQL cluster and a
// local identity provider on this machine:
//   1. GET of a task list of 100 tasks;
//   2. a mix of 80 % reads (the list) and 20 % writes (renaming a task);
//   3. the ceiling: the same HTTP front answering a fixed body without database or token checks;
//   4. the server's resident memory with 1,000 idle keep-alive connections open.
// Usage: bench_server [path to tolvane-server] (default: next to this program's build tree).
// Needs wrk in PATH; each run takes wrk's duration (TOLVANE_BENCH_SECONDS, default 30) and uses
// 64 connections.
#include "Api.h"
#include "HttpServer.h"
#include "support/SettableClock.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/postgres/PostgresCluster.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <boost/asio/connect.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <cstdio>
#include <iostream>

namespace {

namespace asio = boost::asio;
using tcp = asio::ip::tcp;

const QString clientId = QStringLiteral("tolvane-bench");

// One request on a fresh connection; the answer's body.
QByteArray request(unsigned short port, const QByteArray& method, const QByteArray& path, const QString& token,
    const QJsonObject& body = {})
{
    asio::io_context io;
    tcp::socket socket(io);
    socket.connect(tcp::endpoint(asio::ip::make_address("127.0.0.1"), port));
    const QByteArray payload = body.isEmpty() ? QByteArray() : QJsonDocument(body).toJson(QJsonDocument::Compact);
    const QByteArray text = method + ' ' + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n"
        + "Authorization: Bearer " + token.toLatin1() + "\r\nContent-Type: application/json\r\nContent-Length: "
        + QByteArray::number(payload.size()) + "\r\n\r\n" + payload;
    asio::write(socket, asio::buffer(text.constData(), std::size_t(text.size())));
    std::string answer;
    boost::system::error_code error;
    asio::read(socket, asio::dynamic_buffer(answer), error);
    const auto split = answer.find("\r\n\r\n");
    return split == std::string::npos ? QByteArray() : QByteArray::fromStdString(answer.substr(split + 4));
}

QString wrk(const QString& url, const QString& script, int seconds)
{
    QProcess process;
    QStringList arguments {QStringLiteral("-t2"), QStringLiteral("-c64"), QStringLiteral("-d%1s").arg(seconds),
        QStringLiteral("--latency")};
    if (!script.isEmpty())
        arguments << QStringLiteral("-s") << script;
    arguments << url;
    process.start(QStringLiteral("wrk"), arguments);
    process.waitForFinished(-1);
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

// "Requests/sec" and the 99 % latency out of wrk's report.
void report(const char* name, const QString& output)
{
    QString rate, p99, errors;
    for (const QString& line : output.split(QLatin1Char('\n'))) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(QLatin1String("Requests/sec:")))
            rate = trimmed.mid(13).trimmed();
        if (trimmed.startsWith(QLatin1String("99%")))
            p99 = trimmed.mid(3).trimmed();
        if (trimmed.startsWith(QLatin1String("Non-2xx")) || trimmed.startsWith(QLatin1String("Socket errors")))
            errors += trimmed + QLatin1Char(' ');
    }
    std::printf("%-28s %10s req/s   p99 %8s   %s\n", name, qPrintable(rate), qPrintable(p99), qPrintable(errors));
    std::fflush(stdout);
}

qint64 residentKiB(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLongLong();
    }
    return -1;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    const int seconds = qEnvironmentVariableIsSet("TOLVANE_BENCH_SECONDS")
        ? qEnvironmentVariableIntValue("TOLVANE_BENCH_SECONDS")
        : 30;
    const QString serverPath = argc > 1
        ? QString::fromLocal8Bit(argv[1])
        : QCoreApplication::applicationDirPath() + QStringLiteral("/../server/tolvane-server");

    PostgresCluster cluster;
    const QString database = cluster.createDatabase(QStringLiteral("bench"));
    if (database.isEmpty()) {
        std::cerr << "cannot start PostgreSQL: " << qPrintable(cluster.error()) << '\n';
        return 1;
    }
    auto clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
    LocalIdentityProvider provider(clientId, QString(), clock);
    provider.setIdTokenLifetime(24 * 3600);
    const QString token = provider.idTokenFor(
        {QStringLiteral("bench-user"), QStringLiteral("b@example.org"), QStringLiteral("Bench"), {}, {}});

    const unsigned short port = 18000 + unsigned(QCoreApplication::applicationPid() % 2000);
    QProcess server;
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(serverPath,
        {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(port), QStringLiteral("--database-url"),
            database, QStringLiteral("--issuer"), provider.issuer(), QStringLiteral("--client-id"), clientId,
            QStringLiteral("--discovery-url"), provider.discoveryURL().toString(), QStringLiteral("--log-level"),
            QStringLiteral("warning")});
    QByteArray health;
    for (int i = 0; i < 100 && !health.contains("ok"); ++i) {
        QThread::msleep(100);
        try {
            health = request(port, "GET", "/v0/health", {});
        } catch (const std::exception&) {
        }
    }
    if (!health.contains("ok")) {
        std::cerr << "the server did not come up\n";
        return 1;
    }

    // One project, one list of 100 tasks.
    const QString userId = QJsonDocument::fromJson(request(port, "POST", "/v0/users", token,
                                                       {{QStringLiteral("usrFirstName"), QStringLiteral("B")},
                                                           {QStringLiteral("usrLastName"), QStringLiteral("B")},
                                                           {QStringLiteral("usrEmail"), QStringLiteral("b@x.org")}}))
                               .object()[QStringLiteral("usrId")]
                               .toString();
    const QString project = QJsonDocument::fromJson(
        request(port, "POST", "/v0/projects", token,
            {{QStringLiteral("prjUserId"), userId}, {QStringLiteral("prjName"), QStringLiteral("Bench")},
                {QStringLiteral("prjDescription"), QString()}, {QStringLiteral("prjShowEveryDay"), false}}))
                                .object()[QStringLiteral("prjId")]
                                .toString();
    const QString list = QJsonDocument::fromJson(
        request(port, "POST", "/v0/task-lists", token,
            {{QStringLiteral("prjId"), project}, {QStringLiteral("talName"), QStringLiteral("List")},
                {QStringLiteral("talDescription"), QString()}, {QStringLiteral("talIsDefault"), true}}))
                             .object()[QStringLiteral("talId")]
                             .toString();
    QStringList taskIds;
    for (int i = 0; i < 100; ++i) {
        taskIds << QJsonDocument::fromJson(
            request(port, "POST", "/v0/tasks", token,
                {{QStringLiteral("prjId"), project}, {QStringLiteral("talId"), list},
                    {QStringLiteral("tasTitle"), QStringLiteral("Task %1").arg(i)},
                    {QStringLiteral("tasDueDate"), QStringLiteral("2026-06-01T10:00:00Z")},
                    {QStringLiteral("tasEisenhowerTag"), QStringLiteral("urgent_important")}}))
                       .object()[QStringLiteral("tasId")]
                       .toString();
    }
    const QString listPath = QStringLiteral("/v0/tasks?taskListId=") + list;
    if (QJsonDocument::fromJson(request(port, "GET", listPath.toLatin1(), token)).array().size() != 100) {
        std::cerr << "seeding the list failed\n";
        return 1;
    }

    QTemporaryDir scripts;
    const QString base = QStringLiteral("http://127.0.0.1:%1").arg(port);
    const QString readScript = scripts.filePath(QStringLiteral("read.lua"));
    QFile read(readScript);
    read.open(QIODevice::WriteOnly);
    read.write(
        QStringLiteral("wrk.method = \"GET\"\nwrk.path = \"%1\"\nwrk.headers[\"Authorization\"] = \"Bearer %2\"\n")
            .arg(listPath, token)
            .toUtf8());
    read.close();
    const QString mixScript = scripts.filePath(QStringLiteral("mix.lua"));
    QFile mix(mixScript);
    mix.open(QIODevice::WriteOnly);
    QString ids;
    for (const QString& id : taskIds)
        ids += QStringLiteral("\"%1\",").arg(id);
    mix.write(
        QStringLiteral("local ids = {%1}\n"
                       "local auth = {[\"Authorization\"] = \"Bearer %2\", [\"Content-Type\"] = \"application/json\"}\n"
                       "local n = 0\n"
                       "request = function()\n"
                       "  n = n + 1\n"
                       "  if n %% 5 == 0 then\n"
                       "    local body = '{\"tasTitle\":\"Renamed ' .. n .. '\",\"tasIsDone\":false}'\n"
                       "    return wrk.format(\"PUT\", \"/v0/tasks/\" .. ids[(n %% 100) + 1], auth, body)\n"
                       "  end\n"
                       "  return wrk.format(\"GET\", \"%3\", auth)\n"
                       "end\n")
            .arg(ids, token, listPath)
            .replace(QLatin1String("%%"), QLatin1String("%"))
            .toUtf8());
    mix.close();

    std::printf("wrk: 64 connections, 2 threads, %d s each\n", seconds);
    report("list of 100 tasks", wrk(base + listPath, readScript, seconds));
    report("80 % reads / 20 % writes", wrk(base + listPath, mixScript, seconds));

    // 1,000 idle keep-alive connections, each having made one request.
    {
        asio::io_context io;
        std::vector<tcp::socket> idle;
        idle.reserve(1000);
        for (int i = 0; i < 1000; ++i) {
            tcp::socket& socket = idle.emplace_back(io);
            socket.connect(tcp::endpoint(asio::ip::make_address("127.0.0.1"), port));
            const std::string text = "GET /v0/health HTTP/1.1\r\nHost: x\r\n\r\n";
            asio::write(socket, asio::buffer(text));
            std::string answer;
            asio::read_until(socket, asio::dynamic_buffer(answer), "}");
        }
        std::printf("%-28s %10.1f MiB with 1,000 idle keep-alive connections\n", "server RSS",
            double(residentKiB(server.processId())) / 1024.0);
    }

    server.terminate();
    server.waitForFinished(30000);

    // The ceiling: the same front with a handler that answers a fixed body at once.
    HttpServer::Options options;
    options.port = 0;
    options.ioThreads = 2;
    options.workers = 2;
    HttpServer bare(options, [](const ApiRequest&) { return ApiResponse {200, "{\"status\":\"ok\"}"}; });
    bare.start();
    report("bare Beast, fixed body", wrk(QStringLiteral("http://127.0.0.1:%1/").arg(bare.port()), {}, seconds));
    bare.stop();
    return 0;
}
