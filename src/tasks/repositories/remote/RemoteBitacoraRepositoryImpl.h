#pragma once

#include "networking/APIClient.h"
#include "tasks/repositories/BitacoraRepository.h"

// The logbook on the backend, under "/v0/bitacora-entries"; the backend records the bearer
// token's user as the author of a new entry.
class RemoteBitacoraRepositoryImpl final : public BitacoraRepository {
public:
    explicit RemoteBitacoraRepositoryImpl(APIClient client);

    TaskResultEntity create(const BitacoraEntryEntity& entry) override;
    TaskResultEntity update(const BitacoraEntryEntity& entry) override;
    TaskResultEntity delete_(const QUuid& entryId) override;
    TaskResultEntity find(const QUuid& entryId) override;
    TaskResultEntity list(const QUuid& projectId) override;

    const APIClient client;
};
