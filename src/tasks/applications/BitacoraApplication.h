#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/BitacoraRepository.h"

#include <QHash>

#include <memory>

// The logbook use cases the screens call. Changing or deleting an entry is allowed to its
// author only. An entry belongs to the local calendar day its bteDate falls on.
class BitacoraApplication {
public:
    explicit BitacoraApplication(std::shared_ptr<BitacoraRepository> bitacoraRepository);

    TaskResultEntity create(const BitacoraEntryEntity& entry) const;
    TaskResultEntity update(const BitacoraEntryEntity& entry, const QUuid& userId) const;
    TaskResultEntity delete_(const QUuid& entryId, const QUuid& userId) const;
    TaskResultEntity find(const QUuid& entryId) const;
    TaskResultEntity list(const QUuid& projectId) const;

    // data: QHash<QUuid, BitacoraEntryEntity>, each project's entry of the day of date (projects
    // without one are left out).
    TaskResultEntity entriesOn(const QDateTime& date, const QList<QUuid>& projectIds) const;
    // Stores text as the project's entry of the day of date: updates that day's entry, or
    // creates one dated date. data: the stored BitacoraEntryEntity.
    TaskResultEntity saveText(
        const QUuid& projectId, const QDateTime& date, const QString& text, const QUuid& userId) const;

    std::shared_ptr<BitacoraRepository> bitacoraRepository;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;

private:
    // The entry, when it exists and userId wrote it; the failure otherwise.
    TaskResultEntity ownedEntry(const QUuid& entryId, const QUuid& userId) const;
    std::optional<BitacoraEntryEntity> entryOn(const QList<BitacoraEntryEntity>& entries, const QDate& day) const;
};
