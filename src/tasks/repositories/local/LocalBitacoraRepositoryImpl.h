#pragma once

#include "tasks/database/BitacoraDatabase.h"
#include "tasks/repositories/BitacoraRepository.h"

// Bitácora entries in the store "Tasks.Bitacora", with a fresh handle per operation.
class LocalBitacoraRepositoryImpl final : public BitacoraRepository {
public:
    explicit LocalBitacoraRepositoryImpl(BitacoraDatabase database);

    TaskResultEntity create(const BitacoraEntryEntity& entry) override;
    TaskResultEntity update(const BitacoraEntryEntity& entry) override;
    TaskResultEntity delete_(const QUuid& entryId) override;
    TaskResultEntity find(const QUuid& entryId) override;
    TaskResultEntity list(const QUuid& projectId) override;
    // One pass over the table: a project's read is a pass over it too.
    TaskResultEntity listAll() override;

    BitacoraDatabase database;
};
