#pragma once

#include <QString>

#include <optional>

enum class MeetRecurrenceFrequency { none, daily, weekly, monthly };

namespace MeetRecurrence {

// "none", "daily", "weekly", "monthly".
QString rawValue(MeetRecurrenceFrequency frequency);
std::optional<MeetRecurrenceFrequency> fromRawValue(const QString& raw);

} // namespace MeetRecurrence
