#pragma once

#include <QString>

enum class MeetAlarmModeEnum { voice, hero, funk };

namespace MeetAlarmModes {
// "voice", "hero", "funk".
QString rawValue(MeetAlarmModeEnum mode);
// Anything unknown is the spoken alarm, the one that says which meet it is.
MeetAlarmModeEnum fromRawValue(const QString& raw);
} // namespace MeetAlarmModes
