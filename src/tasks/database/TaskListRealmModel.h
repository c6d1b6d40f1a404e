#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"
#include "tasks/entities/TaskListEntity.h"

// One TaskListEntity as the store "Tasks.TaskList" keeps it.
struct TaskListRealmModel {
    QUuid talId;
    QUuid prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    static RealmObjectType objectType();
    RealmRow toRow() const;
    static TaskListRealmModel fromRow(const RealmRow& row);

    static TaskListRealmModel fromEntity(const TaskListEntity& entity);
    TaskListEntity toEntity() const;
};
