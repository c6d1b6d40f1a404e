#include "support/TestMain.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <QProcess>

namespace {

const QString serviceName = QStringLiteral("com.quorvel.tolvane");

// The real program, without a screen, in this session's folders and on its bus.
void startTolvane(QProcess& process)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(QStringLiteral(TOLVANE_PROGRAM), QStringList());
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
