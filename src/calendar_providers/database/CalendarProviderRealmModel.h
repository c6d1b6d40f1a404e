#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"
#include "storage/RealmConfiguration.h"
#include "storage/RealmDatabase.h"

#include <QDateTime>
#include <QString>

// The stored form of a registered calendar account, one row of the table of the same name.
// The kind is kept as its raw value, the registration instant as milliseconds since the epoch
// (UTC) and the flag as an integer.
struct CalendarProviderRealmModel {
    QString capId;
    QString capProvider = QStringLiteral("eventKit");
    QString capDisplayName;
    QString capDescription;
    QString capEmail;
    bool capIsEnabled = false;
    QDateTime capRegisteredAt;

    static RealmObjectType objectType();

    static CalendarProviderRealmModel fromEntity(const CalendarProviderEntity& provider);
    // A kind this version does not know reads as the calendar store, the only one it can read.
    CalendarProviderEntity toEntity() const;

    // The values in column order.
    RealmRow toRow() const;
    static CalendarProviderRealmModel fromRow(const RealmRow& row);
};
