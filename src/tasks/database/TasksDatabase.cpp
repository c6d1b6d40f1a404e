#include "tasks/database/TasksDatabase.h"

#include "tasks/database/TaskRealmModel.h"

const QString TasksDatabaseSchema::name = QStringLiteral("Tasks.Tasks");

QList<RealmObjectType> TasksDatabaseSchema::objectTypes()
{
    return {TaskRealmModel::objectType()};
}

void TasksDatabaseSchema::migrate(RealmDatabase& database, quint64 oldVersion)
{
    TaskRealmModel::migrate(database, oldVersion);
}
