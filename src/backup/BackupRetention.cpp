#include "backup/BackupRetention.h"

#include "backup/StoreBackups.h"

#include <algorithm>

namespace BackupRetention {

QSet<QString> expired(const QList<StoreBackupEntity>& backups, int days, int weeks)
{
    QList<StoreBackupEntity> daily;
    for (const StoreBackupEntity& backup : backups) {
        if (backup.reason == StoreBackups::dailyReason)
            daily.append(backup);
    }
    std::sort(daily.begin(), daily.end(),
        [](const StoreBackupEntity& a, const StoreBackupEntity& b) { return a.createdAt > b.createdAt; });

    QSet<QDate> keptDayKeys;
    QSet<int> keptWeekKeys;
    QSet<QString> removed;
    for (const StoreBackupEntity& backup : daily) {
        const QDate day = backup.createdAt.toLocalTime().date();
        int weekYear = 0;
        const int week = day.weekNumber(&weekYear);
        const int weekKey = weekYear * 100 + week;
        bool kept = false;
        if (!keptDayKeys.contains(day) && keptDayKeys.size() < days) {
            keptDayKeys.insert(day);
            kept = true;
        }
        if (!keptWeekKeys.contains(weekKey) && keptWeekKeys.size() < weeks) {
            keptWeekKeys.insert(weekKey);
            kept = true;
        }
        if (!kept)
            removed.insert(backup.name);
    }
    return removed;
}

} // namespace BackupRetention
