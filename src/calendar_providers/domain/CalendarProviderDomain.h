#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"
#include "calendar_providers/entities/CalendarProvidersResultEntity.h"

#include <QList>

// The registration rules; each failure carries its text as domainMessage.
namespace CalendarProviderDomain {

// The id and the e-mail must each keep something once white space and line breaks are trimmed
// from both ends. The id is checked first.
CalendarProvidersResultEntity validate(const CalendarProviderEntity& provider);

// One account of each kind at most: the desktop has a single calendar store, and a second
// account of it would show every event twice.
CalendarProvidersResultEntity canRegister(
    const CalendarProviderEntity& provider, const QList<CalendarProviderEntity>& registered);

} // namespace CalendarProviderDomain
