#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"
#include "tasks/entities/TaskEntity.h"

// One TaskEntity as the store "Tasks.Tasks" keeps it.
struct TaskRealmModel {
    QUuid tasId;
    QUuid prjId;
    QUuid talId;
    QString tasTitle;
    bool tasIsDone = false;
    std::optional<QDateTime> tasDueDate;
    std::optional<QString> tasEisenhowerTag;

    static RealmObjectType objectType();
    RealmRow toRow() const;
    static TaskRealmModel fromRow(const RealmRow& row);

    static TaskRealmModel fromEntity(const TaskEntity& entity);
    TaskEntity toEntity() const;
};
