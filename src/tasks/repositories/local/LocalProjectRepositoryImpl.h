#pragma once

#include "tasks/database/ProjectsDatabase.h"
#include "tasks/repositories/ProjectRepository.h"

// Projects in the store "Tasks.Projects", with a fresh handle per operation.
class LocalProjectRepositoryImpl final : public ProjectRepository {
public:
    explicit LocalProjectRepositoryImpl(ProjectsDatabase database);

    TaskResultEntity create(const ProjectEntity& project) override;
    TaskResultEntity update(const ProjectEntity& project) override;
    TaskResultEntity delete_(const QUuid& projectId) override;
    TaskResultEntity find(const QUuid& projectId) override;
    TaskResultEntity list(const QUuid& userId) override;

    ProjectsDatabase database;
};
