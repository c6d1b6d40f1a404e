#include "calendar_providers/stores/EnabledCalendarAccountsStore.h"

#include "calendar_providers/stores/JsonStringSetFile.h"
#include "platform/AppPaths.h"

#include <QDir>
#include <QFile>

EnabledCalendarAccountsStore EnabledCalendarAccountsStore::standard()
{
    return EnabledCalendarAccountsStore(AppPaths::appGroupContainer());
}

EnabledCalendarAccountsStore::EnabledCalendarAccountsStore(const QString& directory)
    : m_filePath(QDir(directory).filePath(fileName))
{
}

AccountProviderSet EnabledCalendarAccountsStore::load() const
{
    return JsonStringSetFile::loadKinds(m_filePath);
}

void EnabledCalendarAccountsStore::save(const AccountProviderSet& kinds) const
{
    JsonStringSetFile::saveKinds(m_filePath, kinds);
}

void EnabledCalendarAccountsStore::clear() const
{
    QFile::remove(m_filePath);
}
