#include "tasks/applications/BitacoraApplication.h"

#include "tasks/domain/BitacoraDomain.h"
#include "tasks/domain/TaskMessages.h"

BitacoraApplication::BitacoraApplication(std::shared_ptr<BitacoraRepository> bitacoraRepository)
    : bitacoraRepository(std::move(bitacoraRepository))
{
}

namespace {

template <typename Work>
TaskResultEntity recordedEntries(const BitacoraApplication& app, TaskChangeVerbEnum verb, const QUuid& id, Work&& work)
{
    return TaskChanges::recorded<BitacoraEntryEntity>(
        app.recorder, verb, {id}, [&](const QUuid& found) { return app.bitacoraRepository->find(found); },
        std::forward<Work>(work));
}

} // namespace

TaskResultEntity BitacoraApplication::create(const BitacoraEntryEntity& entry) const
{
    return recordedEntries(
        *this, TaskChangeVerbEnum::add, entry.bteId, [&] { return bitacoraRepository->create(entry); });
}

TaskResultEntity BitacoraApplication::ownedEntry(const QUuid& entryId, const QUuid& userId) const
{
    TaskResultEntity found = bitacoraRepository->find(entryId);
    if (!found.result)
        return found;
    const BitacoraEntryEntity* entry = found.dataAs<BitacoraEntryEntity>();
    if (!entry)
        return TaskResultEntity::applicationFailure(TaskMessages::Bitacora::notFound);
    if (TaskResultEntity owned = BitacoraDomain::belongsToUser(*entry, userId); !owned.result)
        return owned;
    return found;
}

TaskResultEntity BitacoraApplication::update(const BitacoraEntryEntity& entry, const QUuid& userId) const
{
    if (TaskResultEntity owned = ownedEntry(entry.bteId, userId); !owned.result)
        return owned;
    return recordedEntries(
        *this, TaskChangeVerbEnum::edit, entry.bteId, [&] { return bitacoraRepository->update(entry); });
}

TaskResultEntity BitacoraApplication::delete_(const QUuid& entryId, const QUuid& userId) const
{
    if (TaskResultEntity owned = ownedEntry(entryId, userId); !owned.result)
        return owned;
    return recordedEntries(
        *this, TaskChangeVerbEnum::delete_, entryId, [&] { return bitacoraRepository->delete_(entryId); });
}

TaskResultEntity BitacoraApplication::find(const QUuid& entryId) const
{
    return bitacoraRepository->find(entryId);
}

TaskResultEntity BitacoraApplication::list(const QUuid& projectId) const
{
    return bitacoraRepository->list(projectId);
}

std::optional<BitacoraEntryEntity> BitacoraApplication::entryOn(
    const QList<BitacoraEntryEntity>& entries, const QDate& day) const
{
    for (const BitacoraEntryEntity& entry : entries) {
        if (entry.bteDate.toLocalTime().date() == day)
            return entry;
    }
    return std::nullopt;
}

TaskResultEntity BitacoraApplication::entriesOn(const QDateTime& date, const QList<QUuid>& projectIds) const
{
    const QDate day = date.toLocalTime().date();
    QHash<QUuid, BitacoraEntryEntity> entries;
    for (const QUuid& projectId : projectIds) {
        const TaskResultEntity listed = bitacoraRepository->list(projectId);
        if (!listed.result)
            return listed;
        if (const auto* projectEntries = listed.dataAs<QList<BitacoraEntryEntity>>()) {
            if (const auto entry = entryOn(*projectEntries, day))
                entries.insert(projectId, *entry);
        }
    }
    return TaskResultEntity::success(entries);
}

TaskResultEntity BitacoraApplication::saveText(
    const QUuid& projectId, const QDateTime& date, const QString& text, const QUuid& userId) const
{
    const TaskResultEntity listed = bitacoraRepository->list(projectId);
    if (!listed.result)
        return listed;
    const auto* entries = listed.dataAs<QList<BitacoraEntryEntity>>();
    if (const auto existing = entries ? entryOn(*entries, date.toLocalTime().date()) : std::nullopt) {
        BitacoraEntryEntity changed = *existing;
        changed.bteContent = text;
        return update(changed, userId);
    }
    return create(BitacoraEntryEntity {.bteUserId = userId, .prjId = projectId, .bteDate = date, .bteContent = text});
}
