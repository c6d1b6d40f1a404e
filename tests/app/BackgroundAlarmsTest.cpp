#include "DayRituals.h"
#include "MainWindow.h"
#include "TolvaneApp.h"
#include "rituals/Autostart.h"
#include "rituals/RitualSettings.h"
#include "screens/rituals/DayReviewView.h"
#include "screens/rituals/RitualSettingsView.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/AppFixture.h"

#include <QCheckBox>
#include <QFile>
#include <QSignalSpy>
#include <QTranslator>

// Tolvane started at login, hidden: alarms ring with no window open, and the first alarm armed
// turns starting at login on. Its own session, with the test notification server on its bus.
class BackgroundAlarmsTest : public QObject {
    Q_OBJECT

    std::shared_ptr<LiveUserNotificationCenter> center = LiveUserNotificationCenter::shared();

    static bool anyWindowShown()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return std::any_of(windows.begin(), windows.end(),
            [](const QWidget* window) { return window->isVisible() && !window->isMinimized(); });
    }

    QTranslator english;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void cleanup()
    {
        center->removeAllPendingRequests();
        QFile::remove(Autostart::entryPath());
    }

    void shouldRingWithNoWindowOpenAndStartAtLoginFromThen()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        AppFixture app;
        QVERIFY(!Autostart::entryPath().isEmpty() && !QFile::exists(Autostart::entryPath()));
        TolvaneApp tolvane(app.services());
        LaunchRequest request;
        request.background = true;
        tolvane.start(request);
        // A desktop with a tray shows nothing; this one has none, so the window waits minimised.
        // Either way nothing is in the user's face, and nothing quits when it is gone.
        QVERIFY(!anyWindowShown());
        QVERIFY(!QApplication::quitOnLastWindowClosed());
        tolvane.window()->hide();
        QSignalSpy quitting(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);

        center->add({QStringLiteral("standup"), {QStringLiteral("Standup"), QStringLiteral("in 10 minutes")},
            UserNotificationTrigger::calendar(QDateTime::currentDateTime().addSecs(2))});
        QVERIFY(server.waitForNotifications(1, 30000));
        QCOMPARE(server.notifications().constFirst().summary, QStringLiteral("Standup"));
        QVERIFY(!anyWindowShown());
        QVERIFY(quitting.isEmpty());
        // With nothing pending any more, Tolvane stays for the next login's alarms.
        QTRY_VERIFY(center->pendingRequests().isEmpty());
        QVERIFY(!QApplication::quitOnLastWindowClosed());

        // The alarm armed turned the login start on, once, as the settings explain.
        QTRY_VERIFY(QFile::exists(Autostart::entryPath()));
        QCOMPARE(app.userDefaults().value(RitualSettings::startAtLoginKey), QVariant(true));
        QFile entry(Autostart::entryPath());
        QVERIFY(entry.open(QIODevice::ReadOnly));
        QVERIFY(entry.readAll().contains(
            "Exec=" + QFile::encodeName(QCoreApplication::applicationFilePath()) + " --background\n"));
    }

    void shouldLeaveTheLoginStartAsTheUserChose()
    {
        AppFixture app;
        UserDefaults(app.userDefaults()).setValue(RitualSettings::startAtLoginKey, false);
        TolvaneApp tolvane(app.services());
        tolvane.start();
        QSignalSpy changed(center.get(), &LiveUserNotificationCenter::pendingRequestsChanged);
        center->add({QStringLiteral("retro"), {QStringLiteral("Retro"), QString()},
            UserNotificationTrigger::calendar(QDateTime::currentDateTime().addDays(1))});
        QVERIFY(!changed.isEmpty() || changed.wait(10000));
        // The reaction is queued: let it run before looking.
        QTest::qWait(200);
        QVERIFY(!QFile::exists(Autostart::entryPath()));
        QCOMPARE(app.userDefaults().value(RitualSettings::startAtLoginKey), QVariant(false));
    }

    void shouldRemindAtTheChosenHourAndOpenTheReviewOnClick()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        AppFixture app;
        UserDefaults defaults = app.userDefaults();
        defaults.setValue(RitualSettings::morningPlanAtFirstStartKey, false);
        MainWindow window(app.services());
        // Two seconds before the review's hour, which the settings then set.
        auto clock = std::make_shared<SettableClock>(QDateTime(QDate(2026, 3, 18), QTime(20, 59, 58)));
        DayRituals rituals(app.services(), &window, clock);
        rituals.atStart(true);
        defaults.setValue(RitualSettings::reviewHourKey, 21);
        app.services().notificationCenter().post(RitualSettings::remindersDidChange);

        QVERIFY(server.waitForNotifications(1, 30000));
        const RecordedNotification shown = server.notifications().constFirst();
        QCOMPARE(shown.summary, QStringLiteral("Time to close the day"));
        QVERIFY(shown.actions.contains(QStringLiteral("default")));
        QVERIFY(!rituals.review());
        server.invokeAction(shown.id, QStringLiteral("default"));
        QTRY_VERIFY(rituals.review() && rituals.review()->isVisible());
        QVERIFY(window.isVisible());
    }

    void shouldWriteAndRemoveTheLoginStartFromTheSettings()
    {
        AppFixture app;
        RitualSettingsView settings(app.services());
        QVERIFY(!settings.startAtLogin()->isChecked());
        settings.startAtLogin()->click();
        QVERIFY(QFile::exists(Autostart::entryPath()));
        QCOMPARE(app.userDefaults().value(RitualSettings::startAtLoginKey), QVariant(true));
        // Read back as it is on disk, not as it was remembered.
        QVERIFY(RitualSettingsView(app.services()).startAtLogin()->isChecked());

        settings.startAtLogin()->click();
        QVERIFY(!QFile::exists(Autostart::entryPath()));
        QCOMPARE(app.userDefaults().value(RitualSettings::startAtLoginKey), QVariant(false));
        QVERIFY(!RitualSettingsView(app.services()).startAtLogin()->isChecked());
    }
};

TOLVANE_GUI_TEST_MAIN(BackgroundAlarmsTest)
#include "BackgroundAlarmsTest.moc"
