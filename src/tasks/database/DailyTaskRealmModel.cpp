#include "tasks/database/DailyTaskRealmModel.h"

#include "storage/RealmValue.h"

RealmObjectType DailyTaskRealmModel::objectType()
{
    return {QStringLiteral("DailyTaskRealmModel"),
        QStringLiteral("dtaId TEXT PRIMARY KEY NOT NULL, "
                       "dtaUserId TEXT NOT NULL, "
                       "dtaDate INTEGER NOT NULL, "
                       "dtaTitle TEXT NOT NULL, "
                       "dtaIsDone INTEGER NOT NULL")};
}

RealmRow DailyTaskRealmModel::toRow() const
{
    return {RealmValue::fromUuid(dtaId), RealmValue::fromUuid(dtaUserId), RealmValue::fromDate(dtaDate), dtaTitle,
        dtaIsDone};
}

DailyTaskRealmModel DailyTaskRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), RealmValue::toDate(row.at(2)),
        row.at(3).toString(), row.at(4).toBool()};
}

DailyTaskRealmModel DailyTaskRealmModel::fromEntity(const DailyTaskEntity& entity)
{
    DailyTaskRealmModel record;
    record.dtaId = entity.dtaId;
    record.dtaUserId = entity.dtaUserId;
    record.dtaDate = entity.dtaDate;
    record.dtaTitle = entity.dtaTitle;
    record.dtaIsDone = entity.dtaIsDone;
    return record;
}

DailyTaskEntity DailyTaskRealmModel::toEntity() const
{
    DailyTaskEntity entity;
    entity.dtaId = dtaId;
    entity.dtaUserId = dtaUserId;
    entity.dtaDate = dtaDate;
    entity.dtaTitle = dtaTitle;
    entity.dtaIsDone = dtaIsDone;
    return entity;
}
