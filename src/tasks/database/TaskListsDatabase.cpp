#include "tasks/database/TaskListsDatabase.h"

#include "tasks/database/TaskListRealmModel.h"

const QString TaskListsDatabaseSchema::name = QStringLiteral("Tasks.TaskList");

QList<RealmObjectType> TaskListsDatabaseSchema::objectTypes()
{
    return {TaskListRealmModel::objectType()};
}
