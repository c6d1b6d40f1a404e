#pragma once

#include "storage/RealmDatabase.h"
#include "storage/RealmDatabaseOpener.h"
#include "storage/RealmTable.h"
#include "storage/RealmValue.h"
#include "tasks/domain/TaskMessages.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>

#include <algorithm>

// What every local repository operation does around its own work: open a fresh handle on the
// store, run the work on it, close it. A store found damaged on the way is set aside and the work
// runs on the new one. A store that cannot be opened, or a statement that fails, becomes an
// infrastructure failure; nothing is thrown past here.
namespace LocalStore {

template <typename Work> TaskResultEntity perform(const RealmConfiguration& configuration, Work&& work)
{
    return RealmDatabaseOpener::perform(
        configuration, [&](RealmDatabase& database) -> TaskResultEntity { return work(database); },
        [](const QString& text) {
            return TaskResultEntity::infrastructureFailure(text.isEmpty() ? TaskMessages::databaseOpenFailed : text);
        },
        [](const QString& text) { return TaskResultEntity::infrastructureFailure(text); });
}

// Reads inside one read transaction.
template <typename Work> TaskResultEntity withDatabase(const RealmConfiguration& configuration, Work&& work)
{
    return perform(
        configuration, [&](RealmDatabase& database) { return database.read([&] { return work(database); }); });
}

// Reads and writes inside one write transaction.
template <typename Work> TaskResultEntity write(const RealmConfiguration& configuration, Work&& work)
{
    return perform(
        configuration, [&](RealmDatabase& database) { return database.write([&] { return work(database); }); });
}

// The entities of a list of records.
template <typename Model> auto entitiesOf(const QList<Model>& records)
{
    QList<decltype(records.constFirst().toEntity())> entities;
    entities.reserve(records.size());
    for (const Model& record : records)
        entities.append(record.toEntity());
    return entities;
}

// The stored record with that primary key as an entity, or notFound as applicationMessage.
template <typename Model>
TaskResultEntity find(const RealmConfiguration& configuration, const QVariant& primaryKey, const QString& notFound)
{
    return withDatabase(configuration, [&](RealmDatabase& database) {
        const auto record = RealmTable<Model>(database).object(primaryKey);
        return record ? TaskResultEntity::success(record->toEntity()) : TaskResultEntity::applicationFailure(notFound);
    });
}

template <typename Model>
TaskResultEntity remove(const RealmConfiguration& configuration, const QVariant& primaryKey, const QString& notFound)
{
    return write(configuration, [&](RealmDatabase& database) {
        return RealmTable<Model>(database).remove(primaryKey) ? TaskResultEntity::success()
                                                              : TaskResultEntity::applicationFailure(notFound);
    });
}

template <typename Model, typename Entity>
TaskResultEntity add(const RealmConfiguration& configuration, const Entity& entity)
{
    return write(configuration, [&](RealmDatabase& database) {
        RealmTable<Model>(database).add(Model::fromEntity(entity));
        return TaskResultEntity::success(entity);
    });
}

template <typename Model, typename Entity>
TaskResultEntity update(const RealmConfiguration& configuration, const Entity& entity, const QString& notFound)
{
    return write(configuration, [&](RealmDatabase& database) {
        return RealmTable<Model>(database).update(Model::fromEntity(entity))
            ? TaskResultEntity::success(entity)
            : TaskResultEntity::applicationFailure(notFound);
    });
}

// The records whose column equals value, as entities, in store order.
template <typename Model>
TaskResultEntity listWhere(const RealmConfiguration& configuration, const QString& column, const QVariant& value)
{
    return withDatabase(configuration, [&](RealmDatabase& database) {
        return TaskResultEntity::success(
            entitiesOf(RealmTable<Model>(database).objects(column + QStringLiteral(" = ?"), {value})));
    });
}

// The records whose column equals any of values, as entities, in store order: one handle and one
// transaction for them all, and one pass over the table for each few hundred values (SQLite caps
// the bound values of a statement).
template <typename Model>
TaskResultEntity listWhereIn(const RealmConfiguration& configuration, const QString& column, const QList<QUuid>& values)
{
    constexpr qsizetype perStatement = 500;
    return withDatabase(configuration, [&](RealmDatabase& database) {
        QList<Model> records;
        RealmTable<Model> table(database);
        for (qsizetype first = 0; first < values.size(); first += perStatement) {
            const QList<QUuid> some = values.mid(first, perStatement);
            QVariantList bindings;
            bindings.reserve(some.size());
            for (const QUuid& value : some)
                bindings.append(RealmValue::fromUuid(value));
            QStringList marks;
            marks.fill(QStringLiteral("?"), some.size());
            records.append(table.objects(
                column + QStringLiteral(" IN (") + marks.join(QLatin1Char(',')) + QLatin1Char(')'), bindings));
        }
        return TaskResultEntity::success(entitiesOf(records));
    });
}

} // namespace LocalStore
