#include "tasks/database/TasksDatabase.h"

const QString TasksDatabaseSchema::name = QStringLiteral("Tasks.Tasks");

QList<RealmObjectType> TasksDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("TaskRealmModel"),
        QStringLiteral("tasId TEXT PRIMARY KEY NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "talId TEXT NOT NULL, "
                       "tasTitle TEXT NOT NULL, "
                       "tasIsDone INTEGER NOT NULL, "
                       "tasDueDate INTEGER, "
                       "tasEisenhowerTag TEXT")}};
}
