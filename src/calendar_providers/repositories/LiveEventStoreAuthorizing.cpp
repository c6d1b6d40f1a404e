#include "calendar_providers/repositories/LiveEventStoreAuthorizing.h"

#include "platform/calendar_store/CalendarStore.h"

LiveEventStoreAuthorizing::LiveEventStoreAuthorizing(CalendarStore& store)
    : m_store(store)
{
}

int LiveEventStoreAuthorizing::authorizationStatus() const
{
    return m_store.authorizationStatus();
}

bool LiveEventStoreAuthorizing::requestFullAccessToEvents()
{
    return m_store.requestFullAccessToEvents();
}
