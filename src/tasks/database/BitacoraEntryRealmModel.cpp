#include "tasks/database/BitacoraEntryRealmModel.h"

#include "storage/RealmValue.h"

RealmObjectType BitacoraEntryRealmModel::objectType()
{
    return {QStringLiteral("BitacoraEntryRealmModel"),
        QStringLiteral("bteId TEXT PRIMARY KEY NOT NULL, "
                       "bteUserId TEXT NOT NULL, "
                       "prjId TEXT NOT NULL, "
                       "bteDate INTEGER NOT NULL, "
                       "bteContent TEXT NOT NULL")};
}

RealmRow BitacoraEntryRealmModel::toRow() const
{
    return {RealmValue::fromUuid(bteId), RealmValue::fromUuid(bteUserId), RealmValue::fromUuid(prjId),
        RealmValue::fromDate(bteDate), bteContent};
}

BitacoraEntryRealmModel BitacoraEntryRealmModel::fromRow(const RealmRow& row)
{
    return {RealmValue::toUuid(row.at(0)), RealmValue::toUuid(row.at(1)), RealmValue::toUuid(row.at(2)),
        RealmValue::toDate(row.at(3)), row.at(4).toString()};
}

BitacoraEntryRealmModel BitacoraEntryRealmModel::fromEntity(const BitacoraEntryEntity& entity)
{
    BitacoraEntryRealmModel record;
    record.bteId = entity.bteId;
    record.bteUserId = entity.bteUserId;
    record.prjId = entity.prjId;
    record.bteDate = entity.bteDate;
    record.bteContent = entity.bteContent;
    return record;
}

BitacoraEntryEntity BitacoraEntryRealmModel::toEntity() const
{
    BitacoraEntryEntity entity;
    entity.bteId = bteId;
    entity.bteUserId = bteUserId;
    entity.prjId = prjId;
    entity.bteDate = bteDate;
    entity.bteContent = bteContent;
    return entity;
}
