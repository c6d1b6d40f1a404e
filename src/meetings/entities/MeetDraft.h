#pragma once

#include "meetings/entities/MeetRecurrenceFrequency.h"

#include <QDateTime>
#include <QSet>
#include <QString>

// What the user typed for a new meet, or for the new state of an existing one.
struct MeetDraft {
    QString title;
    QString description;
    QDateTime start;
    QDateTime end;
    MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none;
    // 1 = Sunday ... 7 = Saturday; read for a weekly repetition only.
    QSet<int> weekdays;
};
