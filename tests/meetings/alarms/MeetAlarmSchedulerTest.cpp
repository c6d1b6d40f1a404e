#include "meetings/alarms/MeetAlarmScheduler.h"

#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "meetings/alarms/MeetAlarmNotificationDelegate.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/templates/AlarmMessageTemplateDatabase.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

namespace {

class FakeUserNotificationCenter final : public UserNotificationCenter {
public:
    UserNotificationAuthorizationStatus status = UserNotificationAuthorizationStatus::authorized;
    bool grants = true;
    int authorizationRequests = 0;
    QList<UserNotificationRequest> pending;

    UserNotificationAuthorizationStatus authorizationStatus() override { return status; }
    bool requestAuthorization() override
    {
        ++authorizationRequests;
        return grants;
    }
    void add(const UserNotificationRequest& request) override
    {
        removePendingRequests({request.identifier});
        pending.append(request);
    }
    QList<UserNotificationRequest> pendingRequests() const override { return pending; }
    void removePendingRequests(const QStringList& identifiers) override
    {
        pending.removeIf([&](const UserNotificationRequest& r) { return identifiers.contains(r.identifier); });
    }
    void removeAllPendingRequests() override { pending.clear(); }
    void setDelegate(std::shared_ptr<UserNotificationCenterDelegate>) override { }
};

// Writes the sentence into the file, so tests can read back what would have been spoken.
class FakeSpeechSynthesizer final : public SpeechSynthesizer {
public:
    bool works = true;
    QString lastVoice;

    bool synthesize(const QString& text, const QString& voice, const QString& outputPath) override
    {
        lastVoice = voice;
        QFile file(outputPath);
        return works && file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
    }
};

const QDateTime now(QDate(2026, 3, 10), QTime(9, 0), Qt::LocalTime);

} // namespace

class MeetAlarmSchedulerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    UserDefaults m_defaults {QString()};
    std::shared_ptr<FakeUserNotificationCenter> m_center;
    std::shared_ptr<FakeSpeechSynthesizer> m_speech;
    std::shared_ptr<SettableClock> m_clock;

    QString soundsFolder() const { return m_folder->filePath(QStringLiteral("sounds")); }

    MeetAlarmScheduler scheduler() const
    {
        return MeetAlarmScheduler({m_defaults, m_center, m_speech,
            AlarmSoundFiles(soundsFolder(), m_folder->filePath(QStringLiteral("theme"))), m_clock});
    }

    static MeetEntity aMeet(
        const QString& name, const QDateTime& start, const QString& calendar = QStringLiteral("work"))
    {
        MeetEntity meet;
        meet.metId = QUuid::createUuid();
        meet.metName = name;
        meet.metDate = start;
        meet.metDuration = 1800;
        meet.metCalendarIdentifier = calendar;
        meet.metOriginalIdentifier = QStringLiteral("uid-") + name;
        return meet;
    }

    QString spokenText(const MeetEntity& meet) const
    {
        QFile file(
            soundsFolder() + QStringLiteral("/meet-alarm-%1.wav").arg(meet.metId.toString(QUuid::WithoutBraces)));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QDir().mkpath(m_folder->filePath(QStringLiteral("theme")));
        QFile theme(m_folder->filePath(QStringLiteral("theme/alarm-clock-elapsed.oga")));
        QVERIFY(theme.open(QIODevice::WriteOnly) && theme.write("OggS hero") > 0);
        theme.close();
        m_defaults = UserDefaults(m_folder->filePath(QStringLiteral("Tolvane.conf")));
        AlarmEnabledCalendarsStore(m_defaults).save({QStringLiteral("work")});
        m_center = std::make_shared<FakeUserNotificationCenter>();
        m_speech = std::make_shared<FakeSpeechSynthesizer>();
        m_clock = std::make_shared<SettableClock>(now);
    }

    void shouldAllowAlarmsOnlyOnTimedFutureMeetsOfAlarmCalendars()
    {
        MeetEntity allDay = aMeet(QStringLiteral("Holiday"), now.addSecs(3600));
        allDay.metIsAllDay = true;
        const MeetEntity past = aMeet(QStringLiteral("Standup"), now.addSecs(-1));
        const MeetEntity startingNow = aMeet(QStringLiteral("Review"), now);
        const MeetEntity otherCalendar = aMeet(QStringLiteral("Dentist"), now.addSecs(3600), QStringLiteral("home"));
        MeetEntity createdHere = aMeet(QStringLiteral("Lunch"), now.addSecs(3600), QStringLiteral("home"));
        AppCreatedEventIdentifiersStore(m_defaults).add(createdHere.metOriginalIdentifier);
        MeetEntity fromBackend = aMeet(QStringLiteral("Demo"), now.addSecs(3600), QStringLiteral("home"));
        fromBackend.metSource = MeetSource::backend;

        QVERIFY(!scheduler().canHaveAlarm(allDay));
        QVERIFY(!scheduler().canHaveAlarm(past));
        QVERIFY(scheduler().canHaveAlarm(startingNow));
        QVERIFY(!scheduler().canHaveAlarm(otherCalendar));
        QVERIFY(scheduler().canHaveAlarm(createdHere));
        QVERIFY(scheduler().canHaveAlarm(fromBackend));
    }

    void shouldRefuseWithTheReasonAndStoreNothing()
    {
        const auto refusal = [&](const MeetEntity& meet) {
            const MeetAlarmScheduler::Arming arming = scheduler().arm(meet);
            if (!arming.refusal)
                throw std::runtime_error("armed " + meet.metName.toStdString());
            return arming.refusal->kind();
        };
        MeetEntity allDay = aMeet(QStringLiteral("Holiday"), now.addSecs(3600));
        allDay.metIsAllDay = true;
        QCOMPARE(refusal(aMeet(QStringLiteral("Standup"), now.addSecs(-1))), MeetAlarmError::Case::alreadyStarted);
        QCOMPARE(refusal(allDay), MeetAlarmError::Case::allDay);
        QCOMPARE(refusal(aMeet(QStringLiteral("Dentist"), now.addSecs(3600), QStringLiteral("home"))),
            MeetAlarmError::Case::calendarNotEnabled);
        m_center->status = UserNotificationAuthorizationStatus::denied;
        QCOMPARE(
            refusal(aMeet(QStringLiteral("Review"), now.addSecs(600))), MeetAlarmError::Case::noNotificationService);
        QVERIFY(m_center->pending.isEmpty());
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());
        QVERIFY(m_speech->lastVoice.isEmpty());
        QVERIFY(MeetAlarmError::alreadyStarted().localizedDescription().contains(QStringLiteral("at or after now")));
    }

    void shouldScheduleASpokenAlarmAtTheMeetStart()
    {
        const MeetEntity meet = aMeet(QStringLiteral("Team sync"), QDateTime(QDate(2026, 3, 10), QTime(14, 30, 15)));
        QVERIFY(scheduler().arm(meet));
        QVERIFY(scheduler().arm(meet));

        const QString identifier = meet.metId.toString(QUuid::WithoutBraces);
        QCOMPARE(m_center->pending.size(), 1);
        const UserNotificationRequest request = m_center->pending.constFirst();
        QCOMPARE(request.identifier, identifier);
        QCOMPARE(request.content.title, QStringLiteral("Team sync"));
        QCOMPARE(request.content.body, QStringLiteral("meet-alarm-notification-body"));
        QCOMPARE(request.content.userInfo.value(QStringLiteral("metName")).toString(), QStringLiteral("Team sync"));
        QCOMPARE(request.content.userInfo.value(QStringLiteral("metDate")).toDouble(),
            double(meet.metDate.toSecsSinceEpoch()));
        QCOMPARE(request.content.soundName, QStringLiteral("meet-alarm-%1.wav").arg(identifier));
        QCOMPARE(request.trigger, UserNotificationTrigger::calendar(meet.metDate));
        QCOMPARE(request.trigger.time, QTime(14, 30, 15));
        QCOMPARE(ArmedAlarmsStore(m_defaults).load(), QSet<QString> {identifier});
        QCOMPARE(spokenText(meet), QStringLiteral("Tienes a Team sync."));
        QCOMPARE(m_speech->lastVoice, QStringLiteral("es-419"));
    }

    void shouldStoreNothingWithoutPermission()
    {
        const MeetEntity meet = aMeet(QStringLiteral("Team sync"), now.addSecs(600));
        m_center->status = UserNotificationAuthorizationStatus::denied;
        QVERIFY(!scheduler().arm(meet));
        m_center->status = UserNotificationAuthorizationStatus::notDetermined;
        m_center->grants = false;
        QVERIFY(!scheduler().arm(meet));
        QCOMPARE(m_center->authorizationRequests, 1);
        QVERIFY(m_center->pending.isEmpty());
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());

        m_center->grants = true;
        QVERIFY(scheduler().arm(meet));
        QVERIFY(scheduler().isArmed(meet));
    }

    void shouldReadUnknownSettingsAsVoiceInSpanishAndSpeakTheTemplate()
    {
        m_defaults.setValue(MeetAlarmModeStore::key, QStringLiteral("klaxon"));
        m_defaults.setValue(MeetAlarmVoiceLanguageStore::key, QStringLiteral("English"));
        QCOMPARE(MeetAlarmModeStore(m_defaults).load(), MeetAlarmModeEnum::voice);
        QCOMPARE(MeetAlarmVoiceLanguageStore(m_defaults).load(), MeetAlarmVoiceLanguageEnum::spanish);

        MeetAlarmVoiceLanguageStore(m_defaults).save(MeetAlarmVoiceLanguageEnum::english);
        QCOMPARE(scheduler().spokenSentence(QStringLiteral("Team sync")), QStringLiteral("You have a Team sync."));
        m_defaults.setValue(AlarmMessageTemplateDatabase::key, QByteArray(R"({"amtText":"{event} starts, {event}!"})"));
        const MeetEntity meet = aMeet(QStringLiteral("Demo"), now.addSecs(600));
        QVERIFY(scheduler().arm(meet));
        QCOMPARE(spokenText(meet), QStringLiteral("Demo starts, Demo!"));
        QCOMPARE(m_speech->lastVoice, QStringLiteral("en-us"));
    }

    void shouldRingTheChosenChimeOrTheDefaultSound()
    {
        MeetAlarmModeStore(m_defaults).save(MeetAlarmModeEnum::hero);
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("A"), now.addSecs(600))));
        QCOMPARE(m_center->pending.last().content.soundName, QStringLiteral("tolvane-alarm-sound-hero.oga"));
        QFile installed(soundsFolder() + QStringLiteral("/tolvane-alarm-sound-hero.oga"));
        QVERIFY(installed.open(QIODevice::ReadOnly));
        QCOMPARE(installed.readAll(), QByteArray("OggS hero"));

        // The theme has no bell here, and speech fails: the alarms are still scheduled.
        MeetAlarmModeStore(m_defaults).save(MeetAlarmModeEnum::funk);
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("B"), now.addSecs(600))));
        QCOMPARE(m_center->pending.last().content.soundName, QString());
        MeetAlarmModeStore(m_defaults).save(MeetAlarmModeEnum::voice);
        m_speech->works = false;
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("C"), now.addSecs(600))));
        QCOMPARE(m_center->pending.last().content.soundName, QString());
        QCOMPARE(m_center->pending.size(), 3);
    }

    void shouldDisarmTheRequestTheStoreAndTheSpokenFile()
    {
        const MeetEntity kept = aMeet(QStringLiteral("Kept"), now.addSecs(600));
        const MeetEntity dropped = aMeet(QStringLiteral("Dropped"), now.addSecs(900));
        QVERIFY(scheduler().arm(kept));
        QVERIFY(scheduler().arm(dropped));
        scheduler().disarm(dropped);
        QCOMPARE(m_center->pending.size(), 1);
        QCOMPARE(m_center->pending.constFirst().identifier, kept.metId.toString(QUuid::WithoutBraces));
        QVERIFY(!scheduler().isArmed(dropped));
        QVERIFY(spokenText(dropped).isEmpty());
        QVERIFY(!spokenText(kept).isEmpty());
    }

    void shouldArmAndDisarmAWholeDay()
    {
        MeetEntity allDay = aMeet(QStringLiteral("Holiday"), now.addSecs(3600));
        allDay.metIsAllDay = true;
        const MeetEntity morning = aMeet(QStringLiteral("Morning"), now.addSecs(600));
        const MeetEntity afternoon = aMeet(QStringLiteral("Afternoon"), now.addSecs(6 * 3600));
        const QList<MeetEntity> day {allDay, morning, afternoon};

        QVERIFY(!scheduler().isDayArmed({allDay}));
        QVERIFY(scheduler().arm(morning));
        QVERIFY(!scheduler().isDayArmed(day));
        QVERIFY(scheduler().armDay(day));
        QVERIFY(scheduler().isDayArmed(day));
        QCOMPARE(m_center->pending.size(), 2);

        // Once the morning meet is over only the afternoon counts, and it is armed.
        m_clock->advance(3600);
        QVERIFY(scheduler().isDayArmed(day));

        scheduler().disarmDay(day);
        QVERIFY(m_center->pending.isEmpty());
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());
    }

    void shouldDeleteEveryAlarm()
    {
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("A"), now.addSecs(600))));
        QVERIFY(scheduler().arm(aMeet(QStringLiteral("B"), now.addSecs(900))));
        scheduler().deleteAllAlarms();
        QVERIFY(m_center->pending.isEmpty());
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());
        QVERIFY(QDir(soundsFolder()).entryList({QStringLiteral("meet-alarm-*")}, QDir::Files).isEmpty());
    }

    void shouldPreviewASampleMeetWithoutArmingIt()
    {
        MeetAlarmVoiceLanguageStore(m_defaults).save(MeetAlarmVoiceLanguageEnum::english);
        QVERIFY(scheduler().playSamplePreview());
        QVERIFY(scheduler().playSamplePreview());
        QCOMPARE(m_center->pending.size(), 2);
        const UserNotificationRequest request = m_center->pending.last();
        QVERIFY(request.identifier.startsWith(QStringLiteral("preview-sample-alarm-")));
        QCOMPARE(request.content.title, QStringLiteral("Team sync"));
        QCOMPARE(request.trigger.kind, UserNotificationTrigger::Kind::timeInterval);
        QVERIFY(request.trigger.timeInterval > 0 && request.trigger.timeInterval <= 10);
        QVERIFY(ArmedAlarmsStore(m_defaults).load().isEmpty());
        // Only the latest preview's sentence is kept.
        QCOMPARE(QDir(soundsFolder()).entryList({QStringLiteral("meet-alarm-preview-*")}, QDir::Files).size(), 1);
    }

    void shouldOpenTheMeetOfAClickedAlarmOnly()
    {
        QList<std::pair<QString, QDateTime>> opened;
        MeetAlarmNotificationDelegate delegate([&](const QString& name, const QDateTime& date) {
            opened.append({name, date});
        });
        const MeetEntity meet = aMeet(QStringLiteral("Team sync"), QDateTime(QDate(2026, 3, 10), QTime(14, 30)));
        QVERIFY(scheduler().arm(meet));
        const UserNotification notification {m_center->pending.constFirst(), now};

        QCOMPARE(delegate.willPresent(notification),
            UserNotificationPresentationOption::banner | UserNotificationPresentationOption::sound);
        delegate.didReceive({notification, QStringLiteral("dismiss")});
        delegate.didReceive({{{QStringLiteral("foreign"), {}, {}}, now}, QStringLiteral("default")});
        delegate.didReceive({notification, QStringLiteral("default")});
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.constFirst().first, QStringLiteral("Team sync"));
        QCOMPARE(opened.constFirst().second, meet.metDate);
    }
};

TOLVANE_TEST_MAIN(MeetAlarmSchedulerTest)
#include "MeetAlarmSchedulerTest.moc"
