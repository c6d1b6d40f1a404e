#pragma once

#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"
#include "tasks/entities/ProjectEntity.h"

// One ProjectEntity as the store "Tasks.Projects" keeps it.
struct ProjectRealmModel {
    QUuid prjId;
    QUuid prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    static RealmObjectType objectType();
    RealmRow toRow() const;
    static ProjectRealmModel fromRow(const RealmRow& row);

    static ProjectRealmModel fromEntity(const ProjectEntity& entity);
    ProjectEntity toEntity() const;
};
