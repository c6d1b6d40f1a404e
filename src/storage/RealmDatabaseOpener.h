#pragma once

#include "platform/ResultEntity.h"
#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"

#include <optional>

// Opens a store, and when it cannot be read sets its file aside, keeping a copy and every record
// that still reads, and starts the store anew: a store whose key was lost or whose file was
// damaged comes back usable instead of leaving its module unusable, and nothing is destroyed.
// A store that is only busy (held by another process), or that a newer version of the program
// wrote, is never touched: that operation fails.
//
// Each time a store is set aside one line saying where the file went is posted as
// NotificationName::storeSetAside on the default NotificationCenter.
class RealmDatabaseOpener {
public:
    // On success data holds a std::shared_ptr<RealmDatabase>; on failure databaseMessage says why.
    static ResultEntity open(const RealmConfiguration& configuration);

    // For a store that reported damage (RealmError::Kind::damaged) inside an operation: unless
    // another process has already put a sound store in its place, sets it aside as open() does.
    // The result is that of open().
    static ResultEntity recoverDamaged(const RealmConfiguration& configuration, const QString& damage);

    // Runs work(database) on a freshly opened handle. When the work meets damage, the store is
    // recovered and the work runs once more on the new store. Work that reads should do so in
    // RealmDatabase::read so that damage cannot pass unnoticed. opened(text) makes the result of
    // a store that cannot be opened, failed(text) that of a failing operation.
    template <typename Work, typename OpenFailed, typename Failed>
    static auto perform(const RealmConfiguration& configuration, Work&& work, OpenFailed&& openFailed, Failed&& failed)
        -> decltype(work(std::declval<RealmDatabase&>()))
    {
        ResultEntity opened = open(configuration);
        for (bool retried = false;; retried = true) {
            if (!opened.result)
                return openFailed(opened.databaseMessage.value_or(QString()));
            std::shared_ptr<RealmDatabase> database = *opened.dataAs<std::shared_ptr<RealmDatabase>>();
            opened = ResultEntity();
            QString damage;
            try {
                return work(*database);
            } catch (const RealmError& error) {
                if (error.kind() != RealmError::Kind::damaged || retried)
                    return failed(error.localizedDescription());
                damage = error.localizedDescription();
            }
            database.reset();
            opened = recoverDamaged(configuration, damage);
        }
    }

private:
    static ResultEntity recover(const RealmConfiguration& configuration, const QString& firstError, bool checkWhole);
};
