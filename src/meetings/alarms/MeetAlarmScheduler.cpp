#include "meetings/alarms/MeetAlarmScheduler.h"

#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/templates/LocalAlarmMessageTemplateRepositoryImpl.h"
#include "platform/Logging.h"
#include "platform/SystemClock.h"
#include "platform/notifications/EspeakSpeechSynthesizer.h"
#include "platform/notifications/LiveUserNotificationCenter.h"

#include <QDir>

MeetAlarmScheduler::MeetAlarmScheduler(Dependencies dependencies)
    : m_dependencies(std::move(dependencies))
    , m_messages(std::make_shared<LocalAlarmMessageTemplateRepositoryImpl>(
          AlarmMessageTemplateDatabase(m_dependencies.defaults)))
{
}

MeetAlarmScheduler MeetAlarmScheduler::live(UserDefaults defaults,
    std::shared_ptr<UserNotificationCenter> notificationCenter, std::shared_ptr<SpeechSynthesizer> speechSynthesizer)
{
    if (!notificationCenter)
        notificationCenter = LiveUserNotificationCenter::shared();
    if (!speechSynthesizer)
        speechSynthesizer = std::make_shared<EspeakSpeechSynthesizer>();
    return MeetAlarmScheduler({std::move(defaults), std::move(notificationCenter), std::move(speechSynthesizer),
        AlarmSoundFiles::live(), std::make_shared<SystemClock>()});
}

std::optional<MeetAlarmError> MeetAlarmScheduler::refusal(const MeetEntity& meet, const QDateTime& now) const
{
    // Meets of the backend and meets made here may always ring; others only from the calendars
    // the user chose for alarms.
    const bool calendarAllowsAlarms = meet.metSource != MeetSource::eventKit
        || AppCreatedEventIdentifiersStore(m_dependencies.defaults).load().contains(meet.metOriginalIdentifier)
        || AlarmEnabledCalendarsStore(m_dependencies.defaults).load().contains(meet.metCalendarIdentifier);
    return MeetAlarmError::refusal(meet, now, calendarAllowsAlarms);
}

bool MeetAlarmScheduler::canHaveAlarm(const MeetEntity& meet, const QDateTime& now) const
{
    return !refusal(meet, now);
}

bool MeetAlarmScheduler::canHaveAlarm(const MeetEntity& meet) const
{
    return canHaveAlarm(meet, m_dependencies.clock->now());
}

bool MeetAlarmScheduler::isArmed(const MeetEntity& meet) const
{
    return ArmedAlarmsStore(m_dependencies.defaults).contains(meet.metId.toString(QUuid::WithoutBraces));
}

bool MeetAlarmScheduler::isAuthorized() const
{
    switch (m_dependencies.notificationCenter->authorizationStatus()) {
    case UserNotificationAuthorizationStatus::authorized:
    case UserNotificationAuthorizationStatus::provisional:
        return true;
    case UserNotificationAuthorizationStatus::notDetermined:
        return m_dependencies.notificationCenter->requestAuthorization();
    case UserNotificationAuthorizationStatus::denied:
        break;
    }
    return false;
}

MeetAlarmScheduler::Arming MeetAlarmScheduler::arm(const MeetEntity& meet) const
{
    if (std::optional<MeetAlarmError> broken = refusal(meet, m_dependencies.clock->now()))
        return {std::move(broken)};
    // A desktop asks no permission: notifications are refused only when nobody can show them.
    if (!isAuthorized())
        return {MeetAlarmError::noNotificationService()};
    const QString identifier = meet.metId.toString(QUuid::WithoutBraces);
    if (std::optional<MeetAlarmError> failure
        = schedule(meet, identifier, UserNotificationTrigger::calendar(meet.metDate)))
        return {std::move(failure)};
    ArmedAlarmsStore(m_dependencies.defaults).add(identifier);
    return {};
}

std::optional<MeetAlarmError> MeetAlarmScheduler::schedule(
    const MeetEntity& meet, const QString& identifier, const UserNotificationTrigger& trigger) const
{
    UserNotificationRequest request;
    request.identifier = identifier;
    request.content.title = meet.metName;
    //% "Your event is starting"
    request.content.body = qtTrId("meet-alarm-notification-body");
    request.content.userInfo = {{QStringLiteral("metName"), meet.metName},
        {QStringLiteral("metDate"), double(meet.metDate.toMSecsSinceEpoch()) / 1000.0},
        {QStringLiteral("metOriginalIdentifier"), meet.metOriginalIdentifier},
        {QStringLiteral("metSource"), MeetSources::rawValue(meet.metSource)}};
    // Without a file the centre falls back to the default sound: the alarm still rings.
    request.content.soundName = alarmSound(spokenSentence(meet.metName), identifier).value_or(QString());
    request.trigger = trigger;
    try {
        m_dependencies.notificationCenter->add(request);
    } catch (const UserNotificationError& error) {
        qCWarning(lcAlarms) << "cannot schedule alarm" << identifier << error.what();
        return MeetAlarmError::notScheduled(QString::fromUtf8(error.what()));
    }
    return std::nullopt;
}

QList<MeetEntity> MeetAlarmScheduler::armedMeets() const
{
    const QSet<QString> armed = ArmedAlarmsStore(m_dependencies.defaults).load();
    QList<MeetEntity> meets;
    for (const UserNotificationRequest& request : m_dependencies.notificationCenter->pendingRequests()) {
        if (!armed.contains(request.identifier))
            continue;
        const QVariantMap& info = request.content.userInfo;
        MeetEntity meet;
        meet.metId = QUuid::fromString(request.identifier);
        meet.metName = info.value(QStringLiteral("metName")).toString();
        meet.metDate
            = QDateTime::fromMSecsSinceEpoch(qint64(info.value(QStringLiteral("metDate")).toDouble() * 1000.0));
        meet.metOriginalIdentifier = info.value(QStringLiteral("metOriginalIdentifier")).toString();
        meet.metSource = MeetSources::fromRawValue(info.value(QStringLiteral("metSource")).toString())
                             .value_or(MeetSource::eventKit);
        meets.append(meet);
    }
    return meets;
}

void MeetAlarmScheduler::disarm(const MeetEntity& meet) const
{
    const QString identifier = meet.metId.toString(QUuid::WithoutBraces);
    m_dependencies.notificationCenter->removePendingRequests({identifier});
    ArmedAlarmsStore(m_dependencies.defaults).remove(identifier);
    m_dependencies.soundFiles.removeSpokenFile(identifier);
}

bool MeetAlarmScheduler::isDayArmed(const QList<MeetEntity>& dayMeets) const
{
    const QDateTime now = m_dependencies.clock->now();
    const QSet<QString> armed = ArmedAlarmsStore(m_dependencies.defaults).load();
    bool anyEligible = false;
    for (const MeetEntity& meet : dayMeets) {
        if (!canHaveAlarm(meet, now))
            continue;
        anyEligible = true;
        if (!armed.contains(meet.metId.toString(QUuid::WithoutBraces)))
            return false;
    }
    return anyEligible;
}

MeetAlarmScheduler::Arming MeetAlarmScheduler::armDay(const QList<MeetEntity>& dayMeets) const
{
    const QDateTime now = m_dependencies.clock->now();
    const QSet<QString> armed = ArmedAlarmsStore(m_dependencies.defaults).load();
    Arming firstRefused;
    for (const MeetEntity& meet : dayMeets) {
        if (!canHaveAlarm(meet, now) || armed.contains(meet.metId.toString(QUuid::WithoutBraces)))
            continue;
        Arming arming = arm(meet);
        if (!arming && !firstRefused.refusal)
            firstRefused = std::move(arming);
    }
    return firstRefused;
}

void MeetAlarmScheduler::disarmDay(const QList<MeetEntity>& dayMeets) const
{
    const QSet<QString> armed = ArmedAlarmsStore(m_dependencies.defaults).load();
    for (const MeetEntity& meet : dayMeets) {
        if (armed.contains(meet.metId.toString(QUuid::WithoutBraces)))
            disarm(meet);
    }
}

void MeetAlarmScheduler::deleteAllAlarms(const QString& keptIdentifierPrefix) const
{
    if (keptIdentifierPrefix.isEmpty()) {
        m_dependencies.notificationCenter->removeAllPendingRequests();
    } else {
        QStringList identifiers;
        for (const UserNotificationRequest& request : m_dependencies.notificationCenter->pendingRequests()) {
            if (!request.identifier.startsWith(keptIdentifierPrefix))
                identifiers.append(request.identifier);
        }
        m_dependencies.notificationCenter->removePendingRequests(identifiers);
    }
    ArmedAlarmsStore(m_dependencies.defaults).clear();
    // With no meet alarm pending, every spoken file of one is an orphan.
    m_dependencies.soundFiles.removeSpokenFiles({}, keptIdentifierPrefix);
}

bool MeetAlarmScheduler::playSamplePreview() const
{
    if (!isAuthorized())
        return false;
    const bool english
        = MeetAlarmVoiceLanguageStore(m_dependencies.defaults).load() == MeetAlarmVoiceLanguageEnum::english;
    MeetEntity sample;
    sample.metId = QUuid::createUuid();
    sample.metName = english ? QStringLiteral("Team sync") : QStringLiteral("Sync con el equipo");
    sample.metColor = MeetColor {QStringLiteral("#0A84FF")};
    sample.metDate = m_dependencies.clock->now().addMSecs(qint64(previewDelaySeconds * 1000));
    sample.metDuration = 30 * 60;
    sample.metSource = MeetSource::backend;
    // One preview's sentence is enough to keep around.
    m_dependencies.soundFiles.removeSpokenFiles(previewIdentifierPrefix);
    return !schedule(sample, previewIdentifierPrefix + sample.metId.toString(QUuid::WithoutBraces),
        UserNotificationTrigger::afterInterval(previewDelaySeconds));
}

QString MeetAlarmScheduler::spokenSentence(const QString& metName) const
{
    const MeetAlarmVoiceLanguageEnum language = MeetAlarmVoiceLanguageStore(m_dependencies.defaults).load();
    return m_messages.message(metName, MeetAlarmVoiceLanguages::defaultSentence(language, metName));
}

std::optional<QString> MeetAlarmScheduler::synthesizeAlarmSound(
    const QString& sentence, const QString& identifier) const
{
    const MeetAlarmVoiceLanguageEnum language = MeetAlarmVoiceLanguageStore(m_dependencies.defaults).load();
    const QString fileName = AlarmSoundFiles::spokenFileName(identifier);
    QDir().mkpath(m_dependencies.soundFiles.userSoundsDirectory());
    if (!m_dependencies.speechSynthesizer->synthesize(
            sentence, MeetAlarmVoiceLanguages::voice(language), m_dependencies.soundFiles.filePath(fileName)))
        return std::nullopt;
    return fileName;
}

std::optional<QString> MeetAlarmScheduler::alarmSound(const QString& sentence, const QString& identifier) const
{
    const MeetAlarmModeEnum mode = MeetAlarmModeStore(m_dependencies.defaults).load();
    return mode == MeetAlarmModeEnum::voice ? synthesizeAlarmSound(sentence, identifier)
                                            : m_dependencies.soundFiles.installAlarmSound(mode);
}
