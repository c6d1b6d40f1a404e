#pragma once

#include "storage/RealmConfiguration.h"

#include <QString>

// The file-level steps of a backup: one store copied into a new file, and a copy checked.
namespace StoreCopy {

// Writes a consistent copy of the store into the new file target (mode 0600), keyed like it.
// Throws RealmError.
void copyStore(const RealmConfiguration& store, const QString& target);

// Opens the file with the key, runs SQLite's integrity check and counts the records of every
// table. Throws RealmError (Kind::damaged when the copy is not sound).
qint64 checkedCount(const QString& file, const QByteArray& key);

// Copies every page of source (keyed with key) into the live store, replacing what it held.
void replaceStore(const QString& source, const RealmConfiguration& store);

} // namespace StoreCopy
