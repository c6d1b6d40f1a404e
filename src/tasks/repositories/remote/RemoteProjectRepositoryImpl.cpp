#include "tasks/repositories/remote/RemoteProjectRepositoryImpl.h"

#include "tasks/domain/TaskMessages.h"
#include "tasks/repositories/remote/RemoteResource.h"
#include "wire/JSONCoding.h"
#include "wire/tasks/CreateProjectRequestDTO.h"
#include "wire/tasks/ProjectResponseDTO.h"
#include "wire/tasks/UpdateProjectRequestDTO.h"

namespace {

const RemoteResource& projects()
{
    static const RemoteResource resource(
        QStringLiteral("/v0/projects"), TaskMessages::Project::remoteNotFound, TaskMessages::Project::remoteBadId);
    return resource;
}

std::optional<ProjectEntity> toEntity(const ProjectResponseDTO& dto)
{
    const auto id = RemoteResource::parseUUID(dto.prjId);
    const auto userId = RemoteResource::parseUUID(dto.prjUserId);
    if (!id || !userId)
        return std::nullopt;
    return ProjectEntity {*id, *userId, dto.prjName, dto.prjDescription, dto.prjShowEveryDay};
}

CreateProjectRequestDTO createRequest(const ProjectEntity& project)
{
    CreateProjectRequestDTO request {
        JSONCoding::encodeUUID(project.prjUserId), project.prjName, project.prjDescription, project.prjShowEveryDay};
    // Under the entity's own identifier, so that both sides and an undone delete agree on it.
    request.prjId = JSONCoding::encodeUUID(project.prjId);
    return request;
}

UpdateProjectRequestDTO updateRequest(const ProjectEntity& project)
{
    return {project.prjName, project.prjDescription, project.prjShowEveryDay};
}

} // namespace

RemoteProjectRepositoryImpl::RemoteProjectRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

TaskResultEntity RemoteProjectRepositoryImpl::create(const ProjectEntity& project)
{
    return projects().call([&] {
        return projects().one(toEntity(client.post<ProjectResponseDTO>(projects().path(), createRequest(project))));
    });
}

TaskResultEntity RemoteProjectRepositoryImpl::update(const ProjectEntity& project)
{
    return projects().call([&] {
        return projects().one(
            toEntity(client.put<ProjectResponseDTO>(projects().path(project.prjId), updateRequest(project))));
    });
}

TaskResultEntity RemoteProjectRepositoryImpl::delete_(const QUuid& projectId)
{
    return projects().call([&] {
        client.delete_(projects().path(projectId));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteProjectRepositoryImpl::find(const QUuid& projectId)
{
    return projects().call(
        [&] { return projects().one(toEntity(client.get<ProjectResponseDTO>(projects().path(projectId)))); });
}

TaskResultEntity RemoteProjectRepositoryImpl::list(const QUuid& /*userId: the bearer token names the user*/)
{
    return projects().call(
        [&] { return RemoteResource::many(client.get<QList<ProjectResponseDTO>>(projects().path()), toEntity); });
}
