#include "tasks/database/DailyTasksDatabase.h"

#include "tasks/database/DailyTaskRealmModel.h"

const QString DailyTasksDatabaseSchema::name = QStringLiteral("Tasks.DailyTask");

QList<RealmObjectType> DailyTasksDatabaseSchema::objectTypes()
{
    return {DailyTaskRealmModel::objectType()};
}
