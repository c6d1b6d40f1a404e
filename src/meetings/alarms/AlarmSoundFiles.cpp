#include "meetings/alarms/AlarmSoundFiles.h"

#include "platform/AppPaths.h"
#include "platform/Logging.h"
#include "platform/notifications/SystemSounds.h"

#include <QDir>
#include <QFile>

namespace {
const QString spokenPrefix = QStringLiteral("meet-alarm-");
const QString spokenSuffix = QStringLiteral(".wav");
} // namespace

AlarmSoundFiles::AlarmSoundFiles(QString userSoundsDirectory, QString systemSoundsDirectory)
    : m_userSoundsDirectory(std::move(userSoundsDirectory))
    , m_systemSoundsDirectory(std::move(systemSoundsDirectory))
{
}

AlarmSoundFiles AlarmSoundFiles::live()
{
    return {AppPaths::userSoundsDirectory(), SystemSounds::themeDirectory};
}

std::optional<QString> AlarmSoundFiles::installAlarmSound(MeetAlarmModeEnum mode) const
{
    QString source;
    switch (mode) {
    case MeetAlarmModeEnum::hero:
        source = QStringLiteral("alarm-clock-elapsed.oga");
        break;
    case MeetAlarmModeEnum::funk:
        source = QStringLiteral("bell.oga");
        break;
    case MeetAlarmModeEnum::voice:
        return std::nullopt;
    }
    const QString fileName = QStringLiteral("tolvane-alarm-sound-%1.oga").arg(MeetAlarmModes::rawValue(mode));
    const QString destination = filePath(fileName);
    if (QFile::exists(destination))
        return fileName;
    QDir().mkpath(m_userSoundsDirectory);
    if (!QFile::copy(m_systemSoundsDirectory + QLatin1Char('/') + source, destination)) {
        qCWarning(lcAlarms) << "cannot install alarm sound" << source << "into" << m_userSoundsDirectory;
        return std::nullopt;
    }
    return fileName;
}

QString AlarmSoundFiles::spokenFileName(const QString& identifier)
{
    return spokenPrefix + identifier + spokenSuffix;
}

QString AlarmSoundFiles::filePath(const QString& fileName) const
{
    return m_userSoundsDirectory + QLatin1Char('/') + fileName;
}

void AlarmSoundFiles::removeSpokenFile(const QString& identifier) const
{
    QFile::remove(filePath(spokenFileName(identifier)));
}

void AlarmSoundFiles::removeSpokenFiles(const QString& identifierPrefix, const QString& keptIdentifierPrefix) const
{
    const QDir folder(m_userSoundsDirectory);
    const QStringList names
        = folder.entryList({spokenPrefix + identifierPrefix + QLatin1Char('*') + spokenSuffix}, QDir::Files);
    for (const QString& name : names) {
        if (keptIdentifierPrefix.isEmpty() || !name.startsWith(spokenPrefix + keptIdentifierPrefix))
            QFile::remove(folder.filePath(name));
    }
}
