#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"
#include "tasks/entities/DailyTaskEntity.h"

// One DailyTaskEntity as the store "Tasks.DailyTask" keeps it.
struct DailyTaskRealmModel {
    QUuid dtaId;
    QUuid dtaUserId;
    QDateTime dtaDate;
    QString dtaTitle;
    bool dtaIsDone = false;

    static RealmObjectType objectType();
    RealmRow toRow() const;
    static DailyTaskRealmModel fromRow(const RealmRow& row);

    static DailyTaskRealmModel fromEntity(const DailyTaskEntity& entity);
    DailyTaskEntity toEntity() const;
};
