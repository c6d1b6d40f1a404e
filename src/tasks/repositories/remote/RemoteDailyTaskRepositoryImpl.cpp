#include "tasks/repositories/remote/RemoteDailyTaskRepositoryImpl.h"

#include "tasks/domain/TaskMessages.h"
#include "tasks/repositories/remote/RemoteResource.h"
#include "wire/JSONCoding.h"
#include "wire/tasks/CreateDailyTaskRequestDTO.h"
#include "wire/tasks/DailyTaskResponseDTO.h"
#include "wire/tasks/UpdateDailyTaskRequestDTO.h"

#include <QTimeZone>

namespace {

const RemoteResource& dailyTasks()
{
    static const RemoteResource resource(QStringLiteral("/v0/daily-tasks"), TaskMessages::DailyTask::remoteNotFound,
        TaskMessages::DailyTask::remoteBadId);
    return resource;
}

// "yyyy-MM-dd" of the UTC calendar day; shared by every list query.
class UtcDayFormatter {
public:
    QString string(const QDateTime& instant) const { return instant.toTimeZone(m_zone).toString(m_pattern); }

private:
    QTimeZone m_zone = QTimeZone::utc();
    QString m_pattern = QStringLiteral("yyyy-MM-dd");
};

const UtcDayFormatter& dayFormatter()
{
    static const UtcDayFormatter formatter;
    return formatter;
}

std::optional<DailyTaskEntity> toEntity(const DailyTaskResponseDTO& dto)
{
    const auto id = RemoteResource::parseUUID(dto.tasId);
    const auto userId = RemoteResource::parseUUID(dto.tasUserId);
    if (!id || !userId)
        return std::nullopt;
    return DailyTaskEntity {*id, *userId, dto.tasDate, dto.tasTitle, dto.tasIsDone};
}

CreateDailyTaskRequestDTO createRequest(const DailyTaskEntity& dailyTask)
{
    CreateDailyTaskRequestDTO request {
        JSONCoding::encodeUUID(dailyTask.dtaUserId), dailyTask.dtaDate, dailyTask.dtaTitle};
    // Under the entity's own identifier, so that both sides and an undone delete agree on it.
    request.tasId = JSONCoding::encodeUUID(dailyTask.dtaId);
    return request;
}

UpdateDailyTaskRequestDTO updateRequest(const DailyTaskEntity& dailyTask)
{
    return {dailyTask.dtaTitle};
}

} // namespace

RemoteDailyTaskRepositoryImpl::RemoteDailyTaskRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::create(const DailyTaskEntity& dailyTask)
{
    return dailyTasks().call([&] {
        return dailyTasks().one(
            toEntity(client.post<DailyTaskResponseDTO>(dailyTasks().path(), createRequest(dailyTask))));
    });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::update(const DailyTaskEntity& dailyTask)
{
    return dailyTasks().call([&] {
        return dailyTasks().one(
            toEntity(client.put<DailyTaskResponseDTO>(dailyTasks().path(dailyTask.dtaId), updateRequest(dailyTask))));
    });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::toggle(const QUuid& dailyTaskId)
{
    return dailyTasks().call([&] {
        client.patch(dailyTasks().path(dailyTaskId) + QStringLiteral("/toggle"));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::delete_(const QUuid& dailyTaskId)
{
    return dailyTasks().call([&] {
        client.delete_(dailyTasks().path(dailyTaskId));
        return TaskResultEntity::success();
    });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::find(const QUuid& dailyTaskId)
{
    return dailyTasks().call(
        [&] { return dailyTasks().one(toEntity(client.get<DailyTaskResponseDTO>(dailyTasks().path(dailyTaskId)))); });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::list(const QDateTime& date)
{
    return dailyTasks().call([&] {
        const QList<DailyTaskResponseDTO> dtos = client.get<QList<DailyTaskResponseDTO>>(
            dailyTasks().path(), {{QStringLiteral("date"), dayFormatter().string(date)}});
        return RemoteResource::many(dtos, toEntity);
    });
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::setDone(const QUuid& dailyTaskId, bool isDone)
{
    // The backend only flips; flipping blindly would undo a second click that arrived first.
    const TaskResultEntity found = find(dailyTaskId);
    if (!found.result)
        return found;
    if (found.dataAs<DailyTaskEntity>()->dtaIsDone == isDone)
        return TaskResultEntity::success();
    return toggle(dailyTaskId);
}

TaskResultEntity RemoteDailyTaskRepositoryImpl::moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date)
{
    // The backend cannot change an item's day: a copy is made on the new day first and the old
    // item deleted only once the copy is stored, so a failure on the way leaves the item twice
    // rather than nowhere. The backend appends new items, so moves made in order keep it.
    DailyTaskEntity copy = dailyTask;
    // The backend keeps the identifier it is sent, and the original still holds this one.
    copy.dtaId = QUuid::createUuid();
    copy.dtaDate = date;
    const TaskResultEntity created = create(copy);
    if (!created.result)
        return created;
    DailyTaskEntity moved = *created.dataAs<DailyTaskEntity>();
    if (dailyTask.dtaIsDone) {
        if (const TaskResultEntity toggled = toggle(moved.dtaId); !toggled.result)
            return toggled;
        moved.dtaIsDone = true;
    }
    if (const TaskResultEntity deleted = delete_(dailyTask.dtaId); !deleted.result)
        return deleted;
    return TaskResultEntity::success(moved);
}
