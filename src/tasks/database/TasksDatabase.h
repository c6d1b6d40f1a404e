#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.Tasks": one TaskRealmModel record per row.
struct TasksDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using TasksDatabase = RealmStoreDatabase<TasksDatabaseSchema>;
