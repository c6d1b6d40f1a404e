#include "calendar_providers/repositories/EventKitPermissionRepositoryImpl.h"

#include "calendar_providers/domain/CalendarProviderMessages.h"
#include "platform/Logging.h"
#include "platform/calendar_store/CalendarStore.h"

EventKitPermissionRepositoryImpl::EventKitPermissionRepositoryImpl(std::shared_ptr<EventStoreAuthorizing> eventStore)
    : m_eventStore(std::move(eventStore))
{
}

// Every kind of account there is today is read through the calendar store.
CalendarProvidersResultEntity EventKitPermissionRepositoryImpl::requestAccess([[maybe_unused]] AccountProviderEnum kind)
{
    const int status = m_eventStore->authorizationStatus();
    if (status == CalendarAuthorizationStatus::fullAccess)
        return CalendarProvidersResultEntity::success();
    // Write-only access cannot show events, and a restricted or denied store is not asked
    // again: only the user can change that, in the system's settings.
    if (status == CalendarAuthorizationStatus::notDetermined && m_eventStore->requestFullAccessToEvents())
        return CalendarProvidersResultEntity::success();
    qCInfo(lcCalendar) << "calendar access refused; status" << status;
    return CalendarProvidersResultEntity::infrastructureFailure(CalendarProviderMessages::accessDenied);
}
