#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"

#include "tasks/domain/TaskMessages.h"
#include "tasks/entities/TaskRecurrenceCodec.h"
#include "tasks/repositories/remote/RemoteResource.h"
#include "wire/JSONCoding.h"
#include "wire/tasks/CreateTaskRequestDTO.h"
#include "wire/tasks/DeleteCompletedTasksRequestDTO.h"
#include "wire/tasks/TaskResponseDTO.h"
#include "wire/tasks/UpdateTaskRequestDTO.h"

#include <QJsonDocument>

namespace {

const RemoteResource& tasks()
{
    static const RemoteResource resource(
        QStringLiteral("/v0/tasks"), TaskMessages::Task::remoteNotFound, TaskMessages::Task::remoteBadId);
    return resource;
}

std::optional<TaskEntity> toEntity(const TaskResponseDTO& dto)
{
    const auto id = RemoteResource::parseUUID(dto.tasId);
    const auto projectId = RemoteResource::parseUUID(dto.prjId);
    const auto taskListId = RemoteResource::parseUUID(dto.talId);
    if (!id || !projectId || !taskListId)
        return std::nullopt;
    TaskEntity task {.tasId = *id,
        .prjId = *projectId,
        .talId = *taskListId,
        .tasTitle = dto.tasTitle,
        .tasIsDone = dto.tasIsDone,
        .tasDueDate = dto.tasDueDate,
        .tasEisenhowerTag = EisenhowerTag::fromApiValue(dto.tasEisenhowerTag)};
    task.tasDueHasTime = dto.tasDueDate && dto.tasDueHasTime;
    // The wire's rule object and the codec's are the same JSON.
    if (dto.tasRecurrence) {
        JSONWriter out;
        dto.tasRecurrence->writeJson(out);
        task.tasRecurrence
            = TaskRecurrenceCodec::fromJson(QJsonDocument::fromJson(QByteArray::fromStdString(out.text())).object());
    }
    task.tasOccurrence = int(dto.tasOccurrence.value_or(1));
    if (dto.tasReminderMinutesBefore)
        task.tasReminderMinutesBefore = int(*dto.tasReminderMinutesBefore);
    task.tasCompletedAt = dto.tasCompletedAt;
    return task;
}

// Each new key only when it holds a value, so that a backend that does not know them still
// takes the bodies of tasks that do not use them.
template <typename Request> Request withSchedule(Request request, const TaskEntity& task)
{
    request.tasCompletedAt = task.tasCompletedAt;
    request.tasDueHasTime = task.tasDueDate && task.tasDueHasTime;
    if (task.tasOccurrence != 1)
        request.tasOccurrence = task.tasOccurrence;
    if (task.tasRecurrence)
        request.tasRecurrence = TaskRecurrenceDTO::fromJson(TaskRecurrenceCodec::toJson(*task.tasRecurrence));
    if (task.tasReminderMinutesBefore)
        request.tasReminderMinutesBefore = *task.tasReminderMinutesBefore;
    return request;
}

// The tag's API string ("urgent_important", ...).
std::optional<QString> apiTag(const TaskEntity& task)
{
    if (!task.tasEisenhowerTag)
        return std::nullopt;
    return EisenhowerTag::apiValue(*task.tasEisenhowerTag);
}

CreateTaskRequestDTO createRequest(const TaskEntity& task)
{
    CreateTaskRequestDTO request = withSchedule(CreateTaskRequestDTO {.prjId = JSONCoding::encodeUUID(task.prjId),
                                                    .talId = JSONCoding::encodeUUID(task.talId),
                                                    .tasTitle = task.tasTitle,
                                                    .tasDueDate = task.tasDueDate,
                                                    .tasEisenhowerTag = apiTag(task)},
        task);
    // Under the entity's own identifier, so that both sides and an undone delete agree on it.
    request.tasId = JSONCoding::encodeUUID(task.tasId);
    return request;
}

UpdateTaskRequestDTO updateRequest(const TaskEntity& task)
{
    return withSchedule(UpdateTaskRequestDTO {.tasTitle = task.tasTitle,
                            .tasIsDone = task.tasIsDone,
                            .tasDueDate = task.tasDueDate,
                            .tasEisenhowerTag = apiTag(task)},
        task);
}

} // namespace

RemoteTaskRepositoryImpl::RemoteTaskRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

TaskResultEntity RemoteTaskRepositoryImpl::create(const TaskEntity& task)
{
    return tasks().call(
        [&] { return tasks().one(toEntity(client.post<TaskResponseDTO>(tasks().path(), createRequest(task)))); });
}

TaskResultEntity RemoteTaskRepositoryImpl::update(const TaskEntity& task)
{
    return tasks().call([&] {
        return tasks().one(toEntity(client.put<TaskResponseDTO>(tasks().path(task.tasId), updateRequest(task))));
    });
}

TaskResultEntity RemoteTaskRepositoryImpl::setDone(const QUuid& taskId, bool isDone)
{
    return readModifyWrite(taskId, [isDone](TaskEntity& task) { task.tasIsDone = isDone; });
}

TaskResultEntity RemoteTaskRepositoryImpl::setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag)
{
    return readModifyWrite(taskId, [tag](TaskEntity& task) { task.tasEisenhowerTag = tag; });
}

TaskResultEntity RemoteTaskRepositoryImpl::readModifyWrite(
    const QUuid& taskId, const std::function<void(TaskEntity&)>& change)
{
    const TaskResultEntity found = find(taskId);
    if (!found.result)
        return found;
    TaskEntity task = *found.dataAs<TaskEntity>();
    change(task);
    return update(task);
}

TaskResultEntity RemoteTaskRepositoryImpl::delete_(const QUuid& taskId)
{
    return tasks().call([&] {
        client.delete_(tasks().path(taskId));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteTaskRepositoryImpl::deleteCompleted(const QUuid& taskListId)
{
    return tasks().call([&] {
        client.delete_(
            QStringLiteral("/v0/task-lists/") + JSONCoding::encodeUUID(taskListId) + QStringLiteral("/completed-tasks"),
            DeleteCompletedTasksRequestDTO {});
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteTaskRepositoryImpl::find(const QUuid& taskId)
{
    return tasks().call([&] { return tasks().one(toEntity(client.get<TaskResponseDTO>(tasks().path(taskId)))); });
}

TaskResultEntity RemoteTaskRepositoryImpl::list(const QUuid& taskListId)
{
    return tasks().call([&] {
        const QList<TaskResponseDTO> dtos = client.get<QList<TaskResponseDTO>>(
            tasks().path(), {{QStringLiteral("taskListId"), JSONCoding::encodeUUID(taskListId)}});
        return RemoteResource::many(dtos, toEntity);
    });
}

TaskResultEntity RemoteTaskRepositoryImpl::listOpenDueBefore(const QDateTime& before)
{
    return tasks().call([&] {
        const QList<TaskResponseDTO> dtos = client.get<QList<TaskResponseDTO>>(
            tasks().path(), {{QStringLiteral("dueBefore"), JSONCoding::encodeDate(before)}});
        return RemoteResource::many(dtos, toEntity);
    });
}

TaskResultEntity RemoteTaskRepositoryImpl::listCompletedBetween(const QDateTime& from, const QDateTime& to)
{
    return tasks().call([&] {
        const QList<TaskResponseDTO> dtos = client.get<QList<TaskResponseDTO>>(tasks().path(),
            {{QStringLiteral("completedFrom"), JSONCoding::encodeDate(from)},
                {QStringLiteral("completedTo"), JSONCoding::encodeDate(to)}});
        return RemoteResource::many(dtos, toEntity);
    });
}
