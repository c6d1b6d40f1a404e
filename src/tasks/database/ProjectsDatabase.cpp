#include "tasks/database/ProjectsDatabase.h"

const QString ProjectsDatabaseSchema::name = QStringLiteral("Tasks.Projects");

QList<RealmObjectType> ProjectsDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("ProjectRealmModel"),
        QStringLiteral("prjId TEXT PRIMARY KEY NOT NULL, "
                       "prjUserId TEXT NOT NULL, "
                       "prjName TEXT NOT NULL, "
                       "prjDescription TEXT NOT NULL, "
                       "prjShowEveryDay INTEGER NOT NULL")}};
}
