#pragma once

#include "tasks/applications/DailyTasksApplication.h"

#include <QDate>
#include <QList>

#include <optional>

// Unfinished daily tasks of past days are never dropped: they stay on their day until the user
// moves them to today, by hand or automatically at the first start of a day.
namespace RollOver {

// How far back past days are searched: a month of holidays away still finds everything.
constexpr int lookbackDays = 31;

// The instant a day's checklist items carry: noon, so the day reads the same in local time and
// in UTC, and it exists on days whose clocks change.
QDateTime dateOf(const QDate& day);

// data: QList<DailyTaskEntity>, the unfinished items of the days from today - lookbackDays to
// yesterday, oldest day first and each day in its own order. The first failing read fails all.
TaskResultEntity unfinishedBefore(const DailyTasksApplication& dailyTasks, const QDate& today);

struct Outcome {
    int moved = 0;
    // Why moving stopped before the end; the items before it were moved.
    std::optional<QString> failure;
};

// Moves the items to today one after another, in the order given, so that they keep it there.
Outcome moveToToday(const DailyTasksApplication& dailyTasks, const QList<DailyTaskEntity>& items, const QDate& today);

// "3 daily tasks moved to today."
QString movedNotice(int moved);

} // namespace RollOver
