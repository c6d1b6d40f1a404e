#include "calendar_providers/database/CalendarProviderDatabase.h"

const QString CalendarProviderDatabaseSchema::name = QStringLiteral("CalendarProviders.RegistryProvider");

QList<RealmObjectType> CalendarProviderDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("CalendarProviderRealmModel"),
        QStringLiteral("capId TEXT PRIMARY KEY NOT NULL, "
                       "capProvider TEXT NOT NULL DEFAULT 'eventKit', "
                       "capDisplayName TEXT NOT NULL, "
                       "capDescription TEXT NOT NULL, "
                       "capEmail TEXT NOT NULL, "
                       "capIsEnabled INTEGER NOT NULL, "
                       "capRegisteredAt INTEGER NOT NULL")}};
}
