#include "support/TestMain.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>

namespace {

const QString serviceName = QStringLiteral("com.quorvel.tolvane");

// The real program, without a screen, in this session's folders and on its bus.
void startTolvane(QProcess& process, const QStringList& arguments = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(QStringLiteral(TOLVANE_PROGRAM), arguments);
}

// Waits until the process has written text on its standard error, keeping what it read in log.
bool waitForLog(QProcess& process, QByteArray& log, const QByteArray& text)
{
    QDeadlineTimer deadline(30000);
    while (!log.contains(text) && !deadline.hasExpired()) {
        process.waitForReadyRead(200);
        log += process.readAllStandardError();
    }
    return log.contains(text);
}

void stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(30000))
        process.kill();
    process.waitForFinished(30000);
}

} // namespace

// Two launches in one session: one Tolvane runs, the other brings its window forward and leaves.
class SingleInstanceTest : public QObject {
    Q_OBJECT

    QProcess first;
    QProcess second;

private Q_SLOTS:
    void cleanup()
    {
        stop(second);
        stop(first);
    }

    void shouldHandASecondLaunchOverToTheRunningOne()
    {
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QVERIFY2(!bus->isServiceRegistered(serviceName), "another Tolvane already runs on this bus");

        startTolvane(first);
        QVERIFY(first.waitForStarted(30000));
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 60000);
        const QString owner = bus->serviceOwner(serviceName);
        // Running with its keys in memory: a crash now must not write them into a core file.
        QFile limits(QStringLiteral("/proc/%1/limits").arg(first.processId()));
        QVERIFY(limits.open(QIODevice::ReadOnly));
        QByteArray coreLimit;
        for (const QByteArray& line : limits.readAll().split('\n')) {
            if (line.startsWith("Max core file size"))
                coreLimit = line.simplified();
        }
        QCOMPARE(coreLimit, QByteArray("Max core file size 0 0 bytes"));

        startTolvane(second);
        QVERIFY(second.waitForStarted(30000));
        QVERIFY2(second.waitForFinished(60000), "the second launch kept running");
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);

        // The first one is still the one, and it was asked for its window.
        QCOMPARE(first.state(), QProcess::Running);
        QCOMPARE(bus->serviceOwner(serviceName).value(), owner);
        QByteArray log;
        QTRY_VERIFY_WITH_TIMEOUT(
            (log += first.readAllStandardError()).contains("another launch of Tolvane asked for this window"), 30000);
    }

    void shouldHandTheDayAndTheTaskOfALaterLaunchOver()
    {
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        startTolvane(first);
        QVERIFY(first.waitForStarted(30000));
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 60000);
        QByteArray log;

        startTolvane(second,
            {QStringLiteral("--date"), QStringLiteral("2026-12-01"), QStringLiteral("--quick-add"),
                QStringLiteral("Buy milk")});
        QVERIFY(second.waitForStarted(30000));
        QVERIFY2(second.waitForFinished(60000), "the second launch kept running");
        QCOMPARE(second.exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.exitCode(), 0);

        QVERIFY(waitForLog(first, log, "another launch of Tolvane asked for this window"));
        QVERIFY(waitForLog(first, log, "opening the schedule on \"2026-12-01\""));
        // This session has no account: the task goes nowhere, and the notice says why.
        QVERIFY2(waitForLog(first, log,
                     "notice: The task \xe2\x80\x9c"
                     "Buy milk\xe2\x80\x9d was not added: sign in or create a local "
                     "account first."),
            log.constData());

        // A login start finding Tolvane running leaves without showing anything.
        startTolvane(second, {QStringLiteral("--background")});
        QVERIFY(second.waitForFinished(60000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(waitForLog(first, log, "in the background, found this one running"));
        QCOMPARE(log.count("asked for this window"), 1);
        QCOMPARE(first.state(), QProcess::Running);
    }

    void shouldRefuseWrongArgumentsWithoutADisplay_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("message");
        QTest::newRow("bad day") << QStringList {"--date", "2026-12-32"} << QByteArray("Not a day:");
        QTest::newRow("unknown option") << QStringList {"--dates", "2026-12-01"}
                                        << QByteArray("Unknown option 'dates'.");
        QTest::newRow("stray word") << QStringList {"today"} << QByteArray("Unexpected argument: today");
    }

    void shouldRefuseWrongArgumentsWithoutADisplay()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, message);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
            environment.remove(name);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TOLVANE_PROGRAM), arguments);
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 2);
        const QByteArray errors = process.readAllStandardError();
        QVERIFY2(errors.startsWith("tolvane: " + message), errors.constData());
        QVERIFY2(errors.contains("tolvane --help"), errors.constData());
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
        // Nothing was claimed on the bus.
        QVERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(serviceName));
    }

    void shouldLetTheNextLaunchRunOnceTheFirstQuit()
    {
        startTolvane(first);
        QVERIFY(first.waitForStarted(30000));
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 60000);
        stop(first);
        QTRY_VERIFY_WITH_TIMEOUT(!bus->isServiceRegistered(serviceName), 30000);

        startTolvane(second);
        QVERIFY(second.waitForStarted(30000));
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 60000);
        QCOMPARE(second.state(), QProcess::Running);
    }
};

TOLVANE_TEST_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
