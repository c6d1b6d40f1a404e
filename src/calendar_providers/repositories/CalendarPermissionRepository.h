#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"
#include "calendar_providers/entities/CalendarProvidersResultEntity.h"

// Asks the system for access to the calendars of one kind of account.
class CalendarPermissionRepository {
public:
    virtual ~CalendarPermissionRepository() = default;
    // Succeeds with no payload when access is (or has just been) granted.
    virtual CalendarProvidersResultEntity requestAccess(AccountProviderEnum kind) = 0;
};
