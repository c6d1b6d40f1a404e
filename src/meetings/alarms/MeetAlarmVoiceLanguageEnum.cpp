#include "meetings/alarms/MeetAlarmVoiceLanguageEnum.h"

namespace MeetAlarmVoiceLanguages {

QString rawValue(MeetAlarmVoiceLanguageEnum language)
{
    return language == MeetAlarmVoiceLanguageEnum::english ? QStringLiteral("english") : QStringLiteral("spanish");
}

MeetAlarmVoiceLanguageEnum fromRawValue(const QString& raw)
{
    return raw == QLatin1String("english") ? MeetAlarmVoiceLanguageEnum::english : MeetAlarmVoiceLanguageEnum::spanish;
}

QString speechCode(MeetAlarmVoiceLanguageEnum language)
{
    return language == MeetAlarmVoiceLanguageEnum::english ? QStringLiteral("en-US") : QStringLiteral("es-CO");
}

QString voice(MeetAlarmVoiceLanguageEnum language)
{
    return language == MeetAlarmVoiceLanguageEnum::english ? QStringLiteral("en-us") : QStringLiteral("es-419");
}

QString defaultSentence(MeetAlarmVoiceLanguageEnum language, const QString& metName)
{
    const QString opening
        = language == MeetAlarmVoiceLanguageEnum::english ? QStringLiteral("You have a ") : QStringLiteral("Tienes a ");
    return opening + metName + QLatin1Char('.');
}

} // namespace MeetAlarmVoiceLanguages
