#include "tasks/repositories/remote/RemoteBitacoraRepositoryImpl.h"

#include "tasks/domain/TaskMessages.h"
#include "tasks/repositories/remote/RemoteResource.h"
#include "wire/JSONCoding.h"
#include "wire/tasks/BitacoraEntryResponseDTO.h"
#include "wire/tasks/CreateBitacoraEntryRequestDTO.h"
#include "wire/tasks/UpdateBitacoraEntryRequestDTO.h"

namespace {

const RemoteResource& entries()
{
    static const RemoteResource resource(QStringLiteral("/v0/bitacora-entries"), TaskMessages::Bitacora::remoteNotFound,
        TaskMessages::Bitacora::remoteBadId);
    return resource;
}

std::optional<BitacoraEntryEntity> toEntity(const BitacoraEntryResponseDTO& dto)
{
    const auto id = RemoteResource::parseUUID(dto.bteId);
    const auto userId = RemoteResource::parseUUID(dto.bteUserId);
    const auto projectId = RemoteResource::parseUUID(dto.prjId);
    if (!id || !userId || !projectId)
        return std::nullopt;
    return BitacoraEntryEntity {*id, *userId, *projectId, dto.bteDate, dto.bteContent};
}

CreateBitacoraEntryRequestDTO createRequest(const BitacoraEntryEntity& entry)
{
    CreateBitacoraEntryRequestDTO request {JSONCoding::encodeUUID(entry.prjId), entry.bteDate, entry.bteContent};
    // Under the entity's own identifier, so that both sides and an undone delete agree on it.
    request.bteId = JSONCoding::encodeUUID(entry.bteId);
    return request;
}

UpdateBitacoraEntryRequestDTO updateRequest(const BitacoraEntryEntity& entry)
{
    return {entry.bteContent};
}

} // namespace

RemoteBitacoraRepositoryImpl::RemoteBitacoraRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

TaskResultEntity RemoteBitacoraRepositoryImpl::create(const BitacoraEntryEntity& entry)
{
    return entries().call([&] {
        return entries().one(toEntity(client.post<BitacoraEntryResponseDTO>(entries().path(), createRequest(entry))));
    });
}

TaskResultEntity RemoteBitacoraRepositoryImpl::update(const BitacoraEntryEntity& entry)
{
    return entries().call([&] {
        return entries().one(
            toEntity(client.put<BitacoraEntryResponseDTO>(entries().path(entry.bteId), updateRequest(entry))));
    });
}

TaskResultEntity RemoteBitacoraRepositoryImpl::delete_(const QUuid& entryId)
{
    return entries().call([&] {
        client.delete_(entries().path(entryId));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteBitacoraRepositoryImpl::find(const QUuid& entryId)
{
    return entries().call(
        [&] { return entries().one(toEntity(client.get<BitacoraEntryResponseDTO>(entries().path(entryId)))); });
}

TaskResultEntity RemoteBitacoraRepositoryImpl::list(const QUuid& projectId)
{
    return entries().call([&] {
        const QList<BitacoraEntryResponseDTO> dtos = client.get<QList<BitacoraEntryResponseDTO>>(
            entries().path(), {{QStringLiteral("projectId"), JSONCoding::encodeUUID(projectId)}});
        return RemoteResource::many(dtos, toEntity);
    });
}
