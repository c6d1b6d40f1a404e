#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QTimeZone>

// The dates a repeating meet falls on, worked out by libical from the iCalendar rule of its
// repetition, on the wall clock of the user's calendar so that a weekly meet at 9:00 stays at
// 9:00 across daylight saving. The meet's own start always counts: a start its rule would not
// produce (a weekly meet on Monday and Wednesday that starts on a Tuesday) still shows on its day.
namespace MeetRepetition {

// The iCalendar rule ("FREQ=WEEKLY;BYDAY=MO,WE"); empty for no repetition. A monthly meet
// repeats on the day of the month it starts on, a weekly one with no days on its start's day.
QByteArray rule(MeetRecurrenceFrequency frequency, const QSet<int>& weekdays);

// The starts of the occurrences of meet (repeating from meet.metDate) that overlap [from, to),
// earliest first. A meet of no length at from belongs to the range. A meet that does not repeat
// has its one start, when it overlaps.
QList<QDateTime> starts(const MeetEntity& meet, const QDateTime& from, const QDateTime& to, const QTimeZone& zone);

// Whether the rule of meet produces its start itself (false: the start is an occurrence the rule
// alone would not give, which an iCalendar file must list on its own).
bool ruleProducesStart(const MeetEntity& meet, const QTimeZone& zone);

} // namespace MeetRepetition
