#pragma once

#include "meetings/entities/MeetRecurrenceFrequency.h"

#include <QDateTime>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

// What the user typed for a new meet, or for the new state of an existing one.
struct MeetDraft {
    QString title;
    QString description;
    QDateTime start;
    QDateTime end;
    MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none;
    // 1 = Sunday ... 7 = Saturday; read for a weekly repetition only.
    QSet<int> weekdays;
    // All day: start is the first day's midnight and end the midnight after the last day.
    bool isAllDay = false;
    std::optional<QString> location;
    std::optional<QUrl> url;
    // The calendar a new meet goes into; none for the user's default one.
    std::optional<QString> calendarIdentifier;
};
