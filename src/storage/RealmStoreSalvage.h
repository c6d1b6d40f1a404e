#pragma once

#include "storage/RealmConfiguration.h"

class RealmDatabase;

// Copies the records that can still be read from a damaged store file into a new store.
// SQLCipher 3.4 has no recovery of its own, so each table is read in rowid order from the start
// until the first unreadable page and from the end back to it: one bad page costs the records
// on it, not the ones behind it.
namespace RealmStoreSalvage {

// damaged names the file and its key; its object types say which tables to read. Returns how
// many records were copied into target (the records target already holds are kept). A file of
// another schema version gives nothing.
int copyReadable(const RealmConfiguration& damaged, RealmDatabase& target);

} // namespace RealmStoreSalvage
