#pragma once

#include "meetings/alarms/MeetAlarmModeEnum.h"

#include <QString>

#include <optional>

// The alarm sounds in the user's sound folder: the two chime copies and one spoken file per
// alarm. Files are named, not pathed, in notification requests, as the folder is the one the
// notification centre looks in.
class AlarmSoundFiles {
public:
    AlarmSoundFiles(QString userSoundsDirectory, QString systemSoundsDirectory);
    // $XDG_DATA_HOME/sounds and the freedesktop sound theme.
    static AlarmSoundFiles live();

    // Copies the mode's chime from the sound theme the first time; the file name, or none when
    // it cannot be had (or for voice).
    std::optional<QString> installAlarmSound(MeetAlarmModeEnum mode) const;

    // "meet-alarm-<identifier>.wav"
    static QString spokenFileName(const QString& identifier);
    QString filePath(const QString& fileName) const;
    void removeSpokenFile(const QString& identifier) const;
    // Spoken files whose name starts with "meet-alarm-" + prefix, but for those of identifiers
    // starting with keptIdentifierPrefix (when given).
    void removeSpokenFiles(const QString& identifierPrefix = {}, const QString& keptIdentifierPrefix = {}) const;

    const QString& userSoundsDirectory() const { return m_userSoundsDirectory; }

private:
    QString m_userSoundsDirectory;
    QString m_systemSoundsDirectory;
};
