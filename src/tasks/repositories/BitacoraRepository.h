#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// Where the logbook is kept: the encrypted local store or the backend.
class BitacoraRepository {
public:
    virtual ~BitacoraRepository() = default;

    // data: the stored BitacoraEntryEntity.
    virtual TaskResultEntity create(const BitacoraEntryEntity& entry) = 0;
    // Replaces the text; data: the updated BitacoraEntryEntity.
    virtual TaskResultEntity update(const BitacoraEntryEntity& entry) = 0;
    // No payload.
    virtual TaskResultEntity delete_(const QUuid& entryId) = 0;
    // data: the BitacoraEntryEntity.
    virtual TaskResultEntity find(const QUuid& entryId) = 0;
    // data: QList<BitacoraEntryEntity>, the project's entries in the store's own order.
    virtual TaskResultEntity list(const QUuid& projectId) = 0;
    // data: QList<BitacoraEntryEntity>, every project's entries in one read, for a store that
    // can do that much faster than project by project; the others fail, and are read per project.
    virtual TaskResultEntity listAll()
    {
        return TaskResultEntity::infrastructureFailure(QStringLiteral("read project by project"));
    }
};
