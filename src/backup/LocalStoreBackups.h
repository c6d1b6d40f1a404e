#pragma once

#include "backup/StoreBackups.h"
#include "storage/RealmEncryptedConfigurationFactory.h"

#include <optional>

// The backups of this program's own stores (projects, task lists, tasks, daily tasks, logbook,
// calendar providers), beside the default store file.
namespace LocalStoreBackups {

// The stores' names, in the order they are copied.
QStringList storeNames();

// Looks up the keys of the stores that exist; a store without a file is not given a key here.
// Nothing when a key cannot be read (a locked keyring, say): a backup then waits for a later run.
std::optional<StoreBackups> make(const RealmEncryptedConfigurationFactory& configurations,
    const RealmConfiguration& storeDefaults, std::shared_ptr<Clock> clock);

} // namespace LocalStoreBackups
