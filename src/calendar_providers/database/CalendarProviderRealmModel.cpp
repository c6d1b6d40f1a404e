#include "calendar_providers/database/CalendarProviderRealmModel.h"

#include <QTimeZone>

RealmObjectType CalendarProviderRealmModel::objectType()
{
    return {QStringLiteral("CalendarProviderRealmModel"),
        QStringLiteral("capId TEXT PRIMARY KEY NOT NULL, "
                       "capProvider TEXT NOT NULL DEFAULT 'eventKit', "
                       "capDisplayName TEXT NOT NULL, "
                       "capDescription TEXT NOT NULL, "
                       "capEmail TEXT NOT NULL, "
                       "capIsEnabled INTEGER NOT NULL, "
                       "capRegisteredAt INTEGER NOT NULL")};
}

CalendarProviderRealmModel CalendarProviderRealmModel::fromEntity(const CalendarProviderEntity& provider)
{
    return {
        .capId = provider.capId,
        .capProvider = AccountProvider::rawValue(provider.capProvider),
        .capDisplayName = provider.capDisplayName,
        .capDescription = provider.capDescription,
        .capEmail = provider.capEmail,
        .capIsEnabled = provider.capIsEnabled,
        .capRegisteredAt = provider.capRegisteredAt,
    };
}

CalendarProviderEntity CalendarProviderRealmModel::toEntity() const
{
    return {
        .capId = capId,
        .capProvider = AccountProvider::fromRawValue(capProvider).value_or(AccountProviderEnum::eventKit),
        .capDisplayName = capDisplayName,
        .capDescription = capDescription,
        .capEmail = capEmail,
        .capIsEnabled = capIsEnabled,
        .capRegisteredAt = capRegisteredAt,
    };
}

RealmRow CalendarProviderRealmModel::toRow() const
{
    // An unset date has no instant; the epoch keeps the column's NOT NULL without inventing "now".
    const qint64 registeredAt = capRegisteredAt.isValid() ? capRegisteredAt.toMSecsSinceEpoch() : 0;
    return {capId, capProvider, capDisplayName, capDescription, capEmail, capIsEnabled, registeredAt};
}

CalendarProviderRealmModel CalendarProviderRealmModel::fromRow(const RealmRow& row)
{
    return {
        .capId = row.at(0).toString(),
        .capProvider = row.at(1).toString(),
        .capDisplayName = row.at(2).toString(),
        .capDescription = row.at(3).toString(),
        .capEmail = row.at(4).toString(),
        .capIsEnabled = row.at(5).toLongLong() != 0,
        .capRegisteredAt = QDateTime::fromMSecsSinceEpoch(row.at(6).toLongLong(), QTimeZone::utc()),
    };
}
