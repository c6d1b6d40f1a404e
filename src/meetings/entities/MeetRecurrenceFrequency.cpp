#include "meetings/entities/MeetRecurrenceFrequency.h"

#include <array>

namespace {

constexpr std::array<const char*, 4> rawValues = {"none", "daily", "weekly", "monthly"};

} // namespace

namespace MeetRecurrence {

QString rawValue(MeetRecurrenceFrequency frequency)
{
    return QString::fromLatin1(rawValues.at(size_t(frequency)));
}

std::optional<MeetRecurrenceFrequency> fromRawValue(const QString& raw)
{
    for (size_t i = 0; i < rawValues.size(); ++i) {
        if (raw == QLatin1String(rawValues.at(i)))
            return MeetRecurrenceFrequency(i);
    }
    return std::nullopt;
}

} // namespace MeetRecurrence
