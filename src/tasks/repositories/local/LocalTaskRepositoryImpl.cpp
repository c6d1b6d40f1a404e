#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include "storage/RealmValue.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/repositories/local/LocalStore.h"

LocalTaskRepositoryImpl::LocalTaskRepositoryImpl(TasksDatabase database)
    : database(std::move(database))
{
}

TaskResultEntity LocalTaskRepositoryImpl::create(const TaskEntity& task)
{
    return LocalStore::add<TaskRealmModel>(database.configuration, task);
}

TaskResultEntity LocalTaskRepositoryImpl::update(const TaskEntity& task)
{
    return LocalStore::update<TaskRealmModel>(database.configuration, task, TaskMessages::Task::notFound);
}

// One field of one stored task, read and written in the same transaction.
template <typename Change> TaskResultEntity LocalTaskRepositoryImpl::change(const QUuid& taskId, Change&& change)
{
    return LocalStore::write(database.configuration, [&](RealmDatabase& handle) {
        RealmTable<TaskRealmModel> tasks(handle);
        std::optional<TaskRealmModel> record = tasks.object(RealmValue::fromUuid(taskId));
        if (!record)
            return TaskResultEntity::applicationFailure(TaskMessages::Task::notFound);
        change(*record);
        tasks.update(*record);
        return TaskResultEntity::success(record->toEntity());
    });
}

TaskResultEntity LocalTaskRepositoryImpl::setDone(const QUuid& taskId, bool isDone)
{
    return change(taskId, [isDone](TaskRealmModel& record) { record.tasIsDone = isDone; });
}

TaskResultEntity LocalTaskRepositoryImpl::setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag)
{
    return change(taskId, [tag](TaskRealmModel& record) {
        record.tasEisenhowerTag = tag ? std::optional(EisenhowerTag::rawValue(*tag)) : std::nullopt;
    });
}

TaskResultEntity LocalTaskRepositoryImpl::delete_(const QUuid& taskId)
{
    return LocalStore::remove<TaskRealmModel>(
        database.configuration, RealmValue::fromUuid(taskId), TaskMessages::Task::notFound);
}

TaskResultEntity LocalTaskRepositoryImpl::deleteCompleted(const QUuid& taskListId)
{
    return LocalStore::write(database.configuration, [&](RealmDatabase& handle) {
        RealmTable<TaskRealmModel>(handle).removeWhere(
            QStringLiteral("talId = ? AND tasIsDone = 1"), {RealmValue::fromUuid(taskListId)});
        return TaskResultEntity::success();
    });
}

TaskResultEntity LocalTaskRepositoryImpl::find(const QUuid& taskId)
{
    return LocalStore::find<TaskRealmModel>(
        database.configuration, RealmValue::fromUuid(taskId), TaskMessages::Task::notFound);
}

TaskResultEntity LocalTaskRepositoryImpl::list(const QUuid& taskListId)
{
    return LocalStore::listWhere<TaskRealmModel>(
        database.configuration, QStringLiteral("talId"), RealmValue::fromUuid(taskListId));
}

TaskResultEntity LocalTaskRepositoryImpl::listOfLists(const QList<QUuid>& taskListIds)
{
    return LocalStore::listWhereIn<TaskRealmModel>(database.configuration, QStringLiteral("talId"), taskListIds);
}

TaskResultEntity LocalTaskRepositoryImpl::listAll()
{
    return LocalStore::withDatabase(database.configuration, [](RealmDatabase& database) {
        return TaskResultEntity::success(
            LocalStore::entitiesOf(RealmTable<TaskRealmModel>(database).objects(QStringLiteral("1"), {})));
    });
}

namespace {

// The rows one index finds, in no particular order: the callers sort them their own way, and
// asking for the store's order would let SQLite prefer a pass over the whole table.
TaskResultEntity tasksThrough(
    RealmDatabase& database, const QString& index, const QString& where, const QVariantList& bindings)
{
    QList<TaskEntity> tasks;
    for (const RealmRow& row : database.query(QStringLiteral("SELECT * FROM \"%1\" INDEXED BY \"%1_%2\" WHERE %3")
                                                  .arg(TaskRealmModel::objectType().name, index, where),
             bindings))
        tasks.append(TaskRealmModel::fromRow(row).toEntity());
    return TaskResultEntity::success(tasks);
}

} // namespace

TaskResultEntity LocalTaskRepositoryImpl::listOpenDueBefore(const QDateTime& before)
{
    return LocalStore::withDatabase(database.configuration, [&](RealmDatabase& database) {
        return tasksThrough(database, QStringLiteral("tasDueDate"), QStringLiteral("tasDueDate < ? AND tasIsDone = 0"),
            {RealmValue::fromDate(before)});
    });
}

TaskResultEntity LocalTaskRepositoryImpl::listCompletedBetween(const QDateTime& from, const QDateTime& to)
{
    return LocalStore::withDatabase(database.configuration, [&](RealmDatabase& database) {
        return tasksThrough(database, QStringLiteral("tasCompletedAt"),
            QStringLiteral("tasCompletedAt >= ? AND tasCompletedAt < ? AND tasIsDone = 1"),
            {RealmValue::fromDate(from), RealmValue::fromDate(to)});
    });
}
