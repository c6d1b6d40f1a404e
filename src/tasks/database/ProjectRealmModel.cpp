#include "tasks/database/ProjectRealmModel.h"

#include "storage/RealmValue.h"

RealmObjectType ProjectRealmModel::objectType()
{
    return {QStringLiteral("ProjectRealmModel"),
        QStringLiteral("prjId TEXT PRIMARY KEY NOT NULL, "
                       "prjUserId TEXT NOT NULL, "
                       "prjName TEXT NOT NULL, "
                       "prjDescription TEXT NOT NULL, "
                       "prjShowEveryDay INTEGER NOT NULL")};
}

RealmRow ProjectRealmModel::toRow() const
{
    return {RealmValue::fromUuid(prjId), RealmValue::fromUuid(prjUserId), prjName, prjDescription, prjShowEveryDay};
}

ProjectRealmModel ProjectRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), row.at(2).toString(), row.at(3).toString(),
        row.at(4).toBool()};
}

ProjectRealmModel ProjectRealmModel::fromEntity(const ProjectEntity& entity)
{
    ProjectRealmModel record;
    record.prjId = entity.prjId;
    record.prjUserId = entity.prjUserId;
    record.prjName = entity.prjName;
    record.prjDescription = entity.prjDescription;
    record.prjShowEveryDay = entity.prjShowEveryDay;
    return record;
}

ProjectEntity ProjectRealmModel::toEntity() const
{
    ProjectEntity entity;
    entity.prjId = prjId;
    entity.prjUserId = prjUserId;
    entity.prjName = prjName;
    entity.prjDescription = prjDescription;
    entity.prjShowEveryDay = prjShowEveryDay;
    return entity;
}
