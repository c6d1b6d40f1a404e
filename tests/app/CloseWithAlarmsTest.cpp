#include "MainWindow.h"
#include "TolvaneApp.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"

#include <QSystemTrayIcon>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;

// Closing the window while alarms are pending, on a desktop without a tray (this session has
// none: no status notifier host on its bus, no screen).
class CloseWithAlarmsTest : public QObject {
    Q_OBJECT

    std::shared_ptr<LiveUserNotificationCenter> center = LiveUserNotificationCenter::shared();

private Q_SLOTS:
    void initTestCase() { QVERIFY2(!QSystemTrayIcon::isSystemTrayAvailable(), "this session has a tray"); }

    void cleanup() { center->removeAllPendingRequests(); }

    void shouldKeepTheWindowReachableUntilNothingIsPending()
    {
        AppFixture app;
        TolvaneApp tolvane(app.services());
        tolvane.start();
        MainWindow* window = tolvane.window();
        QVERIFY(QTest::qWaitForWindowExposed(window));

        center->add({QStringLiteral("standup"), {QStringLiteral("Standup"), QStringLiteral("in 10 minutes")},
            UserNotificationTrigger::calendar(QDateTime::currentDateTime().addDays(1))});
        QTRY_VERIFY(!QApplication::quitOnLastWindowClosed());

        // The first close asks; keeping it running minimises the window instead of hiding it.
        bool asked = false;
        whenModalAppears([&asked](QWidget* box) {
            asked = box->objectName() == u"alarmsPendingOnClose";
            clickButtonNamed(box, QStringLiteral("alarm-close-minimise-button"));
        });
        QVERIFY(!window->close());
        QVERIFY(asked);
        QVERIFY(window->isVisible());
        QTRY_VERIFY(window->isMinimized());

        // Later closes minimise without asking again.
        window->bringToFront();
        QTRY_VERIFY(!window->isMinimized());
        QVERIFY(!window->close());
        QTRY_VERIFY(window->isMinimized());
        QVERIFY(window->isVisible());

        // With nothing pending the window closes and takes the program with it.
        center->removeAllPendingRequests();
        QTRY_VERIFY(QApplication::quitOnLastWindowClosed());
        window->bringToFront();
        QVERIFY(window->close());
        QVERIFY(!window->isVisible());
    }
};

TOLVANE_GUI_TEST_MAIN(CloseWithAlarmsTest)
#include "CloseWithAlarmsTest.moc"
