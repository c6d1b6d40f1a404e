#pragma once

#include <QString>

enum class MeetAlarmVoiceLanguageEnum { spanish, english };

namespace MeetAlarmVoiceLanguages {
// "spanish", "english".
QString rawValue(MeetAlarmVoiceLanguageEnum language);
// Anything but "english" is spanish.
MeetAlarmVoiceLanguageEnum fromRawValue(const QString& raw);
// "es-CO", "en-US".
QString speechCode(MeetAlarmVoiceLanguageEnum language);
// The espeak-ng voice: it has no Colombian Spanish, Latin American is the nearest.
QString voice(MeetAlarmVoiceLanguageEnum language);
// "Tienes a Team sync." / "You have a Team sync.", when the user keeps no template.
QString defaultSentence(MeetAlarmVoiceLanguageEnum language, const QString& metName);
} // namespace MeetAlarmVoiceLanguages
