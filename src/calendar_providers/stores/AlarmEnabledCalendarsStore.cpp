#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"

#include <QStringList>

#include <algorithm>

AlarmEnabledCalendarsStore::AlarmEnabledCalendarsStore(UserDefaults defaults)
    : m_defaults(std::move(defaults))
{
}

QSet<QString> AlarmEnabledCalendarsStore::load() const
{
    // The INI file gives a one-element array back as plain text; toStringList reads both forms.
    const QStringList stored = m_defaults.value(key).toStringList();
    return QSet<QString>(stored.begin(), stored.end());
}

void AlarmEnabledCalendarsStore::save(const QSet<QString>& calendarIdentifiers)
{
    QStringList sorted(calendarIdentifiers.begin(), calendarIdentifiers.end());
    std::sort(sorted.begin(), sorted.end());
    m_defaults.setValue(key, sorted);
}

void AlarmEnabledCalendarsStore::clear()
{
    m_defaults.remove(key);
}
