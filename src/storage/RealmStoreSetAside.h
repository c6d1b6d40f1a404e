#pragma once

#include <QString>

#include <optional>

// Moves an unreadable store file out of the way instead of deleting it: "<file>" becomes
// "<file>.unreadable-<UTC time>", and its journal files travel with it so that the copy can
// still be read as it was and a stale journal never meets the new store. Only the newest few
// copies of a store are kept. Run it under the StoreFolderLock.
namespace RealmStoreSetAside {

inline constexpr int keptCopies = 3;
inline const QString marker = QStringLiteral(".unreadable-");

// The path the file went to, or nothing when there was no file. Throws RealmError when it
// cannot be moved.
std::optional<QString> move(const QString& file);

// Removes the copies of the store beyond the newest keptCopies.
void prune(const QString& file);

} // namespace RealmStoreSetAside
