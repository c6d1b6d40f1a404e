#pragma once

#include <QString>

// The user's choices about the day's rituals, in the user defaults.
namespace RitualSettings {

// Unfinished daily tasks of past days go to today by themselves at the first start of a day.
inline const QString autoMoveUnfinishedKey = QStringLiteral("rituals.autoMoveUnfinishedDailyTasks");
// The morning plan opens at the first start of a day.
inline const QString morningPlanAtFirstStartKey = QStringLiteral("rituals.morningPlanAtFirstStart");
// The hour (0-23) of the morning plan's and the review's notifications; absent: none.
inline const QString morningPlanHourKey = QStringLiteral("rituals.morningPlanHour");
inline const QString reviewHourKey = QStringLiteral("rituals.reviewHour");
// Start at login hidden in the tray; absent until the user chose, when the first armed alarm
// turns it on.
inline const QString startAtLoginKey = QStringLiteral("rituals.startAtLogin");
// Posted on the notification centre when a reminder's hour changed, so the running reminders
// follow at once.
inline const QString remindersDidChange = QStringLiteral("ritualRemindersDidChange");
// The last day Tolvane started on, "yyyy-MM-dd", to tell the first start of a day.
inline const QString lastStartDayKey = QStringLiteral("rituals.lastStartDay");

} // namespace RitualSettings
