#include "networking/NetworkLogger.h"

#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Everything written to file descriptor 1 while action runs.
template <typename Action> QByteArray capturedStandardOutput(Action action)
{
    std::fflush(stdout);
    QTemporaryDir directory;
    const QByteArray path = QFile::encodeName(directory.filePath(QStringLiteral("stdout")));
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int saved = ::dup(STDOUT_FILENO);
    ::dup2(file, STDOUT_FILENO);
    action();
    std::fflush(stdout);
    ::dup2(saved, STDOUT_FILENO);
    ::close(saved);
    ::close(file);
    QFile captured(QString::fromLocal8Bit(path));
    captured.open(QIODevice::ReadOnly);
    return captured.readAll();
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

UrlRequest requestWithBody(std::optional<QByteArray> body)
{
    UrlRequest request;
    request.url = QUrl(QStringLiteral("https://backend.example/v0/projects"));
    request.httpMethod = "POST";
    request.httpBody = std::move(body);
    return request;
}

} // namespace

class NetworkLoggerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_directory;
    // 09:00:05 UTC is 04:00:05 in the tests' zone (UTC-5).
    const QDateTime m_start {QDate(2026, 11, 21), QTime(9, 0, 5), Qt::UTC};
    std::shared_ptr<SettableClock> m_clock = std::make_shared<SettableClock>(m_start);

    QString logPath() const { return m_directory.filePath(QStringLiteral("network.log")); }

private Q_SLOTS:
    void init()
    {
        QFile::remove(logPath());
        m_clock->set(m_start);
    }

    void shouldWriteTheRecordByteForByte()
    {
        const NetworkLogger logger(true, logPath(), m_clock);
        const QByteArray printed = capturedStandardOutput([&] {
            logger.log(QStringLiteral("POST https://backend.example/v0/projects"),
                requestWithBody(QByteArray(R"({"prjName":"Casa"})")),
                QStringLiteral("201 {\"prjId\":\"A\",\"prjName\":\"Casa\"}"));
        });
        const QByteArray record = "[2026-11-21 04:00:05]\n"
                                  "endpoint: POST https://backend.example/v0/projects\n"
                                  "request: {\"prjName\":\"Casa\"}\n"
                                  "response: 201 {\"prjId\":\"A\",\"prjName\":\"Casa\"}\n";
        QCOMPARE(contents(logPath()), record);
        // The copy on standard output ends with a blank line.
        QCOMPARE(printed, record + "\n");
    }

    void shouldShowADashForAMissingOrUnreadableRequestBody_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("body");
        QTest::addColumn<QString>("shown");
        QTest::newRow("no body") << std::optional<QByteArray>() << QStringLiteral("-");
        QTest::newRow("not UTF-8") << std::optional<QByteArray>(QByteArray("\xff\xfe{}")) << QStringLiteral("-");
        QTest::newRow("empty body") << std::optional<QByteArray>(QByteArray()) << QString();
        QTest::newRow("accents") << std::optional<QByteArray>(QByteArray("{\"a\":\"ñu\"}"))
                                 << QStringLiteral("{\"a\":\"ñu\"}");
    }

    void shouldShowADashForAMissingOrUnreadableRequestBody()
    {
        QFETCH(std::optional<QByteArray>, body);
        QFETCH(QString, shown);
        const NetworkLogger logger(true, std::nullopt, m_clock);
        const QString record
            = logger.record(QStringLiteral("GET x"), requestWithBody(body), QStringLiteral("auth timeout"));
        QCOMPARE(record.section(QLatin1Char('\n'), 2, 2), QStringLiteral("request: ") + shown);
    }

    void shouldAppendRecordsAndCreateTheFileOnce()
    {
        const NetworkLogger logger(true, logPath(), m_clock);
        capturedStandardOutput([&] {
            logger.log(QStringLiteral("GET a"), requestWithBody(std::nullopt), QStringLiteral("200 []"));
            m_clock->advance(61);
            logger.log(QStringLiteral("GET b"), requestWithBody(std::nullopt), QStringLiteral("404 nope"));
        });
        QCOMPARE(contents(logPath()),
            QByteArray("[2026-11-21 04:00:05]\nendpoint: GET a\nrequest: -\nresponse: 200 []\n"
                       "[2026-11-21 04:01:06]\nendpoint: GET b\nrequest: -\nresponse: 404 nope\n"));
    }

    void shouldWriteNothingWhenDisabled()
    {
        const NetworkLogger logger(false, logPath(), m_clock);
        const QByteArray printed = capturedStandardOutput(
            [&] { logger.log(QStringLiteral("GET a"), requestWithBody(std::nullopt), QStringLiteral("200 []")); });
        QVERIFY(printed.isEmpty());
        QVERIFY(!QFile::exists(logPath()));
    }

    void shouldIgnoreAFileItCannotWrite()
    {
        // A directory where the file should be: opening fails, the standard-output copy remains.
        QDir(m_directory.path()).mkdir(QStringLiteral("blocked.log"));
        const NetworkLogger logger(true, m_directory.filePath(QStringLiteral("blocked.log")), m_clock);
        const QByteArray printed = capturedStandardOutput(
            [&] { logger.log(QStringLiteral("GET a"), requestWithBody(std::nullopt), QStringLiteral("200 []")); });
        QVERIFY2(printed.startsWith("[2026-11-21 04:00:05]\nendpoint: GET a\n"), printed.constData());
        QVERIFY(QFileInfo(m_directory.filePath(QStringLiteral("blocked.log"))).isDir());
    }

    void shouldPlaceTheLogUnderTheDataDirectory()
    {
        QTemporaryDir dataHome;
        const QByteArray previous = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome.path()));
        const NetworkLogger logger(true);
        qputenv("XDG_DATA_HOME", previous);

        QCOMPARE(logger.fileURL().value_or(QString()), dataHome.path() + QStringLiteral("/Tolvane/Logs/network.log"));
        // The directory exists before anything is logged.
        QVERIFY(QFileInfo(dataHome.path() + QStringLiteral("/Tolvane/Logs")).isDir());
    }

    void shouldFilterSuccessfulResponses_data()
    {
        QTest::addColumn<QString>("response");
        QTest::addColumn<QString>("logged");
        QTest::newRow("array of tasks") << QStringLiteral(
            R"(200 [{"id":1,"title":"Plan","done":true},{"id":2,"title":"Call","done":false}])")
                                        << QStringLiteral(R"(200 [{"id":1},{"id":2}])");
        QTest::newRow("keys contain the words, any case")
            << QStringLiteral(R"(201 {"supDate":"x","isDone":1,"SubTitle":"s","UPDATED":2,"keep":3})")
            << QStringLiteral(R"(201 {"keep":3})");
        QTest::newRow("nested objects and arrays")
            << QStringLiteral(R"(200 {"prj":{"tasks":[{"tasTitle":"a","tasId":"x","sub":[{"date":1,"n":2}]}]}})")
            << QStringLiteral(R"(200 {"prj":{"tasks":[{"sub":[{"n":2}],"tasId":"x"}]}})");
        QTest::newRow("a member holding the word as a value stays") << QStringLiteral(
            R"(200 {"name":"title date done"})") << QStringLiteral(R"(200 {"name":"title date done"})");
        QTest::newRow("fragment") << QStringLiteral(R"(200 "done")") << QStringLiteral(R"(200 "done")");
        QTest::newRow("compacted") << QStringLiteral("204 [ 1 , 2 ]") << QStringLiteral("204 [1,2]");
        QTest::newRow("error status unfiltered") << QStringLiteral(R"(404 [{"id":1,"title":"Plan","done":true}])")
                                                 << QStringLiteral(R"(404 [{"id":1,"title":"Plan","done":true}])");
        QTest::newRow("not JSON") << QStringLiteral("200 <html>title</html>")
                                  << QStringLiteral("200 <html>title</html>");
        QTest::newRow("empty body") << QStringLiteral("200 ") << QStringLiteral("200 ");
        QTest::newRow("undecodable body") << QStringLiteral("200 -") << QStringLiteral("200 -");
        QTest::newRow("auth timeout") << QStringLiteral("auth timeout") << QStringLiteral("auth timeout");
        QTest::newRow("transport error") << QStringLiteral("transport error: Could not resolve host: 2date")
                                         << QStringLiteral("transport error: Could not resolve host: 2date");
        QTest::newRow("leading blank") << QStringLiteral(R"( 200 {"title":1})")
                                       << QStringLiteral(R"( 200 {"title":1})");
        QTest::newRow("no blank") << QStringLiteral("200") << QStringLiteral("200");
    }

    void shouldFilterSuccessfulResponses()
    {
        QFETCH(QString, response);
        QFETCH(QString, logged);
        QCOMPARE(NetworkLogger::filteredResponse(response), logged);
    }
};

TOLVANE_TEST_MAIN(NetworkLoggerTest)
#include "NetworkLoggerTest.moc"
