#include "AlarmStartupHook.h"
#include "MeetAlarmNavigationPayload.h"
#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "meetings/alarms/MeetAlarmNotificationDelegate.h"
#include "meetings/alarms/MeetAlarmScheduler.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "platform/NotificationCenter.h"
#include "platform/notifications/EspeakSpeechSynthesizer.h"
#include "platform/notifications/LiveUserNotificationCenter.h"
#include "platform/notifications/SystemSounds.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/notifications/BareSessionBus.h"
#include "support/notifications/TestNotificationServer.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {
const QDateTime now(QDate(2026, 3, 10), QTime(9, 0), Qt::LocalTime);
}

// Alarms through the real pieces: a notification server on the private bus, the JSON file of
// pending requests, espeak-ng and the freedesktop sound theme.
class AlarmNotificationsIntegrationTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    UserDefaults m_defaults {QString()};
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<LiveUserNotificationCenter> m_center;

    QString soundsFolder() const { return m_folder->filePath(QStringLiteral("sounds")); }

    std::shared_ptr<LiveUserNotificationCenter> makeCenter(
        const QDBusConnection& bus = QDBusConnection::sessionBus()) const
    {
        LiveUserNotificationCenter::Options options;
        options.bus = bus;
        options.storeFilePath = m_folder->filePath(QStringLiteral("pending-notifications.json"));
        options.soundsDirectory = soundsFolder();
        options.defaultSoundPath = SystemSounds::defaultNotificationSoundPath();
        options.clock = m_clock;
        return std::make_shared<LiveUserNotificationCenter>(std::move(options));
    }

    MeetAlarmScheduler scheduler() const
    {
        return MeetAlarmScheduler({m_defaults, m_center, std::make_shared<EspeakSpeechSynthesizer>(),
            AlarmSoundFiles(soundsFolder(), SystemSounds::themeDirectory), m_clock});
    }

    static MeetEntity aMeet(const QString& name, const QDateTime& start)
    {
        MeetEntity meet;
        meet.metId = QUuid::createUuid();
        meet.metName = name;
        meet.metDate = start;
        meet.metDuration = 1800;
        meet.metSource = MeetSource::backend;
        return meet;
    }

    static bool isWav(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || file.size() <= 44)
            return false;
        const QByteArray header = file.read(12);
        return header.startsWith("RIFF") && header.mid(8, 4) == "WAVE";
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = UserDefaults(m_folder->filePath(QStringLiteral("Tolvane.conf")));
        m_clock = std::make_shared<SettableClock>(now);
        m_center = makeCenter();
    }

    void shouldRefuseToArmWithoutANotificationServer()
    {
        // A bus on which no notification server can be activated, whichever ones this machine has.
        BareSessionBus bus;
        QVERIFY2(bus.start(), qPrintable(bus.error()));
        m_center = makeCenter(bus.connection());
        const auto leaveBusFirst = qScopeGuard([this] { m_center.reset(); });

        QCOMPARE(m_center->authorizationStatus(), UserNotificationAuthorizationStatus::denied);
        QVERIFY(!scheduler().arm(aMeet(QStringLiteral("Team sync"), now.addSecs(600))));
        QVERIFY(m_center->pendingRequests().isEmpty());
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());
    }

    void shouldShowTheAlarmOnTheWireAtTheMeetStart()
    {
        TestNotificationServer server({QStringLiteral("body"), QStringLiteral("actions"), QStringLiteral("sound")});
        QVERIFY(server.start());
        MeetAlarmModeStore(m_defaults).save(MeetAlarmModeEnum::hero);
        const MeetEntity meet = aMeet(QStringLiteral("Team sync"), now.addSecs(600));
        QVERIFY(scheduler().arm(meet));

        m_clock->advance(599);
        m_center->checkDueRequests();
        QVERIFY(!server.waitForNotifications(1, 200));
        m_clock->advance(1);
        m_center->checkDueRequests();
        QVERIFY(server.waitForNotifications(1));
        const RecordedNotification shown = server.notifications().constFirst();
        QCOMPARE(shown.appName, QStringLiteral("Tolvane"));
        QCOMPARE(shown.summary, QStringLiteral("Team sync"));
        QCOMPARE(shown.body, QStringLiteral("meet-alarm-notification-body"));
        QCOMPARE(shown.actions.value(0), QStringLiteral("default"));
        QCOMPARE(shown.actions.size(), 2);
        QCOMPARE(shown.hints.value(QStringLiteral("urgency")).typeId(), QMetaType::UChar);
        QCOMPARE(shown.hints.value(QStringLiteral("urgency")).value<uchar>(), uchar(2));
        QCOMPARE(shown.hints.value(QStringLiteral("sound-file")).toString(),
            soundsFolder() + QStringLiteral("/tolvane-alarm-sound-hero.oga"));
        QVERIFY(!shown.hints.contains(QStringLiteral("suppress-sound")));
        QVERIFY(m_center->pendingRequests().isEmpty());
    }

    void shouldKeepTheServerQuietWhenItCannotPlaySounds()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("Team sync"), now)));
        m_center->checkDueRequests();
        QVERIFY(server.waitForNotifications(1));
        const QVariantMap hints = server.notifications().constFirst().hints;
        QVERIFY(!hints.contains(QStringLiteral("sound-file")));
        QCOMPARE(hints.value(QStringLiteral("suppress-sound")), QVariant(true));
    }

    void shouldOpenTheMeetWhenTheAlarmIsClicked()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        NotificationCenter& notifications = NotificationCenter::defaultCenter();
        m_center->setDelegate(makeMeetAlarmNotificationDelegate(notifications));
        std::optional<MeetAlarmNavigationPayload> opened;
        QObject observer;
        notifications.addObserver(NotificationName::openMeetFromAlarm, &observer,
            [&](const QVariant& object) { opened = object.value<MeetAlarmNavigationPayload>(); });

        const MeetEntity meet = aMeet(QStringLiteral("Retro"), QDateTime(QDate(2026, 3, 10), QTime(9, 0, 30)));
        QVERIFY(scheduler().arm(meet));
        m_clock->set(meet.metDate);
        m_center->checkDueRequests();
        QVERIFY(server.waitForNotifications(1));

        server.invokeAction(server.notifications().constFirst().id + 100, QStringLiteral("default"));
        server.invokeAction(server.notifications().constFirst().id, QStringLiteral("default"));
        QTRY_VERIFY(opened.has_value());
        QCOMPARE(opened->metName, QStringLiteral("Retro"));
        QCOMPARE(opened->metDate, meet.metDate);
    }

    void shouldKeepPendingAlarmsAcrossRestarts()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const MeetEntity missed = aMeet(QStringLiteral("Missed"), now.addSecs(60));
        const MeetEntity late = aMeet(QStringLiteral("Late"), now.addSecs(10 * 60));
        const MeetEntity coming = aMeet(QStringLiteral("Coming"), now.addSecs(60 * 60));
        QVERIFY(scheduler().arm(missed));
        QVERIFY(scheduler().arm(late));
        QVERIFY(scheduler().arm(coming));
        const QList<UserNotificationRequest> armed = m_center->pendingRequests();
        QCOMPARE(armed.size(), 3);

        // Closed for a quarter of an hour: the alarm 14 minutes late is dropped, the one 5
        // minutes late still rings, the future one waits.
        m_center.reset();
        m_clock->set(now.addSecs(15 * 60));
        m_center = makeCenter();
        QCOMPARE(m_center->pendingRequests(), armed);
        QSignalSpy fired(m_center.get(), &LiveUserNotificationCenter::requestFired);
        QTRY_COMPARE(fired.size(), 2);
        QVERIFY(server.waitForNotifications(1));
        QTest::qWait(100);
        QCOMPARE(server.notifications().size(), 1);
        QCOMPARE(server.notifications().constFirst().summary, QStringLiteral("Late"));
        QCOMPARE(m_center->pendingRequests(), QList<UserNotificationRequest> {armed.last()});
        QCOMPARE(makeCenter()->pendingRequests(), QList<UserNotificationRequest> {armed.last()});
    }

    void shouldNotReportAnAlarmAsSetWhenItCannotBeKept()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const MeetEntity kept = aMeet(QStringLiteral("Team sync"), now.addSecs(600));
        QVERIFY(scheduler().arm(kept));

        // The file can no longer be written: a folder stands at its name, which stops root as well
        // as anyone.
        const QString file = m_folder->filePath(QStringLiteral("pending-notifications.json"));
        QVERIFY(QFile::remove(file));
        QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("pending-notifications.json")));
        const MeetAlarmScheduler::Arming refused = scheduler().arm(aMeet(QStringLiteral("Dentist"), now.addSecs(900)));
        QVERIFY(!refused);
        QCOMPARE(refused.refusal->kind(), MeetAlarmError::Case::notScheduled);
        QVERIFY(
            refused.refusal->localizedDescription().startsWith(QStringLiteral("The alarm could not be scheduled: ")));
        QCOMPARE(ArmedAlarmsStore(m_defaults).load(), QSet<QString> {kept.metId.toString(QUuid::WithoutBraces)});
        QCOMPARE(m_center->pendingRequests().size(), 1);
        QCOMPARE(m_center->pendingRequests().constFirst().content.title, QStringLiteral("Team sync"));
    }

    void shouldDisarmTheRequestAndTheSpokenFile()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const MeetEntity meet = aMeet(QStringLiteral("Team sync"), now.addSecs(600));
        QVERIFY(scheduler().arm(meet));
        const QString spoken
            = soundsFolder() + QStringLiteral("/meet-alarm-%1.wav").arg(meet.metId.toString(QUuid::WithoutBraces));
        QVERIFY(isWav(spoken));
        QCOMPARE(m_center->pendingRequests().constFirst().content.soundName, QFileInfo(spoken).fileName());

        scheduler().disarm(meet);
        QVERIFY(!QFile::exists(spoken));
        QVERIFY(makeCenter()->pendingRequests().isEmpty());
        m_clock->advance(600);
        m_center->checkDueRequests();
        QVERIFY(!server.waitForNotifications(1, 300));
    }

    void shouldRenderSpeechWithEspeak_data()
    {
        QTest::addColumn<QString>("voice");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("english") << QStringLiteral("en-us") << QStringLiteral("You have a Team sync.");
        QTest::newRow("spanish") << QStringLiteral("es-419") << QStringLiteral("Tienes a Sync con el equipo.");
        QTest::newRow("leading dash") << QStringLiteral("en-us") << QStringLiteral("-v is not an option here");
    }
    void shouldRenderSpeechWithEspeak()
    {
        QFETCH(QString, voice);
        QFETCH(QString, sentence);
        EspeakSpeechSynthesizer speech;
        const QString path = m_folder->filePath(QStringLiteral("spoken.wav"));
        QVERIFY(speech.synthesize(sentence, voice, path));
        QVERIFY(isWav(path));
    }

    void shouldFailSpeechThatWritesNoFile()
    {
        EspeakSpeechSynthesizer speech;
        QVERIFY(!speech.synthesize(QStringLiteral("Hello"), QStringLiteral("en-us"),
            m_folder->filePath(QStringLiteral("missing/folder/spoken.wav"))));
        QVERIFY(!EspeakSpeechSynthesizer(m_folder->filePath(QStringLiteral("no-such-program")))
                     .synthesize(QStringLiteral("Hello"), QStringLiteral("en-us"),
                         m_folder->filePath(QStringLiteral("spoken.wav"))));
    }
};

TOLVANE_TEST_MAIN(AlarmNotificationsIntegrationTest)
#include "AlarmNotificationsIntegrationTest.moc"
