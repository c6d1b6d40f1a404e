#pragma once

#include "meetings/alarms/AlarmSoundFiles.h"
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

    explicit MeetAlarmScheduler(Dependencies dependencies);
    // The program's own: the shared notification centre, espeak-ng, the user's sound folder.
    static MeetAlarmScheduler live(UserDefaults defaults,
        std::shared_ptr<UserNotificationCenter> notificationCenter = nullptr,
        std::shared_ptr<SpeechSynthesizer> speechSynthesizer = nullptr);

    bool canHaveAlarm(const MeetEntity& meet, const QDateTime& now) const;
    bool canHaveAlarm(const MeetEntity& meet) const;
    bool isArmed(const MeetEntity& meet) const;

    // False, with nothing stored, when notifications may not be shown. Arming again replaces
    // the earlier request.
    bool arm(const MeetEntity& meet) const;
    void disarm(const MeetEntity& meet) const;

    // Whether the day's switch is on: it has eligible meets and all of them are armed.
    bool isDayArmed(const QList<MeetEntity>& dayMeets) const;
    // Arms the eligible meets not armed yet; false when any of them could not be.
    bool armDay(const QList<MeetEntity>& dayMeets) const;
    void disarmDay(const QList<MeetEntity>& dayMeets) const;

    void deleteAllAlarms() const;

    // A sample alarm a few seconds ahead with the current settings, not recorded as armed.
    bool playSamplePreview() const;

    // What voice mode says for the meet, in the chosen language.
    QString spokenSentence(const QString& metName) const;
    // Renders the sentence to the identifier's spoken file; its file name, or none on failure.
    std::optional<QString> synthesizeAlarmSound(const QString& sentence, const QString& identifier) const;

private:
    bool isAuthorized() const;
    bool schedule(const MeetEntity& meet, const QString& identifier, const UserNotificationTrigger& trigger) const;

    Dependencies m_dependencies;
    AlarmMessageApplication m_messages;
};
