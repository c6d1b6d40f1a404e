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
    // Added in schema version 2.
    bool tasDueHasTime = false;
    // The rule as TaskRecurrenceCodec text.
    std::optional<QString> tasRecurrence;
    int tasOccurrence = 1;
    std::optional<int> tasReminderMinutesBefore;
    std::optional<QDateTime> tasCompletedAt;

    static RealmObjectType objectType();
    // Brings a store of an older schema version up to this one.
    static void migrate(RealmDatabase& database, quint64 oldVersion);
    RealmRow toRow() const;
    static TaskRealmModel fromRow(const RealmRow& row);

    static TaskRealmModel fromEntity(const TaskEntity& entity);
    TaskEntity toEntity() const;
};
