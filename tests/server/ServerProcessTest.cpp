#include "ServerClient.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/postgres/PostgresCluster.h"

#include <QProcess>
#include <QRegularExpression>

#include <pqxx/pqxx>

// The tolvane-server program itself, as an operator starts and stops it.
class ServerProcessTest : public QObject {
    Q_OBJECT

    std::unique_ptr<PostgresCluster> m_cluster;
    QString m_databaseUrl;
    std::shared_ptr<SettableClock> m_clock;
    std::unique_ptr<LocalIdentityProvider> m_provider;

    static QString program() { return QStringLiteral(TOLVANE_SERVER_PROGRAM); }

    QStringList runFlags() const
    {
        return {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"), QStringLiteral("--database-url"),
            m_databaseUrl, QStringLiteral("--issuer"), m_provider->issuer(), QStringLiteral("--client-id"),
            QStringLiteral("process-test"), QStringLiteral("--discovery-url"), m_provider->discoveryURL().toString(),
            QStringLiteral("--log-level"), QStringLiteral("info")};
    }

    // The port the server reports once it listens; 0 when it never does.
    static unsigned short waitForPort(QProcess& server, QByteArray& log)
    {
        static const QRegularExpression listening(QStringLiteral("listening on http://127\\.0\\.0\\.1:(\\d+)"));
        for (int i = 0; i < 300; ++i) {
            log += server.readAllStandardError();
            const auto match = listening.match(QString::fromUtf8(log));
            if (match.hasMatch())
                return match.captured(1).toUShort();
            if (server.state() == QProcess::NotRunning)
                return 0;
            server.waitForReadyRead(100);
        }
        return 0;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_cluster = std::make_unique<PostgresCluster>();
        QVERIFY2(m_cluster->isRunning(), qPrintable(m_cluster->error()));
        m_databaseUrl = m_cluster->createDatabase(QStringLiteral("tolvane"));
        QVERIFY2(!m_databaseUrl.isEmpty(), qPrintable(m_cluster->error()));
        m_clock = std::make_shared<SettableClock>(QDateTime::currentDateTimeUtc());
        m_provider = std::make_unique<LocalIdentityProvider>(QStringLiteral("process-test"), QString(), m_clock);
    }

    void cleanupTestCase()
    {
        m_provider.reset();
        m_cluster.reset();
    }

    void flags_versionHelpAndMistakes()
    {
        QProcess version;
        version.start(program(), {QStringLiteral("--version")});
        QVERIFY(version.waitForFinished(30000));
        QCOMPARE(version.exitCode(), 0);
        QVERIFY(version.readAllStandardOutput().startsWith("tolvane-server "));

        QProcess help;
        help.start(program(), {QStringLiteral("--help")});
        QVERIFY(help.waitForFinished(30000));
        QCOMPARE(help.exitCode(), 0);
        QVERIFY(help.readAllStandardOutput().contains("--database-url"));

        // A flag it does not know, and a run without a database, stop it at once with the usage.
        for (const QStringList& arguments : {QStringList {QStringLiteral("--no-such-flag")},
                 QStringList {QStringLiteral("--listen"), QStringLiteral("x")}}) {
            QProcess wrong;
            wrong.start(program(), arguments);
            QVERIFY(wrong.waitForFinished(30000));
            QCOMPARE(wrong.exitStatus(), QProcess::NormalExit);
            QCOMPARE(wrong.exitCode(), 2);
            QVERIFY(wrong.readAllStandardError().contains("Usage: tolvane-server"));
        }

        // A database that cannot be reached is a failure to start, not a server without storage.
        QProcess unreachable;
        QStringList flags = runFlags();
        flags[flags.indexOf(QStringLiteral("--database-url")) + 1]
            = QStringLiteral("postgresql:///nothing?host=/nonexistent");
        unreachable.start(program(), flags);
        QVERIFY(unreachable.waitForFinished(30000));
        QCOMPARE(unreachable.exitCode(), 1);
    }

    void sigterm_finishesTheRequestInFlightAndExitsCleanly()
    {
        QProcess server;
        server.start(program(), runFlags());
        QByteArray log;
        const unsigned short port = waitForPort(server, log);
        QVERIFY2(port != 0, log.constData());

        const QString token = m_provider->idTokenFor(
            {QStringLiteral("ada"), QStringLiteral("ada@example.org"), QStringLiteral("Ada"), {}, {}});
        const Reply registered = call(port, "POST", "/v0/users", token,
            {{QStringLiteral("usrFirstName"), QStringLiteral("Ada")}, {QStringLiteral("usrLastName"), QString()},
                {QStringLiteral("usrEmail"), QStringLiteral("ada@example.org")}});
        QCOMPARE(registered.status, 201);
        const Reply created = call(port, "POST", "/v0/projects", token,
            {{QStringLiteral("prjUserId"), registered.object().value(QStringLiteral("usrId"))},
                {QStringLiteral("prjName"), QStringLiteral("Home")}, {QStringLiteral("prjDescription"), QString()},
                {QStringLiteral("prjShowEveryDay"), false}});
        QCOMPARE(created.status, 201);
        const QString projectId = created.object().value(QStringLiteral("prjId")).toString();

        // Hold the project's row, so that deleting it waits inside the server for as long as the
        // test wants: a request that is truly in flight when the signal comes.
        pqxx::connection holder(m_databaseUrl.toStdString());
        pqxx::work hold(holder);
        hold.exec_params("SELECT 1 FROM projects WHERE project_id = $1 FOR UPDATE", projectId.toLower().toStdString());
        Connection inFlight(port);
        const std::string request = "DELETE /v0/projects/" + projectId.toStdString()
            + " HTTP/1.1\r\nHost: 127.0.0.1\r\nAuthorization: Bearer " + token.toStdString() + "\r\n\r\n";
        boost::asio::write(inFlight.stream(), boost::asio::buffer(request));
        pqxx::connection observer(m_databaseUrl.toStdString());
        QTRY_VERIFY_WITH_TIMEOUT(pqxx::nontransaction(observer)
                                     .exec("SELECT 1 FROM pg_stat_activity WHERE wait_event_type = 'Lock' "
                                           "AND query LIKE '%FROM projects%FOR UPDATE%'")
                                     .size()
                == 1,
            30000);

        server.terminate();
        QTRY_VERIFY_WITH_TIMEOUT(
            (log += server.readAllStandardError()).contains("finishing the requests in flight"), 30000);
        QCOMPARE(server.state(), QProcess::Running);
        hold.commit();

        const Reply answer = inFlight.read();
        QCOMPARE(answer.status, 204);
        QVERIFY(server.waitForFinished(30000));
        QCOMPARE(server.exitStatus(), QProcess::NormalExit);
        QCOMPARE(server.exitCode(), 0);
        // The deletion the server finished is in the database.
        QCOMPARE(pqxx::nontransaction(observer)
                     .exec_params("SELECT 1 FROM projects WHERE project_id = $1", projectId.toLower().toStdString())
                     .size(),
            0);
    }
};

TOLVANE_TEST_MAIN(ServerProcessTest)
#include "ServerProcessTest.moc"
