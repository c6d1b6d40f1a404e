#pragma once

#include "networking/APIClient.h"
#include "tasks/repositories/ProjectRepository.h"

// Projects on the backend, under "/v0/projects"; the backend answers for the user of the bearer
// token, so list() sends no user id.
class RemoteProjectRepositoryImpl final : public ProjectRepository {
public:
    explicit RemoteProjectRepositoryImpl(APIClient client);

    TaskResultEntity create(const ProjectEntity& project) override;
    TaskResultEntity update(const ProjectEntity& project) override;
    TaskResultEntity delete_(const QUuid& projectId) override;
    TaskResultEntity find(const QUuid& projectId) override;
    TaskResultEntity list(const QUuid& userId) override;

    const APIClient client;
};
