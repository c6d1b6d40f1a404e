#include "platform/notifications/SystemSounds.h"

namespace SystemSounds {

QString defaultNotificationSoundPath()
{
    return themeDirectory + QLatin1Char('/') + defaultNotificationSoundName + QStringLiteral(".oga");
}

} // namespace SystemSounds
