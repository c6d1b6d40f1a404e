#include "tasks/database/TaskListsDatabase.h"

const QString TaskListsDatabaseSchema::name = QStringLiteral("Tasks.TaskList");

QList<RealmObjectType> TaskListsDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("TaskListRealmModel"),
        QStringLiteral("talId TEXT PRIMARY KEY NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "talName TEXT NOT NULL, "
                       "talDescription TEXT NOT NULL, "
                       "talIsDefault INTEGER NOT NULL")}};
}
