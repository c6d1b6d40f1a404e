#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QList>
#include <QString>

#include <algorithm>
#include <optional>

// How a task repeats, as the object under "tasRecurrence":
//   {"frequency": "monthly", "interval": 1, "weekdayOrdinal": -1, "ordinalWeekday": 5,
//    "anchor": "dueDate", "endAfterCount": 12}
// frequency is "daily", "weekly", "monthly" or "yearly"; anchor "dueDate" or "completion";
// weekdays 1 (Monday) to 7; monthDay 1..31 or -1 for the last day; endOnDate "yyyy-MM-dd".
// Keys holding their default (0, empty, none) are left out.
struct TaskRecurrenceDTO {
    QString frequency;
    qint64 interval = 1;
    QList<qint64> weekdays;
    qint64 monthDay = 0;
    qint64 weekdayOrdinal = 0;
    qint64 ordinalWeekday = 0;
    QString anchor = QStringLiteral("dueDate");
    std::optional<qint64> endAfterCount;
    std::optional<QString> endOnDate;

    // Strict on both sides: an unknown key, frequency or anchor, or a day out of range is an
    // error; throws DecodingError.
    static TaskRecurrenceDTO fromJson(const QJsonValue& json);
    void writeJson(JSONWriter& out) const;

    // Written out: Qt's own comparison of two empty QLists hands memcmp a null pointer.
    friend bool operator==(const TaskRecurrenceDTO& a, const TaskRecurrenceDTO& b)
    {
        return a.frequency == b.frequency && a.interval == b.interval
            && std::equal(a.weekdays.begin(), a.weekdays.end(), b.weekdays.begin(), b.weekdays.end())
            && a.monthDay == b.monthDay && a.weekdayOrdinal == b.weekdayOrdinal && a.ordinalWeekday == b.ordinalWeekday
            && a.anchor == b.anchor && a.endAfterCount == b.endAfterCount && a.endOnDate == b.endOnDate;
    }
};
