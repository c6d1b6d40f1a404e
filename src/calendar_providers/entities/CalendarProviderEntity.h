#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QDateTime>
#include <QString>

// One registered calendar account.
struct CalendarProviderEntity {
    QString capId;
    AccountProviderEnum capProvider = AccountProviderEnum::eventKit;
    QString capDisplayName;
    QString capDescription;
    QString capEmail;
    bool capIsEnabled = false;
    // Kept to the millisecond.
    QDateTime capRegisteredAt;

    friend bool operator==(const CalendarProviderEntity&, const CalendarProviderEntity&) = default;
};
