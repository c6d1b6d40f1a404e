#pragma once

#include <QString>

#include <optional>

// Where a meet lives: the desktop's calendar store or the backend service.
enum class MeetSource { eventKit, backend };

namespace MeetSources {

// "eventKit", "backend".
QString rawValue(MeetSource source);
std::optional<MeetSource> fromRawValue(const QString& raw);

} // namespace MeetSources
