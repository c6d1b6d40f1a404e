#pragma once

#include "meetings/alarms/AlarmSoundFiles.h"
#include "meetings/domain/MeetAlarmError.h"
#include "meetings/entities/MeetEntity.h"
#include "meetings/templates/AlarmMessageApplication.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"
#include "platform/notifications/SpeechSynthesizer.h"
#include "platform/notifications/UserNotificationCenter.h"

#include <QList>

#include <memory>
#include <optional>

// Alarms on meets: a notification at the meet's start that rings a chime or speaks a sentence
// about the meet. Blocking (synthesis takes a moment): run it off the GUI thread. The caller
// posts "alarmScheduleDidChange" after the changes it asked for.
class MeetAlarmScheduler {
public:
    struct Dependencies {
        UserDefaults defaults;
        std::shared_ptr<UserNotificationCenter> notificationCenter;
        std::shared_ptr<SpeechSynthesizer> speechSynthesizer;
        AlarmSoundFiles soundFiles;
        std::shared_ptr<const Clock> clock;
    };

    static inline const QString previewIdentifierPrefix = QStringLiteral("preview-sample-alarm-");
    // Long enough to switch away from the settings and still see the banner arrive.
    static constexpr double previewDelaySeconds = 3;

    // Armed, or why not.
    struct Arming {
        std::optional<MeetAlarmError> refusal;
        explicit operator bool() const { return !refusal; }
    };

    explicit MeetAlarmScheduler(Dependencies dependencies);
    // The program's own: the shared notification centre, espeak-ng, the user's sound folder.
    static MeetAlarmScheduler live(UserDefaults defaults,
        std::shared_ptr<UserNotificationCenter> notificationCenter = nullptr,
        std::shared_ptr<SpeechSynthesizer> speechSynthesizer = nullptr);

    bool canHaveAlarm(const MeetEntity& meet, const QDateTime& now) const;
    bool canHaveAlarm(const MeetEntity& meet) const;
    // The alarm rule the meet breaks at now, if any.
    std::optional<MeetAlarmError> refusal(const MeetEntity& meet, const QDateTime& now) const;
    bool isArmed(const MeetEntity& meet) const;

    // Refused, with nothing stored, when the meet may not have an alarm or notifications cannot
    // be shown. Arming again replaces the earlier request.
    Arming arm(const MeetEntity& meet) const;
    void disarm(const MeetEntity& meet) const;

    // The armed alarms' meets as their requests remember them (identity, name, start, event
    // and source): enough to find the event again after another program moved or deleted it,
    // whatever day it is on. The event identifier is empty for an alarm armed before the
    // requests carried it.
    QList<MeetEntity> armedMeets() const;

    // Whether the day's switch is on: it has eligible meets and all of them are armed.
    bool isDayArmed(const QList<MeetEntity>& dayMeets) const;
    // Arms the eligible meets not armed yet; refused when any of them could not be.
    Arming armDay(const QList<MeetEntity>& dayMeets) const;
    void disarmDay(const QList<MeetEntity>& dayMeets) const;

    // Every pending alarm and its sound, but for those whose identifier starts with
    // keptIdentifierPrefix (when given): alarms of another kind that share the centre.
    void deleteAllAlarms(const QString& keptIdentifierPrefix = {}) const;

    // A sample alarm a few seconds ahead with the current settings, not recorded as armed.
    bool playSamplePreview() const;

    // What voice mode says for the meet, in the chosen language.
    QString spokenSentence(const QString& metName) const;
    // Renders the sentence to the identifier's spoken file; its file name, or none on failure.
    std::optional<QString> synthesizeAlarmSound(const QString& sentence, const QString& identifier) const;
    // What the alarm of identifier rings with, as the user's alarm mode says: the chime's file,
    // or the sentence spoken into the identifier's file. None: the default notification sound.
    std::optional<QString> alarmSound(const QString& sentence, const QString& identifier) const;

    // The notification centre, clock, sound folder and settings the alarms go through; other
    // kinds of alarm ring through the same ones.
    const Dependencies& dependencies() const { return m_dependencies; }

private:
    bool isAuthorized() const;
    std::optional<MeetAlarmError> schedule(
        const MeetEntity& meet, const QString& identifier, const UserNotificationTrigger& trigger) const;

    Dependencies m_dependencies;
    AlarmMessageApplication m_messages;
};
