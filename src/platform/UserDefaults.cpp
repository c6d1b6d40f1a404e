#include "platform/UserDefaults.h"

#include <QSettings>

UserDefaults UserDefaults::standard()
{
    const QSettings settings(
        QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Quorvel"), QStringLiteral("Tolvane"));
    return UserDefaults(settings.fileName());
}

UserDefaults::UserDefaults(QString filePath)
    : m_filePath(std::move(filePath))
{
}

bool UserDefaults::contains(const QString& key) const
{
    return QSettings(m_filePath, QSettings::IniFormat).contains(key);
}

QVariant UserDefaults::value(const QString& key) const
{
    return QSettings(m_filePath, QSettings::IniFormat).value(key);
}

bool UserDefaults::boolValue(const QString& key) const
{
    // The INI file gives every value back as text; QVariant would call any non-empty text true.
    const QString stored = value(key).toString().trimmed().toLower();
    return stored == u"true" || stored == u"1";
}

void UserDefaults::setValue(const QString& key, const QVariant& value)
{
    QSettings(m_filePath, QSettings::IniFormat).setValue(key, value);
}

void UserDefaults::remove(const QString& key)
{
    QSettings(m_filePath, QSettings::IniFormat).remove(key);
}
