#pragma once

#include "meetings/entities/MeetColor.h"
#include "meetings/entities/MeetRecurrenceFrequency.h"
#include "meetings/entities/MeetSource.h"
#include "meetings/entities/MeetTaskLink.h"

#include <QDateTime>
#include <QHashFunctions>
#include <QSet>
#include <QString>
#include <QUrl>
#include <QUuid>

#include <optional>

// One calendar event as the schedule shows it: one occurrence, for a repeating event. metId is
// derived from where the event lives and when this occurrence starts (MeetIdentity), so the same
// occurrence has the same identity on every fetch; alarms key on it.
struct MeetEntity {
    QUuid metId;
    QString metName;
    QDateTime metDate;
    QString metDescription;
    // Seconds.
    double metDuration = 0;
    MeetColor metColor;
    bool metIsAllDay = false;
    std::optional<QString> metLocation;
    std::optional<QUrl> metUrl;
    QString metCalendarName;
    QString metCalendarIdentifier;
    MeetRecurrenceFrequency metRecurrenceFrequency = MeetRecurrenceFrequency::none;
    // 1 = Sunday ... 7 = Saturday; only for a weekly repetition.
    QSet<int> metRecurringWeekdays;
    // The event's identifier where it lives: the calendar store's event identifier or the
    // backend's evtId.
    QString metOriginalIdentifier;
    MeetSource metSource = MeetSource::eventKit;
    // The task this meet blocks time for; only calendar store events carry one.
    std::optional<MeetTaskLink> metTaskLink;

    QDateTime endDate() const { return metDate.addMSecs(qint64(metDuration * 1000)); }

    friend bool operator==(const MeetEntity&, const MeetEntity&) = default;
};

inline size_t qHash(const MeetEntity& meet, size_t seed = 0) noexcept
{
    // Equal meets have equal identities; the identity alone spreads them well enough.
    return qHash(meet.metId, seed);
}
