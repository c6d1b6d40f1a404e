#include "platform/AppPaths.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemSecureRandom.h"
#include "platform/UserDefaults.h"
#include "support/TestMain.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

class PlatformTest : public QObject {
    Q_OBJECT

    QTemporaryDir scratch;

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_HOME", scratch.filePath(QStringLiteral("data")).toUtf8());
        qputenv("XDG_CONFIG_HOME", scratch.filePath(QStringLiteral("config")).toUtf8());
    }

    void shouldDeliverOnlyTheNotificationsObserved()
    {
        NotificationCenter center;
        QObject screen;
        QVariantList received;
        center.addObserver(NotificationName::alarmScheduleDidChange, &screen,
            [&](const QVariant& object) { received.append(object); });

        center.post(NotificationName::hiddenCalendarsDidChange);
        center.post(NotificationName::alarmScheduleDidChange, 42);

        QCOMPARE(received, QVariantList {42});
    }

    void shouldStopDeliveringOnceTheObserverIsGone()
    {
        NotificationCenter center;
        int calls = 0;
        {
            QObject screen;
            center.addObserver(NotificationName::userAccountDidChange, &screen, [&](const QVariant&) { ++calls; });
            center.post(NotificationName::userAccountDidChange);
        }
        center.post(NotificationName::userAccountDidChange);
        QCOMPARE(calls, 1);
    }

    void shouldDeliverPostsFromOtherThreadsOnTheObserversThread()
    {
        NotificationCenter center;
        QObject screen;
        QThread* deliveredOn = nullptr;
        center.addObserver(NotificationName::calendarAccountsDidChange, &screen,
            [&](const QVariant&) { deliveredOn = QThread::currentThread(); });

        QThread* worker = QThread::create([&] { center.post(NotificationName::calendarAccountsDidChange); });
        worker->start();
        worker->wait();
        delete worker;

        QTRY_COMPARE(deliveredOn, QThread::currentThread());
    }

    void shouldNameTheNotificationsExactly()
    {
        QCOMPARE(NotificationName::calendarAccountsDidChange, u"calendarAccountsDidChange");
        QCOMPARE(NotificationName::hiddenCalendarsDidChange, u"hiddenCalendarsDidChange");
        QCOMPARE(NotificationName::alarmScheduleDidChange, u"alarmScheduleDidChange");
        QCOMPARE(NotificationName::openMeetFromAlarm, u"openMeetFromAlarm");
        QCOMPARE(NotificationName::userAccountDidChange, u"userAccountDidChange");
        QCOMPARE(NotificationName::showUserSettings, u"showUserSettings");
    }

    void shouldKeepPreferencesInTheXdgConfigFile()
    {
        UserDefaults defaults = UserDefaults::standard();
        QCOMPARE(defaults.filePath(), scratch.filePath(QStringLiteral("config/Quorvel/Tolvane.conf")));

        QVERIFY(!defaults.boolValue(QStringLiteral("ErrorConsoleStore.isEnabled")));
        defaults.setValue(QStringLiteral("ErrorConsoleStore.isEnabled"), true);
        defaults.setValue(QStringLiteral("dailyEventsStartHour"), 7);

        const UserDefaults reread(defaults.filePath());
        QVERIFY(reread.boolValue(QStringLiteral("ErrorConsoleStore.isEnabled")));
        QCOMPARE(reread.value(QStringLiteral("dailyEventsStartHour")).toInt(), 7);

        defaults.remove(QStringLiteral("dailyEventsStartHour"));
        QVERIFY(!reread.contains(QStringLiteral("dailyEventsStartHour")));
    }

    void shouldReadMalformedBooleansAsFalse()
    {
        UserDefaults defaults(scratch.filePath(QStringLiteral("malformed.conf")));
        defaults.setValue(QStringLiteral("flag"), QStringLiteral("perhaps"));
        QVERIFY(!defaults.boolValue(QStringLiteral("flag")));
    }

    void shouldPlaceDataUnderXdgDataHome()
    {
        const QString data = scratch.filePath(QStringLiteral("data"));
        QCOMPARE(AppPaths::applicationSupportDirectory(), data);
        QCOMPARE(AppPaths::tolvaneDataDirectory(), data + QStringLiteral("/Tolvane"));
        const QFile::Permissions userGroupOther(0x0777);
        QCOMPARE(QFileInfo(data + QStringLiteral("/Tolvane")).permissions() & userGroupOther,
            QFile::ReadUser | QFile::WriteUser | QFile::ExeUser);
        QCOMPARE(AppPaths::appGroupContainer(), data + QStringLiteral("/group.tolvane"));
        QCOMPARE(AppPaths::userSoundsDirectory(), data + QStringLiteral("/sounds"));
        QVERIFY(QFileInfo(data + QStringLiteral("/sounds")).isDir());
    }

    void shouldFillTheWholeBufferWithFreshRandomBytes()
    {
        SystemSecureRandom random;
        QByteArray first(64, '\0');
        QByteArray second(64, '\0');
        QCOMPARE(random.copyBytes(first), 0);
        QCOMPARE(random.copyBytes(second), 0);
        QVERIFY(first != second);
        QVERIFY(first != QByteArray(64, '\0'));
    }
};

TOLVANE_TEST_MAIN(PlatformTest)
#include "PlatformTest.moc"
