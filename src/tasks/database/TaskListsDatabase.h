#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.TaskList": one TaskListRealmModel record per row.
struct TaskListsDatabaseSchema {
    static const QString name;
    static QList<RealmObjectType> objectTypes();
};

using TaskListsDatabase = RealmStoreDatabase<TaskListsDatabaseSchema>;
