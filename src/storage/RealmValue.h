#pragma once

#include <QDateTime>
#include <QUuid>
#include <QVariant>

#include <optional>

// How record values are kept in store columns: identifiers as upper-case UUID text, instants as
// milliseconds since the epoch (UTC), booleans as 0 or 1, absent values as NULL.
namespace RealmValue {

QVariant fromUuid(const QUuid& uuid);
QUuid toUuid(const QVariant& value);

QVariant fromDate(const QDateTime& date);
QDateTime toDate(const QVariant& value);

QVariant fromOptionalDate(const std::optional<QDateTime>& date);
std::optional<QDateTime> toOptionalDate(const QVariant& value);

QVariant fromOptionalString(const std::optional<QString>& text);
std::optional<QString> toOptionalString(const QVariant& value);

} // namespace RealmValue
