#include "tasks/database/TaskRealmModel.h"

#include "storage/RealmValue.h"

RealmObjectType TaskRealmModel::objectType()
{
    return {QStringLiteral("TaskRealmModel"),
        QStringLiteral("tasId TEXT PRIMARY KEY NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "talId TEXT NOT NULL, "
                       "tasTitle TEXT NOT NULL, "
                       "tasIsDone INTEGER NOT NULL, "
                       "tasDueDate INTEGER, "
                       "tasEisenhowerTag TEXT")};
}

RealmRow TaskRealmModel::toRow() const
{
    return {RealmValue::fromUuid(tasId), RealmValue::fromUuid(prjId), RealmValue::fromUuid(talId), tasTitle, tasIsDone,
        RealmValue::fromOptionalDate(tasDueDate), RealmValue::fromOptionalString(tasEisenhowerTag)};
}

TaskRealmModel TaskRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), RealmValue::toUuid(row.at(2)),
        row.at(3).toString(), row.at(4).toBool(), RealmValue::toOptionalDate(row.at(5)),
        RealmValue::toOptionalString(row.at(6))};
}

TaskRealmModel TaskRealmModel::fromEntity(const TaskEntity& entity)
{
    TaskRealmModel record;
    record.tasId = entity.tasId;
    record.prjId = entity.prjId;
    record.talId = entity.talId;
    record.tasTitle = entity.tasTitle;
    record.tasIsDone = entity.tasIsDone;
    record.tasDueDate = entity.tasDueDate;
    if (entity.tasEisenhowerTag)
        record.tasEisenhowerTag = EisenhowerTag::rawValue(*entity.tasEisenhowerTag);
    return record;
}

TaskEntity TaskRealmModel::toEntity() const
{
    TaskEntity entity;
    entity.tasId = tasId;
    entity.prjId = prjId;
    entity.talId = talId;
    entity.tasTitle = tasTitle;
    entity.tasIsDone = tasIsDone;
    entity.tasDueDate = tasDueDate;
    if (tasEisenhowerTag)
        entity.tasEisenhowerTag = EisenhowerTag::fromRawValue(*tasEisenhowerTag);
    return entity;
}
