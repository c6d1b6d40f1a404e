#pragma once

#include <QDate>
#include <QList>

#include <algorithm>
#include <optional>

enum class RecurrenceFrequencyEnum { daily, weekly, monthly, yearly };

// Where the next occurrence is counted from: the due date of the one just finished
// ("every 2 weeks" keeps its weekday), or the day it was actually completed
// ("2 weeks after I last watered the plants").
enum class RecurrenceAnchorEnum { dueDate, completion };

// How a task repeats. Weekly rules repeat on `weekdays` (Qt::DayOfWeek, 1 = Monday; empty means
// the due date's weekday). Monthly and yearly rules use either `monthDay` (1..31, -1 = the last
// day of the month) or an ordinal weekday (`weekdayOrdinal` 1..5 or -1 = the last, with
// `ordinalWeekday`), as in "the last Friday"; with neither, the due date's day of the month.
struct TaskRecurrenceEntity {
    RecurrenceFrequencyEnum frequency = RecurrenceFrequencyEnum::daily;
    int interval = 1;
    QList<int> weekdays;
    int monthDay = 0;
    int weekdayOrdinal = 0;
    int ordinalWeekday = 0;
    RecurrenceAnchorEnum anchor = RecurrenceAnchorEnum::dueDate;
    // The end: never when both are empty.
    std::optional<int> endAfterCount;
    std::optional<QDate> endOnDate;

    // Written out: Qt's own comparison of two empty QList<int> hands memcmp a null pointer,
    // which the undefined-behaviour checks stop at.
    friend bool operator==(const TaskRecurrenceEntity& a, const TaskRecurrenceEntity& b)
    {
        return a.frequency == b.frequency && a.interval == b.interval
            && std::equal(a.weekdays.begin(), a.weekdays.end(), b.weekdays.begin(), b.weekdays.end())
            && a.monthDay == b.monthDay && a.weekdayOrdinal == b.weekdayOrdinal && a.ordinalWeekday == b.ordinalWeekday
            && a.anchor == b.anchor && a.endAfterCount == b.endAfterCount && a.endOnDate == b.endOnDate;
    }
};
