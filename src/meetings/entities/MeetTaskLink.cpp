#include "meetings/entities/MeetTaskLink.h"

namespace {

const QString taskPrefix = QStringLiteral("task:");
const QString dailyTaskPrefix = QStringLiteral("daily-task:");

} // namespace

QString MeetTaskLink::rawValue() const
{
    return (kind == Kind::task ? taskPrefix : dailyTaskPrefix) + id.toString(QUuid::WithoutBraces);
}

std::optional<MeetTaskLink> MeetTaskLink::fromRawValue(const QString& raw)
{
    MeetTaskLink link;
    QStringView rest;
    if (raw.startsWith(taskPrefix)) {
        rest = QStringView(raw).mid(taskPrefix.size());
    } else if (raw.startsWith(dailyTaskPrefix)) {
        link.kind = Kind::dailyTask;
        rest = QStringView(raw).mid(dailyTaskPrefix.size());
    } else {
        return std::nullopt;
    }
    link.id = QUuid::fromString(rest);
    if (link.id.isNull())
        return std::nullopt;
    return link;
}
