#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"

#include "storage/RealmValue.h"
#include "tasks/database/BitacoraEntryRealmModel.h"
#include "tasks/repositories/local/LocalStore.h"

LocalBitacoraRepositoryImpl::LocalBitacoraRepositoryImpl(BitacoraDatabase database)
    : database(std::move(database))
{
}

TaskResultEntity LocalBitacoraRepositoryImpl::create(const BitacoraEntryEntity& entry)
{
    return LocalStore::add<BitacoraEntryRealmModel>(database.configuration, entry);
}

TaskResultEntity LocalBitacoraRepositoryImpl::update(const BitacoraEntryEntity& entry)
{
    return LocalStore::update<BitacoraEntryRealmModel>(database.configuration, entry, TaskMessages::Bitacora::notFound);
}

TaskResultEntity LocalBitacoraRepositoryImpl::delete_(const QUuid& entryId)
{
    return LocalStore::remove<BitacoraEntryRealmModel>(
        database.configuration, RealmValue::fromUuid(entryId), TaskMessages::Bitacora::notFound);
}

TaskResultEntity LocalBitacoraRepositoryImpl::find(const QUuid& entryId)
{
    return LocalStore::find<BitacoraEntryRealmModel>(
        database.configuration, RealmValue::fromUuid(entryId), TaskMessages::Bitacora::notFound);
}

TaskResultEntity LocalBitacoraRepositoryImpl::list(const QUuid& projectId)
{
    return LocalStore::listWhere<BitacoraEntryRealmModel>(
        database.configuration, QStringLiteral("prjId"), RealmValue::fromUuid(projectId));
}

TaskResultEntity LocalBitacoraRepositoryImpl::listAll()
{
    return LocalStore::withDatabase(database.configuration, [](RealmDatabase& database) {
        return TaskResultEntity::success(
            LocalStore::entitiesOf(RealmTable<BitacoraEntryRealmModel>(database).objects(QStringLiteral("1"), {})));
    });
}
