#include "tasks/entities/EisenhowerTagEnum.h"

#include <QHash>

#include <algorithm>

namespace {

struct TagRow {
    EisenhowerTagEnum tag;
    const char* raw;
    const char* api;
    const char* color;
};

constexpr std::array<TagRow, 4> rows = {{
    {EisenhowerTagEnum::doIt, "do", "urgent_important", "#E5484D"},
    {EisenhowerTagEnum::planning, "planning", "not_urgent_important", "#3E8BFF"},
    {EisenhowerTagEnum::delegate, "delegate", "urgent_not_important", "#F5A623"},
    {EisenhowerTagEnum::delete_, "delete", "not_urgent_not_important", "#8E8E93"},
}};

const TagRow& rowOf(EisenhowerTagEnum tag)
{
    return *std::find_if(rows.begin(), rows.end(), [tag](const TagRow& row) { return row.tag == tag; });
}

template <typename Column> std::optional<EisenhowerTagEnum> findBy(Column column, const QString& value)
{
    for (const TagRow& row : rows) {
        if (value == QLatin1String(row.*column))
            return row.tag;
    }
    return std::nullopt;
}

} // namespace

namespace EisenhowerTag {

QString rawValue(EisenhowerTagEnum tag)
{
    return QString::fromLatin1(rowOf(tag).raw);
}

std::optional<EisenhowerTagEnum> fromRawValue(const QString& raw)
{
    return findBy(&TagRow::raw, raw);
}

QString apiValue(EisenhowerTagEnum tag)
{
    return QString::fromLatin1(rowOf(tag).api);
}

std::optional<EisenhowerTagEnum> fromApiValue(const std::optional<QString>& api)
{
    return api ? findBy(&TagRow::api, *api) : std::nullopt;
}

QString colorHex(EisenhowerTagEnum tag)
{
    return QString::fromLatin1(rowOf(tag).color);
}

} // namespace EisenhowerTag

size_t qHash(EisenhowerTagEnum tag, size_t seed) noexcept
{
    return qHash(EisenhowerTag::rawValue(tag), seed);
}
