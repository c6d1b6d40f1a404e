#pragma once

#include <QString>

// The desktop's sound theme (sound-theme-freedesktop).
namespace SystemSounds {

inline const QString themeDirectory = QStringLiteral("/usr/share/sounds/freedesktop/stereo");

// The sound of a notification that names none of its own.
inline const QString defaultNotificationSoundName = QStringLiteral("message-new-instant");

QString defaultNotificationSoundPath();

} // namespace SystemSounds
