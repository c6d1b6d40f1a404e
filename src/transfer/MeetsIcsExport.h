#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QByteArray>
#include <QList>
#include <QTimeZone>

// Meets as an iCalendar file (RFC 5545) that other calendar programs import: one VEVENT per
// occurrence, timed ones in the given zone with its VTIMEZONE (so they keep their wall-clock
// time across daylight saving), all-day ones as dates with an exclusive end. A repeating meet of
// the backend is the whole event, written once with its repetition rule.
namespace MeetsIcsExport {

QByteArray write(const QList<MeetEntity>& meets, const QTimeZone& zone);

} // namespace MeetsIcsExport
