#include "calendar_providers/database/CalendarProviderDatabase.h"

#include "calendar_providers/database/CalendarProviderRealmModel.h"

const QString CalendarProviderDatabaseSchema::name = QStringLiteral("CalendarProviders.RegistryProvider");

QList<RealmObjectType> CalendarProviderDatabaseSchema::objectTypes()
{
    return {CalendarProviderRealmModel::objectType()};
}
