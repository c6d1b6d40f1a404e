#pragma once

#include "backup/StoreBackupEntity.h"

#include <QList>
#include <QSet>

// Which daily backups are kept: the newest of each of the last `days` days that have one, and
// the newest of each of the last `weeks` ISO weeks that have one, in local time. Backups made for
// another reason (before a restore, before a migration) are never given up by the retention.
namespace BackupRetention {

inline constexpr int keptDays = 7;
inline constexpr int keptWeeks = 4;

// The names of the backups to remove, given every backup there is (in any order).
QSet<QString> expired(const QList<StoreBackupEntity>& backups, int days = keptDays, int weeks = keptWeeks);

} // namespace BackupRetention
