#include "tasks/database/BitacoraDatabase.h"

const QString BitacoraDatabaseSchema::name = QStringLiteral("Tasks.Bitacora");

QList<RealmObjectType> BitacoraDatabaseSchema::objectTypes()
{
    return {{QStringLiteral("BitacoraEntryRealmModel"),
        QStringLiteral("bteId TEXT PRIMARY KEY NOT NULL, "
                       "bteUserId TEXT NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "bteDate INTEGER NOT NULL, "
                       "bteContent TEXT NOT NULL")}};
}
