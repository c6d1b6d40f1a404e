#include "tasks/database/ProjectsDatabase.h"

#include "tasks/database/ProjectRealmModel.h"

const QString ProjectsDatabaseSchema::name = QStringLiteral("Tasks.Projects");

QList<RealmObjectType> ProjectsDatabaseSchema::objectTypes()
{
    return {ProjectRealmModel::objectType()};
}
