#include "tasks/repositories/remote/RemoteTaskListRepositoryImpl.h"

#include "tasks/domain/TaskMessages.h"
#include "tasks/repositories/remote/RemoteResource.h"
#include "wire/JSONCoding.h"
#include "wire/tasks/CreateTaskListRequestDTO.h"
#include "wire/tasks/TaskListResponseDTO.h"
#include "wire/tasks/UpdateTaskListRequestDTO.h"

namespace {

const RemoteResource& taskLists()
{
    static const RemoteResource resource(
        QStringLiteral("/v0/task-lists"), TaskMessages::TaskList::remoteNotFound, TaskMessages::TaskList::remoteBadId);
    return resource;
}

std::optional<TaskListEntity> toEntity(const TaskListResponseDTO& dto)
{
    const auto id = RemoteResource::parseUUID(dto.talId);
    const auto projectId = RemoteResource::parseUUID(dto.prjId);
    if (!id || !projectId)
        return std::nullopt;
    return TaskListEntity {*id, *projectId, dto.talName, dto.talDescription, dto.talIsDefault};
}

CreateTaskListRequestDTO createRequest(const TaskListEntity& taskList)
{
    CreateTaskListRequestDTO request {
        JSONCoding::encodeUUID(taskList.prjId), taskList.talName, taskList.talDescription, taskList.talIsDefault};
    // Under the entity's own identifier, so that both sides and an undone delete agree on it.
    request.talId = JSONCoding::encodeUUID(taskList.talId);
    return request;
}

UpdateTaskListRequestDTO updateRequest(const TaskListEntity& taskList)
{
    return {taskList.talName, taskList.talDescription, taskList.talIsDefault};
}

} // namespace

RemoteTaskListRepositoryImpl::RemoteTaskListRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

TaskResultEntity RemoteTaskListRepositoryImpl::create(const TaskListEntity& taskList)
{
    return taskLists().call([&] {
        return taskLists().one(toEntity(client.post<TaskListResponseDTO>(taskLists().path(), createRequest(taskList))));
    });
}

TaskResultEntity RemoteTaskListRepositoryImpl::update(const TaskListEntity& taskList)
{
    return taskLists().call([&] {
        return taskLists().one(
            toEntity(client.put<TaskListResponseDTO>(taskLists().path(taskList.talId), updateRequest(taskList))));
    });
}

TaskResultEntity RemoteTaskListRepositoryImpl::delete_(const QUuid& taskListId)
{
    return taskLists().call([&] {
        client.delete_(taskLists().path(taskListId));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteTaskListRepositoryImpl::find(const QUuid& taskListId)
{
    return taskLists().call(
        [&] { return taskLists().one(toEntity(client.get<TaskListResponseDTO>(taskLists().path(taskListId)))); });
}

TaskResultEntity RemoteTaskListRepositoryImpl::list(const QUuid& projectId)
{
    return taskLists().call([&] {
        const QList<TaskListResponseDTO> dtos = client.get<QList<TaskListResponseDTO>>(
            taskLists().path(), {{QStringLiteral("projectId"), JSONCoding::encodeUUID(projectId)}});
        return RemoteResource::many(dtos, toEntity);
    });
}
