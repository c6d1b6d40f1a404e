#include "calendar_providers/stores/EnabledCalendarProvidersStore.h"

#include "calendar_providers/stores/JsonStringSetFile.h"
#include "platform/AppPaths.h"

#include <QDir>

EnabledCalendarProvidersStore EnabledCalendarProvidersStore::standard()
{
    return EnabledCalendarProvidersStore(AppPaths::tolvaneDataDirectory());
}

EnabledCalendarProvidersStore::EnabledCalendarProvidersStore(const QString& directory)
    : m_filePath(QDir(directory).filePath(fileName))
{
}

AccountProviderSet EnabledCalendarProvidersStore::load() const
{
    return JsonStringSetFile::loadKinds(m_filePath);
}

void EnabledCalendarProvidersStore::save(const AccountProviderSet& kinds) const
{
    JsonStringSetFile::saveKinds(m_filePath, kinds);
}
