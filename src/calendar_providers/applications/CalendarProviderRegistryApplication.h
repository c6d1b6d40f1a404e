#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"
#include "calendar_providers/entities/CalendarProvidersResultEntity.h"
#include "calendar_providers/repositories/CalendarPermissionRepository.h"
#include "calendar_providers/repositories/CalendarProviderRegistryRepository.h"
#include "calendar_providers/stores/EnabledCalendarAccountsStore.h"

#include <QList>

#include <memory>

// The use cases of the calendar accounts settings and the schedule. Synchronous; screens run
// them off the GUI thread.
//
// Every change, and every listing, rewrites the enabled-kinds file with the kinds of the enabled
// registered accounts, so the file follows the registry even after a crash between the two.
class CalendarProviderRegistryApplication {
public:
    CalendarProviderRegistryApplication(std::shared_ptr<CalendarProviderRegistryRepository> repository,
        std::shared_ptr<CalendarPermissionRepository> permissionRepository,
        EnabledCalendarAccountsStore enabledAccountsStore);

    // data: QList<CalendarProviderEntity>, in the order they were registered.
    CalendarProvidersResultEntity listProviders() const;
    // data: the CalendarProviderEntity.
    CalendarProvidersResultEntity findProvider(const QString& capId) const;
    // Refuses a blank id or e-mail, a second account of the same kind and a taken id;
    // data: the stored CalendarProviderEntity.
    CalendarProvidersResultEntity registerProvider(const CalendarProviderEntity& provider) const;
    // Also how an account is switched on and off; data: the stored CalendarProviderEntity.
    CalendarProvidersResultEntity updateProvider(const CalendarProviderEntity& provider) const;
    CalendarProvidersResultEntity removeProvider(const QString& capId) const;
    CalendarProvidersResultEntity requestAccess(AccountProviderEnum kind) const;

    std::shared_ptr<CalendarProviderRegistryRepository> repository;
    std::shared_ptr<CalendarPermissionRepository> permissionRepository;

private:
    void saveEnabledKinds(const QList<CalendarProviderEntity>& providers) const;
    // After a change that is already stored: a registry that cannot be read now leaves the file
    // as it was rather than turning the stored change into a reported failure.
    void synchroniseEnabledKinds() const;

    EnabledCalendarAccountsStore m_enabledAccountsStore;
};
