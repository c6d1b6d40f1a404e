#pragma once

#include "platform/ResultEntity.h"
#include "storage/RealmConfiguration.h"

// Opens a store, and when that fails for any reason deletes its files and opens it once more:
// a store whose key was lost or whose file was damaged comes back empty rather than leaving
// its module unusable.
class RealmDatabaseOpener {
public:
    // On success data holds a std::shared_ptr<RealmDatabase>; on failure databaseMessage says why.
    static ResultEntity open(const RealmConfiguration& configuration);
};
