#pragma once

#include "storage/RealmStoreDatabase.h"

// The store "Tasks.Tasks": one TaskRealmModel record per row.
// Version 2 gave tasks a time of day, repetition, reminders and a completion time; version 3
// indexes the due date and the completion time (opening at version 3 creates the indexes).
struct TasksDatabaseSchema {
    static const QString name;
    static constexpr quint64 schemaVersion = 3;
    static QList<RealmObjectType> objectTypes();
    static void migrate(RealmDatabase& database, quint64 oldVersion);
};

using TasksDatabase = RealmStoreDatabase<TasksDatabaseSchema>;
