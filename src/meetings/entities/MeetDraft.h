#pragma once

#include "meetings/entities/MeetRecurrenceFrequency.h"
#include "meetings/entities/MeetTaskLink.h"

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
    // The task a new meet blocks time for. Saving an existing meet keeps its link whatever this
    // says: the editor knows nothing of links.
    std::optional<MeetTaskLink> taskLink;
};
