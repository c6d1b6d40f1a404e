#include "tasks/database/DailyTasksDatabase.h"

const QString DailyTasksDatabaseSchema::name = QStringLiteral("Tasks.DailyTask");

QList<RealmObjectType> DailyTasksDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("DailyTaskRealmModel"),
        QStringLiteral("dtaId TEXT PRIMARY KEY NOT NULL, "
                       "dtaUserId TEXT NOT NULL, "
                       "dtaDate INTEGER NOT NULL, "
                       "dtaTitle TEXT NOT NULL, "
                       "dtaIsDone INTEGER NOT NULL")}};
}
