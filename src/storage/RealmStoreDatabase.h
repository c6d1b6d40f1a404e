#pragma once

#include "platform/ResultEntity.h"
#include "storage/RealmEncryptedConfigurationFactory.h"

// The database value of one named store: only its configuration, never an open handle.
// StoreSchema describes the store: a static `name` and a static `objectTypes()`.
template <typename StoreSchema> struct RealmStoreDatabase {
    using Store = StoreSchema;
    static constexpr quint64 schemaVersion = 1;

    RealmConfiguration configuration;

    // On success data holds the database value; a failure carries the factory's text.
    static ResultEntity make(const RealmEncryptedConfigurationFactory& factory)
    {
        ResultEntity made = factory.makeConfiguration(Store::name, schemaVersion, noMigration, Store::objectTypes());
        if (!made.result)
            return ResultEntity::infrastructureFailure(made.infrastructureMessage.value_or(QString()));
        return ResultEntity::success(RealmStoreDatabase {*made.dataAs<RealmConfiguration>()});
    }

private:
    static void noMigration(RealmDatabase&, quint64) { }
};
