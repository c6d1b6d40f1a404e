#include "meetings/entities/MeetSource.h"

namespace MeetSources {

QString rawValue(MeetSource source)
{
    return source == MeetSource::backend ? QStringLiteral("backend") : QStringLiteral("eventKit");
}

std::optional<MeetSource> fromRawValue(const QString& raw)
{
    if (raw == QLatin1String("eventKit"))
        return MeetSource::eventKit;
    if (raw == QLatin1String("backend"))
        return MeetSource::backend;
    return std::nullopt;
}

} // namespace MeetSources
