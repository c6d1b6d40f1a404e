#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"
#include "calendar_providers/entities/CalendarProvidersResultEntity.h"

#include <QList>
#include <QString>

// Where the registered calendar accounts are kept. Every operation answers with a result and
// never throws.
class CalendarProviderRegistryRepository {
public:
    virtual ~CalendarProviderRegistryRepository() = default;

    // data: QList<CalendarProviderEntity>, in the order they were registered.
    virtual CalendarProvidersResultEntity listProviders() = 0;
    // data: the CalendarProviderEntity.
    virtual CalendarProvidersResultEntity findProvider(const QString& capId) = 0;
    // Refuses an id that is already taken; data: the stored CalendarProviderEntity.
    virtual CalendarProvidersResultEntity registerProvider(const CalendarProviderEntity& provider) = 0;
    // Writes every field over the record with the same id; data: the stored CalendarProviderEntity.
    virtual CalendarProvidersResultEntity updateProvider(const CalendarProviderEntity& provider) = 0;
    virtual CalendarProvidersResultEntity removeProvider(const QString& capId) = 0;
};
