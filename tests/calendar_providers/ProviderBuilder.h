#pragma once

#include "calendar_providers/entities/CalendarProviderEntity.h"

#include <QTimeZone>

// aProvider().withId("work").disabled() ...: a valid calendar-store account unless told otherwise.
class ProviderBuilder {
public:
    ProviderBuilder& withId(const QString& id)
    {
        m_provider.capId = id;
        return *this;
    }
    ProviderBuilder& withEmail(const QString& email)
    {
        m_provider.capEmail = email;
        return *this;
    }
    ProviderBuilder& named(const QString& name)
    {
        m_provider.capDisplayName = name;
        return *this;
    }
    ProviderBuilder& disabled()
    {
        m_provider.capIsEnabled = false;
        return *this;
    }
    ProviderBuilder& registeredAt(const QDateTime& instant)
    {
        m_provider.capRegisteredAt = instant;
        return *this;
    }

    operator CalendarProviderEntity() const { return m_provider; }
    CalendarProviderEntity build() const { return m_provider; }

private:
    CalendarProviderEntity m_provider {
        .capId = QStringLiteral("0B6E3C52-8A51-4C1B-9D0F-5E2B7C1A9F00"),
        .capProvider = AccountProviderEnum::eventKit,
        .capDisplayName = QStringLiteral("Cuenta iOS calendar"),
        .capDescription = QStringLiteral("Calendars of this computer"),
        .capEmail = QStringLiteral("eventKit1@accounts.tolvane.invalid"),
        .capIsEnabled = true,
        .capRegisteredAt = QDateTime(QDate(2024, 3, 9), QTime(14, 5, 7, 250), QTimeZone::utc()),
    };
};

inline ProviderBuilder aProvider()
{
    return {};
}
