#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.DailyTask": one DailyTaskRealmModel record per row.
struct DailyTasksDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using DailyTasksDatabase = RealmStoreDatabase<DailyTasksDatabaseSchema>;
