#include "tasks/database/BitacoraDatabase.h"

#include "tasks/database/BitacoraEntryRealmModel.h"

const QString BitacoraDatabaseSchema::name = QStringLiteral("Tasks.Bitacora");

QList<RealmObjectType> BitacoraDatabaseSchema::objectTypes()
{
    return {BitacoraEntryRealmModel::objectType()};
}
