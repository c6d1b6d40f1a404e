#include "networking/WithTimeout.h"

#include "support/TestMain.h"

#include <QProcess>
#include <QSemaphore>
#include <QTest>

#include <atomic>
#include <stdexcept>
#include <thread>

class WithTimeoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldReturnTheOperationsValue()
    {
        QCOMPARE(withTimeout(5, [] { return QStringLiteral("token"); }), QStringLiteral("token"));
        // Move-only results and operations come through too.
        auto owned = withTimeout(5, [p = std::make_unique<int>(7)] { return std::make_unique<int>(*p); });
        QCOMPARE(*owned, 7);
    }

    void shouldRethrowTheOperationsError()
    {
        QVERIFY_THROWS_EXCEPTION(
            std::invalid_argument, withTimeout(5, []() -> int { throw std::invalid_argument("no user"); }));
        // An operation's own TimeoutError is not confused with a late one by the caller's catch: it
        // is rethrown as is, right away.
        QVERIFY_THROWS_EXCEPTION(TimeoutError, withTimeout(5, []() -> int { throw TimeoutError(); }));
    }

    void shouldThrowWhenTheDeadlineComesFirstAndAskTheOperationToStop()
    {
        auto stopped = std::make_shared<QSemaphore>();
        QVERIFY_THROWS_EXCEPTION(TimeoutError, withTimeout(0.2, [stopped](std::stop_token stop) {
            while (!stop.stop_requested())
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            stopped->release();
            return 1;
        }));
        QVERIFY(stopped->tryAcquire(1, 5000));
    }

    void shouldNotWaitForAnOperationThatIgnoresTheStopRequest()
    {
        auto release = std::make_shared<QSemaphore>();
        QVERIFY_THROWS_EXCEPTION(TimeoutError, withTimeout(0.1, [release] {
            release->acquire();
            return 0;
        }));
        // The stuck worker does not hold up the next race.
        QCOMPARE(withTimeout(5, [] { return 2; }), 2);
        release->release();
    }

    void shouldRunVoidOperations()
    {
        std::atomic<int> calls = 0;
        withTimeout(5, [&calls] { ++calls; });
        QCOMPARE(calls.load(), 1);
    }

    void shouldStopTheProgramOnAnInvalidLimit_data()
    {
        QTest::addColumn<QString>("seconds");
        QTest::addColumn<bool>("fatal");
        // A zero limit is valid; which side wins that race is left open.
        QTest::newRow("negative") << QStringLiteral("-1") << true;
        QTest::newRow("infinite") << QStringLiteral("inf") << true;
        QTest::newRow("not a number") << QStringLiteral("nan") << true;
        QTest::newRow("beyond the nanosecond range") << QStringLiteral("1e10") << true;
        QTest::newRow("zero") << QStringLiteral("0") << false;
        QTest::newRow("fifteen seconds") << QStringLiteral("15") << false;
    }

    void shouldStopTheProgramOnAnInvalidLimit()
    {
        QFETCH(QString, seconds);
        QFETCH(bool, fatal);
        QProcess probe;
        probe.start(QStringLiteral(WITH_TIMEOUT_PROBE), {seconds});
        QVERIFY(probe.waitForFinished(10000));
        if (fatal) {
            QCOMPARE(probe.exitStatus(), QProcess::CrashExit);
            QVERIFY(probe.readAllStandardError().contains("is not a valid time limit"));
        } else {
            QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
            QVERIFY(probe.exitCode() == 0 || (seconds == QLatin1String("0") && probe.exitCode() == 3));
        }
    }
};

TOLVANE_TEST_MAIN(WithTimeoutTest)
#include "WithTimeoutTest.moc"
