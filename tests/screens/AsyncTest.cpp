#include "screens/common/Async.h"

#include "support/TestMain.h"

#include <QSemaphore>
#include <QTest>

#include <memory>
#include <stdexcept>

// The screens' way off the GUI thread: the result comes back on the receiver's thread, and a
// receiver gone before the work ends (a window closed while a request is out) hears nothing.
class AsyncTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldHandTheResultBackOnTheReceiversThread()
    {
        QObject receiver;
        std::optional<int> got;
        QThread* ranOn = nullptr;
        runAsync(
            &receiver, [] { return 42; },
            [&](int value) {
                got = value;
                ranOn = QThread::currentThread();
            });
        QTRY_COMPARE(got, std::optional(42));
        QCOMPARE(ranOn, QThread::currentThread());

        bool voidDone = false;
        runAsync(
            &receiver, [] {}, [&] { voidDone = true; });
        QTRY_VERIFY(voidDone);
    }

    void shouldDropTheResultOfAReceiverGoneFirst()
    {
        auto receiver = std::make_unique<QObject>();
        auto gate = std::make_shared<QSemaphore>();
        auto finished = std::make_shared<QSemaphore>();
        bool called = false;
        runAsync(
            receiver.get(),
            [gate, finished] {
                gate->acquire();
                finished->release();
                return 1;
            },
            [&called](int) { called = true; });
        receiver.reset();
        gate->release();
        QVERIFY(finished->tryAcquire(1, 10000));
        screenThreadPool()->waitForDone(10000);
        QTest::qWait(50);
        QVERIFY(!called);
    }

    void shouldNotCallDoneWhenTheWorkThrows()
    {
        QObject receiver;
        bool called = false;
        bool after = false;
        runAsync(
            &receiver, []() -> int { throw std::runtime_error("no"); }, [&called](int) { called = true; });
        // The receiver still hears of other work.
        runAsync(
            &receiver, [] { return 0; }, [&after](int) { after = true; });
        QTRY_VERIFY(after);
        screenThreadPool()->waitForDone(10000);
        QTest::qWait(50);
        QVERIFY(!called);
    }
};

TOLVANE_GUI_TEST_MAIN(AsyncTest)
#include "AsyncTest.moc"
