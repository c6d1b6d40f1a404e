#pragma once

#include "calendar_providers/entities/AccountProviderEnum.h"

#include <QString>

// Every fixed text of the calendar providers module.
namespace CalendarProviderMessages {

inline const QString blankId = QStringLiteral("The provider id cannot be empty");
inline const QString blankEmail = QStringLiteral("The provider email cannot be empty");
inline const QString duplicateId = QStringLiteral("A provider is already registered with that id");
inline const QString notFound = QStringLiteral("No provider is registered with that id");
inline const QString databaseOpenFailed = QStringLiteral("Failed to open the database");
inline const QString accessDenied = QStringLiteral("Calendar access was denied");

// "A provider of type eventKit is already registered".
inline QString duplicateKind(AccountProviderEnum kind)
{
    return QStringLiteral("A provider of type %1 is already registered").arg(AccountProvider::rawValue(kind));
}

} // namespace CalendarProviderMessages
