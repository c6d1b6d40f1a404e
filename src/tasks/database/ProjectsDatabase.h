#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.Projects": one ProjectRealmModel record per row.
struct ProjectsDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using ProjectsDatabase = RealmStoreDatabase<ProjectsDatabaseSchema>;
