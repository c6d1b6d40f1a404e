#include "calendar_providers/domain/CalendarProviderDomain.h"

#include "calendar_providers/domain/CalendarProviderMessages.h"
#include "platform/Text.h"

#include <algorithm>

namespace CalendarProviderDomain {

CalendarProvidersResultEntity validate(const CalendarProviderEntity& provider)
{
    if (Text::isBlank(provider.capId))
        return CalendarProvidersResultEntity::domainFailure(CalendarProviderMessages::blankId);
    return CalendarProvidersResultEntity::domainCheck(
        !Text::isBlank(provider.capEmail), CalendarProviderMessages::blankEmail);
}

CalendarProvidersResultEntity canRegister(
    const CalendarProviderEntity& provider, const QList<CalendarProviderEntity>& registered)
{
    const bool kindTaken = std::any_of(registered.begin(), registered.end(),
        [&](const CalendarProviderEntity& other) { return other.capProvider == provider.capProvider; });
    return CalendarProvidersResultEntity::domainCheck(
        !kindTaken, CalendarProviderMessages::duplicateKind(provider.capProvider));
}

} // namespace CalendarProviderDomain
