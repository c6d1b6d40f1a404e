#pragma once

#include "calendar_providers/repositories/CalendarPermissionRepository.h"
#include "calendar_providers/repositories/EventStoreAuthorizing.h"

#include <memory>

// Access to the calendar store: granted at once with full access, asked for when nobody has
// decided yet, and otherwise (or on a refusal) "Calendar access was denied" as
// infrastructureMessage.
class EventKitPermissionRepositoryImpl final : public CalendarPermissionRepository {
public:
    explicit EventKitPermissionRepositoryImpl(std::shared_ptr<EventStoreAuthorizing> eventStore);

    CalendarProvidersResultEntity requestAccess(AccountProviderEnum kind) override;

private:
    std::shared_ptr<EventStoreAuthorizing> m_eventStore;
};
