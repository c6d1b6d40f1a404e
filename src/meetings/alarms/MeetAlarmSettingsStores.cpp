#include "meetings/alarms/MeetAlarmSettingsStores.h"

#include <QStringList>

#include <algorithm>

namespace {

QSet<QString> loadSet(const UserDefaults& defaults, const QString& key)
{
    // The INI file gives a one-element array back as plain text; toStringList reads both forms.
    const QStringList stored = defaults.value(key).toStringList();
    return QSet<QString>(stored.begin(), stored.end());
}

void saveSet(UserDefaults& defaults, const QString& key, const QSet<QString>& values)
{
    QStringList sorted(values.begin(), values.end());
    std::sort(sorted.begin(), sorted.end());
    defaults.setValue(key, sorted);
}

} // namespace

ArmedAlarmsStore::ArmedAlarmsStore(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

QSet<QString> ArmedAlarmsStore::load() const
{
    return loadSet(m_defaults, key);
}

bool ArmedAlarmsStore::contains(const QString& identifier) const
{
    return load().contains(identifier);
}

void ArmedAlarmsStore::add(const QString& identifier)
{
    QSet<QString> identifiers = load();
    identifiers.insert(identifier);
    save(identifiers);
}

void ArmedAlarmsStore::remove(const QString& identifier)
{
    remove(QSet<QString> {identifier});
}

void ArmedAlarmsStore::remove(const QSet<QString>& identifiers)
{
    save(load().subtract(identifiers));
}

void ArmedAlarmsStore::clear()
{
    m_defaults.remove(key);
}

void ArmedAlarmsStore::save(const QSet<QString>& identifiers)
{
    saveSet(m_defaults, key, identifiers);
}

AppCreatedEventIdentifiersStore::AppCreatedEventIdentifiersStore(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

QSet<QString> AppCreatedEventIdentifiersStore::load() const
{
    return loadSet(m_defaults, key);
}

void AppCreatedEventIdentifiersStore::add(const QString& eventIdentifier)
{
    QSet<QString> identifiers = load();
    identifiers.insert(eventIdentifier);
    saveSet(m_defaults, key, identifiers);
}

MeetAlarmModeStore::MeetAlarmModeStore(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

MeetAlarmModeEnum MeetAlarmModeStore::load() const
{
    return MeetAlarmModes::fromRawValue(m_defaults.value(key).toString());
}

void MeetAlarmModeStore::save(MeetAlarmModeEnum mode)
{
    m_defaults.setValue(key, MeetAlarmModes::rawValue(mode));
}

MeetAlarmVoiceLanguageStore::MeetAlarmVoiceLanguageStore(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

MeetAlarmVoiceLanguageEnum MeetAlarmVoiceLanguageStore::load() const
{
    return MeetAlarmVoiceLanguages::fromRawValue(m_defaults.value(key).toString());
}

void MeetAlarmVoiceLanguageStore::save(MeetAlarmVoiceLanguageEnum language)
{
    m_defaults.setValue(key, MeetAlarmVoiceLanguages::rawValue(language));
}
