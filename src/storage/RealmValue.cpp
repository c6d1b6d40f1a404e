#include "storage/RealmValue.h"

namespace RealmValue {

QVariant fromUuid(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

QUuid toUuid(const QVariant& value)
{
    return QUuid::fromString(value.toString());
}

QVariant fromDate(const QDateTime& date)
{
    return date.toMSecsSinceEpoch();
}

QDateTime toDate(const QVariant& value)
{
    return QDateTime::fromMSecsSinceEpoch(value.toLongLong());
}

QVariant fromOptionalDate(const std::optional<QDateTime>& date)
{
    return date ? fromDate(*date) : QVariant();
}

std::optional<QDateTime> toOptionalDate(const QVariant& value)
{
    return value.isNull() ? std::nullopt : std::optional(toDate(value));
}

QVariant fromOptionalString(const std::optional<QString>& text)
{
    return text ? QVariant(*text) : QVariant();
}

std::optional<QString> toOptionalString(const QVariant& value)
{
    return value.isNull() ? std::nullopt : std::optional(value.toString());
}

} // namespace RealmValue
