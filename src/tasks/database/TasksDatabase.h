#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.Tasks": one TaskRealmModel record per row.
// Version 2 gave tasks a time of day, repetition, reminders and a completion time.
struct TasksDatabaseSchema {
    static const QString name;
    static constexpr quint64 schemaVersion = 2;
    static QList<RealmObjectType> objectTypes();
    static void migrate(RealmDatabase& database, quint64 oldVersion);
};

using TasksDatabase = RealmStoreDatabase<TasksDatabaseSchema>;
