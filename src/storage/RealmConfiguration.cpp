#include "storage/RealmConfiguration.h"

#include "platform/AppPaths.h"

RealmConfiguration RealmConfiguration::defaultConfiguration()
{
    RealmConfiguration configuration;
    configuration.fileURL = AppPaths::tolvaneDataDirectory() + QStringLiteral("/default.realm");
    return configuration;
}

QStringList RealmConfiguration::files() const
{
    const QString path = fileURL.value_or(*defaultConfiguration().fileURL);
    return {path, path + QStringLiteral("-journal"), path + QStringLiteral("-wal"), path + QStringLiteral("-shm")};
}
