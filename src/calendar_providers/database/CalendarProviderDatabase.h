#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "CalendarProviders.RegistryProvider": one CalendarProviderRealmModel record per row.
struct CalendarProviderDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using CalendarProviderDatabase = RealmStoreDatabase<CalendarProviderDatabaseSchema>;
