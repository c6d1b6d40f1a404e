#include "calendar_providers/repositories/LocalRegistryRepositoryImpl.h"

#include "calendar_providers/database/CalendarProviderRealmModel.h"
#include "calendar_providers/domain/CalendarProviderMessages.h"
#include "platform/Logging.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmDatabaseOpener.h"

namespace {

const QString columns
    = QStringLiteral("capId, capProvider, capDisplayName, capDescription, capEmail, capIsEnabled, capRegisteredAt");

const QString selectAll = QStringLiteral("SELECT %1 FROM CalendarProviderRealmModel").arg(columns);

CalendarProviderEntity fromRow(const RealmRow& row)
{
    return CalendarProviderRealmModel::fromRow(row).toEntity();
}

RealmRow toRow(const CalendarProviderEntity& provider)
{
    return CalendarProviderRealmModel::fromEntity(provider).toRow();
}

std::optional<CalendarProviderEntity> lookUp(RealmDatabase& database, const QString& capId)
{
    const QList<RealmRow> rows = database.query(selectAll + QStringLiteral(" WHERE capId = ?"), {capId});
    if (rows.isEmpty())
        return std::nullopt;
    return fromRow(rows.constFirst());
}

CalendarProvidersResultEntity stored(RealmDatabase& database, const QString& capId)
{
    return CalendarProvidersResultEntity::success(*lookUp(database, capId));
}

} // namespace

LocalRegistryRepositoryImpl::LocalRegistryRepositoryImpl(CalendarProviderDatabase database)
    : m_database(std::move(database))
{
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::listProviders()
{
    return withDatabase([](RealmDatabase& database) {
        return database.read([&] {
            QList<CalendarProviderEntity> providers;
            // rowid is the order of registration; an update keeps a record's place.
            for (const RealmRow& row : database.query(selectAll + QStringLiteral(" ORDER BY rowid")))
                providers.append(fromRow(row));
            return CalendarProvidersResultEntity::success(providers);
        });
    });
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::findProvider(const QString& capId)
{
    return withDatabase([&](RealmDatabase& database) {
        const std::optional<CalendarProviderEntity> provider = database.read([&] { return lookUp(database, capId); });
        if (!provider)
            return CalendarProvidersResultEntity::applicationFailure(CalendarProviderMessages::notFound);
        return CalendarProvidersResultEntity::success(*provider);
    });
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::registerProvider(const CalendarProviderEntity& provider)
{
    return withDatabase([&](RealmDatabase& database) {
        return database.write([&] {
            if (lookUp(database, provider.capId))
                return CalendarProvidersResultEntity::applicationFailure(CalendarProviderMessages::duplicateId);
            database.execute(
                QStringLiteral("INSERT INTO CalendarProviderRealmModel (%1) VALUES (?, ?, ?, ?, ?, ?, ?)").arg(columns),
                toRow(provider));
            return stored(database, provider.capId);
        });
    });
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::updateProvider(const CalendarProviderEntity& provider)
{
    return withDatabase([&](RealmDatabase& database) {
        return database.write([&] {
            if (!lookUp(database, provider.capId))
                return CalendarProvidersResultEntity::applicationFailure(CalendarProviderMessages::notFound);
            RealmRow bindings = toRow(provider);
            bindings.append(bindings.takeFirst());
            database.execute(
                QStringLiteral("UPDATE CalendarProviderRealmModel SET capProvider = ?, capDisplayName = ?, "
                               "capDescription = ?, capEmail = ?, capIsEnabled = ?, capRegisteredAt = ? "
                               "WHERE capId = ?"),
                bindings);
            return stored(database, provider.capId);
        });
    });
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::removeProvider(const QString& capId)
{
    return withDatabase([&](RealmDatabase& database) {
        return database.write([&] {
            if (!lookUp(database, capId))
                return CalendarProvidersResultEntity::applicationFailure(CalendarProviderMessages::notFound);
            database.execute(QStringLiteral("DELETE FROM CalendarProviderRealmModel WHERE capId = ?"), {capId});
            return CalendarProvidersResultEntity::success();
        });
    });
}

CalendarProvidersResultEntity LocalRegistryRepositoryImpl::withDatabase(
    const std::function<CalendarProvidersResultEntity(RealmDatabase&)>& operation) const
{
    return RealmDatabaseOpener::perform(
        m_database.configuration, operation,
        [](const QString& text) {
            qCWarning(lcStorage) << "calendar provider registry unavailable:" << text;
            CalendarProvidersResultEntity failure
                = CalendarProvidersResultEntity::databaseFailure(CalendarProviderMessages::databaseOpenFailed);
            failure.infrastructureMessage = text;
            return failure;
        },
        [](const QString& text) { return CalendarProvidersResultEntity::databaseFailure(text); });
}
