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

QStringList RealmObjectType::propertyNames() const
{
    QStringList names;
    for (const QString& definition : columns.split(QLatin1Char(',')))
        names.append(definition.trimmed().section(QLatin1Char(' '), 0, 0));
    return names;
}
