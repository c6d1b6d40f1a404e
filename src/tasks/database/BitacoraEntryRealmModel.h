#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"
#include "tasks/entities/BitacoraEntryEntity.h"

// One BitacoraEntryEntity as the store "Tasks.Bitacora" keeps it.
struct BitacoraEntryRealmModel {
    QUuid bteId;
    QUuid bteUserId;
    QUuid prjId;
    QDateTime bteDate;
    QString bteContent;

    static RealmObjectType objectType();
    RealmRow toRow() const;
    static BitacoraEntryRealmModel fromRow(const RealmRow& row);

    static BitacoraEntryRealmModel fromEntity(const BitacoraEntryEntity& entity);
    BitacoraEntryEntity toEntity() const;
};
