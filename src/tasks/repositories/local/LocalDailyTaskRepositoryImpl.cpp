#include "tasks/repositories/local/LocalDailyTaskRepositoryImpl.h"

#include "storage/RealmValue.h"
#include "tasks/database/DailyTaskRealmModel.h"
#include "tasks/repositories/local/LocalStore.h"

#include <functional>

namespace {

TaskResultEntity changeDone(
    const RealmConfiguration& configuration, const QUuid& dailyTaskId, const std::function<bool(bool)>& newDone)
{
    return LocalStore::write(configuration, [&](RealmDatabase& handle) {
        RealmTable<DailyTaskRealmModel> items(handle);
        std::optional<DailyTaskRealmModel> record = items.object(RealmValue::fromUuid(dailyTaskId));
        if (!record)
            return TaskResultEntity::applicationFailure(TaskMessages::DailyTask::notFound);
        record->dtaIsDone = newDone(record->dtaIsDone);
        items.update(*record);
        return TaskResultEntity::success();
    });
}

} // namespace

LocalDailyTaskRepositoryImpl::LocalDailyTaskRepositoryImpl(DailyTasksDatabase database)
    : database(std::move(database))
{
}

TaskResultEntity LocalDailyTaskRepositoryImpl::create(const DailyTaskEntity& dailyTask)
{
    return LocalStore::add<DailyTaskRealmModel>(database.configuration, dailyTask);
}

TaskResultEntity LocalDailyTaskRepositoryImpl::update(const DailyTaskEntity& dailyTask)
{
    return LocalStore::update<DailyTaskRealmModel>(
        database.configuration, dailyTask, TaskMessages::DailyTask::notFound);
}

TaskResultEntity LocalDailyTaskRepositoryImpl::toggle(const QUuid& dailyTaskId)
{
    return changeDone(database.configuration, dailyTaskId, std::logical_not<bool>());
}

TaskResultEntity LocalDailyTaskRepositoryImpl::setDone(const QUuid& dailyTaskId, bool isDone)
{
    return changeDone(database.configuration, dailyTaskId, [isDone](bool) { return isDone; });
}

TaskResultEntity LocalDailyTaskRepositoryImpl::delete_(const QUuid& dailyTaskId)
{
    return LocalStore::remove<DailyTaskRealmModel>(
        database.configuration, RealmValue::fromUuid(dailyTaskId), TaskMessages::DailyTask::notFound);
}

TaskResultEntity LocalDailyTaskRepositoryImpl::find(const QUuid& dailyTaskId)
{
    return LocalStore::find<DailyTaskRealmModel>(
        database.configuration, RealmValue::fromUuid(dailyTaskId), TaskMessages::DailyTask::notFound);
}

TaskResultEntity LocalDailyTaskRepositoryImpl::list(const QDateTime& date)
{
    // The local day as a half-open range of instants, so that days of 23 or 25 hours (daylight
    // saving changes) are whole.
    const QDate day = date.toLocalTime().date();
    const QDateTime start = day.startOfDay();
    const QDateTime end = day.addDays(1).startOfDay();
    return LocalStore::withDatabase(database.configuration, [&](RealmDatabase& handle) {
        return TaskResultEntity::success(LocalStore::entitiesOf(RealmTable<DailyTaskRealmModel>(handle).objects(
            QStringLiteral("dtaDate >= ? AND dtaDate < ?"), {RealmValue::fromDate(start), RealmValue::fromDate(end)})));
    });
}

TaskResultEntity LocalDailyTaskRepositoryImpl::moveToDay(const DailyTaskEntity& dailyTask, const QDateTime& date)
{
    // Taken out and put back in one transaction: the record keeps its identifier and lands after
    // the day's other items, which are read in store order.
    return LocalStore::write(database.configuration, [&](RealmDatabase& handle) {
        RealmTable<DailyTaskRealmModel> items(handle);
        std::optional<DailyTaskRealmModel> record = items.object(RealmValue::fromUuid(dailyTask.dtaId));
        if (!record)
            return TaskResultEntity::applicationFailure(TaskMessages::DailyTask::notFound);
        DailyTaskEntity moved = record->toEntity();
        moved.dtaDate = date;
        items.remove(RealmValue::fromUuid(dailyTask.dtaId));
        items.add(DailyTaskRealmModel::fromEntity(moved));
        return TaskResultEntity::success(moved);
    });
}
