#include "tasks/database/TaskListRealmModel.h"

#include "storage/RealmValue.h"

RealmObjectType TaskListRealmModel::objectType()
{
    return {QStringLiteral("TaskListRealmModel"),
        QStringLiteral("talId TEXT PRIMARY KEY NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "talName TEXT NOT NULL, "
                       "talDescription TEXT NOT NULL, "
                       "talIsDefault INTEGER NOT NULL")};
}

RealmRow TaskListRealmModel::toRow() const
{
    return {RealmValue::fromUuid(talId), RealmValue::fromUuid(prjId), talName, talDescription, talIsDefault};
}

TaskListRealmModel TaskListRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), row.at(2).toString(), row.at(3).toString(),
        row.at(4).toBool()};
}

TaskListRealmModel TaskListRealmModel::fromEntity(const TaskListEntity& entity)
{
    TaskListRealmModel record;
    record.talId = entity.talId;
    record.prjId = entity.prjId;
    record.talName = entity.talName;
    record.talDescription = entity.talDescription;
    record.talIsDefault = entity.talIsDefault;
    return record;
}

TaskListEntity TaskListRealmModel::toEntity() const
{
    TaskListEntity entity;
    entity.talId = talId;
    entity.prjId = prjId;
    entity.talName = talName;
    entity.talDescription = talDescription;
    entity.talIsDefault = talIsDefault;
    return entity;
}
