#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.Bitacora": one BitacoraEntryRealmModel record per row.
struct BitacoraDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using BitacoraDatabase = RealmStoreDatabase<BitacoraDatabaseSchema>;
