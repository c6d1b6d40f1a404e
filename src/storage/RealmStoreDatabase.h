#pragma once

#include "platform/ResultEntity.h"
#include "storage/RealmEncryptedConfigurationFactory.h"

// The database value of one named store: only its configuration, never an open handle.
// StoreSchema describes the store: a static `name` and a static `objectTypes()`. A store whose
// records changed shape also has a static `schemaVersion` above 1 and a static
// `migrate(RealmDatabase&, quint64 oldVersion)` that brings an older file's tables up to date;
// it runs after the automatic backup taken before a migration.
template <typename StoreSchema> struct RealmStoreDatabase {
    using Store = StoreSchema;
    static constexpr quint64 schemaVersion = [] {
        if constexpr (requires { StoreSchema::schemaVersion; })
            return quint64(StoreSchema::schemaVersion);
        else
            return quint64(1);
    }();

    RealmConfiguration configuration;

    // On success data holds the database value; a failure carries the factory's text.
    static ResultEntity make(const RealmEncryptedConfigurationFactory& factory)
    {
        ResultEntity made = factory.makeConfiguration(Store::name, schemaVersion, migration(), Store::objectTypes());
        if (!made.result)
            return ResultEntity::infrastructureFailure(made.infrastructureMessage.value_or(QString()));
        return ResultEntity::success(RealmStoreDatabase {*made.dataAs<RealmConfiguration>()});
    }

    static RealmMigrationBlock migration()
    {
        if constexpr (requires(RealmDatabase & database) { StoreSchema::migrate(database, quint64()); })
            return &StoreSchema::migrate;
        else
            return noMigration;
    }

private:
    static void noMigration(RealmDatabase&, quint64) { }
};
