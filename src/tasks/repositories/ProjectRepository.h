#pragma once

#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// Where projects are kept: the encrypted local store or the backend.
class ProjectRepository {
public:
    virtual ~ProjectRepository() = default;

    // data: the stored ProjectEntity.
    virtual TaskResultEntity create(const ProjectEntity& project) = 0;
    // Replaces the project with the same prjId; data: the updated ProjectEntity.
    virtual TaskResultEntity update(const ProjectEntity& project) = 0;
    // No payload. Task lists and tasks are left alone.
    virtual TaskResultEntity delete_(const QUuid& projectId) = 0;
    // data: the ProjectEntity.
    virtual TaskResultEntity find(const QUuid& projectId) = 0;
    // data: QList<ProjectEntity>, the user's projects in the store's own order.
    virtual TaskResultEntity list(const QUuid& userId) = 0;
};
