#include "calendar_providers/stores/HiddenCalendarsStore.h"

#include "calendar_providers/stores/JsonStringSetFile.h"
#include "platform/AppPaths.h"
#include "platform/NotificationCenter.h"

#include <QDir>

HiddenCalendarsStore HiddenCalendarsStore::standard(NotificationCenter& center)
{
    return HiddenCalendarsStore(AppPaths::appGroupContainer(), center);
}

HiddenCalendarsStore::HiddenCalendarsStore(const QString& directory, NotificationCenter& center)
    : m_filePath(QDir(directory).filePath(fileName))
    , m_center(&center)
{
}

QSet<QString> HiddenCalendarsStore::load() const
{
    return JsonStringSetFile::load(m_filePath);
}

void HiddenCalendarsStore::save(const QSet<QString>& calendarIdentifiers) const
{
    if (JsonStringSetFile::save(m_filePath, calendarIdentifiers))
        m_center->post(NotificationName::hiddenCalendarsDidChange);
}
