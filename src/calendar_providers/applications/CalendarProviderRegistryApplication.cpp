#include "calendar_providers/applications/CalendarProviderRegistryApplication.h"

#include "calendar_providers/domain/CalendarProviderDomain.h"
#include "platform/Logging.h"

CalendarProviderRegistryApplication::CalendarProviderRegistryApplication(
    std::shared_ptr<CalendarProviderRegistryRepository> repository,
    std::shared_ptr<CalendarPermissionRepository> permissionRepository,
    EnabledCalendarAccountsStore enabledAccountsStore)
    : repository(std::move(repository))
    , permissionRepository(std::move(permissionRepository))
    , m_enabledAccountsStore(std::move(enabledAccountsStore))
{
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::listProviders() const
{
    CalendarProvidersResultEntity listed = repository->listProviders();
    if (listed.result)
        saveEnabledKinds(*listed.dataAs<QList<CalendarProviderEntity>>());
    return listed;
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::findProvider(const QString& capId) const
{
    return repository->findProvider(capId);
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::registerProvider(
    const CalendarProviderEntity& provider) const
{
    if (CalendarProvidersResultEntity valid = CalendarProviderDomain::validate(provider); !valid.result)
        return valid;
    const CalendarProvidersResultEntity listed = repository->listProviders();
    if (!listed.result)
        return listed;
    if (CalendarProvidersResultEntity allowed
        = CalendarProviderDomain::canRegister(provider, *listed.dataAs<QList<CalendarProviderEntity>>());
        !allowed.result) {
        return allowed;
    }
    CalendarProvidersResultEntity stored = repository->registerProvider(provider);
    if (stored.result)
        synchroniseEnabledKinds();
    return stored;
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::updateProvider(
    const CalendarProviderEntity& provider) const
{
    if (CalendarProvidersResultEntity valid = CalendarProviderDomain::validate(provider); !valid.result)
        return valid;
    CalendarProvidersResultEntity stored = repository->updateProvider(provider);
    if (stored.result)
        synchroniseEnabledKinds();
    return stored;
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::removeProvider(const QString& capId) const
{
    CalendarProvidersResultEntity removed = repository->removeProvider(capId);
    if (removed.result)
        synchroniseEnabledKinds();
    return removed;
}

CalendarProvidersResultEntity CalendarProviderRegistryApplication::requestAccess(AccountProviderEnum kind) const
{
    return permissionRepository->requestAccess(kind);
}

void CalendarProviderRegistryApplication::saveEnabledKinds(const QList<CalendarProviderEntity>& providers) const
{
    AccountProviderSet kinds;
    for (const CalendarProviderEntity& provider : providers) {
        if (provider.capIsEnabled)
            kinds.insert(provider.capProvider);
    }
    m_enabledAccountsStore.save(kinds);
}

void CalendarProviderRegistryApplication::synchroniseEnabledKinds() const
{
    const CalendarProvidersResultEntity listed = repository->listProviders();
    if (!listed.result) {
        qCWarning(lcCalendar) << "enabled calendar accounts not updated:" << listed.firstMessage().value_or(QString());
        return;
    }
    saveEnabledKinds(*listed.dataAs<QList<CalendarProviderEntity>>());
}
