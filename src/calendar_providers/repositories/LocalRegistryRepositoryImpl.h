#pragma once

#include "calendar_providers/database/CalendarProviderDatabase.h"
#include "calendar_providers/repositories/CalendarProviderRegistryRepository.h"

#include <functional>
#include <memory>

class RealmDatabase;

// The registry in the encrypted store "CalendarProviders.RegistryProvider". Each operation opens
// its own handle and makes its change in one write transaction.
//
// Failures: a store that cannot be opened gives "Failed to open the database" as databaseMessage
// (with the opener's own text as infrastructureMessage); a missing or already taken id gives its
// text as applicationMessage; a failing statement gives the store's error as databaseMessage.
class LocalRegistryRepositoryImpl final : public CalendarProviderRegistryRepository {
public:
    explicit LocalRegistryRepositoryImpl(CalendarProviderDatabase database);

    CalendarProvidersResultEntity listProviders() override;
    CalendarProvidersResultEntity findProvider(const QString& capId) override;
    CalendarProvidersResultEntity registerProvider(const CalendarProviderEntity& provider) override;
    CalendarProvidersResultEntity updateProvider(const CalendarProviderEntity& provider) override;
    CalendarProvidersResultEntity removeProvider(const QString& capId) override;

private:
    CalendarProvidersResultEntity withDatabase(
        const std::function<CalendarProvidersResultEntity(RealmDatabase&)>& operation) const;

    CalendarProviderDatabase m_database;
};
