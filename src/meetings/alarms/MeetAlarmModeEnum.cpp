#include "meetings/alarms/MeetAlarmModeEnum.h"

namespace MeetAlarmModes {

QString rawValue(MeetAlarmModeEnum mode)
{
    switch (mode) {
    case MeetAlarmModeEnum::hero:
        return QStringLiteral("hero");
    case MeetAlarmModeEnum::funk:
        return QStringLiteral("funk");
    case MeetAlarmModeEnum::voice:
        break;
    }
    return QStringLiteral("voice");
}

MeetAlarmModeEnum fromRawValue(const QString& raw)
{
    if (raw == QLatin1String("hero"))
        return MeetAlarmModeEnum::hero;
    if (raw == QLatin1String("funk"))
        return MeetAlarmModeEnum::funk;
    return MeetAlarmModeEnum::voice;
}

} // namespace MeetAlarmModes
