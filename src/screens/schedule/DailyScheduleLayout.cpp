#include "screens/schedule/DailyScheduleLayout.h"

#include <QHash>

#include <algorithm>
#include <limits>

namespace {

void layoutCluster(const QList<const MeetEntity*>& cluster, QList<LayoutedMeet>& output)
{
    QList<qint64> columnEnds;
    QHash<QUuid, int> columnOf;
    columnOf.reserve(cluster.size());
    for (const MeetEntity* meet : cluster) {
        const qint64 start = meet->metDate.toMSecsSinceEpoch();
        const qint64 end = start + qint64(meet->metDuration * 1000);
        qsizetype column = 0;
        while (column < columnEnds.size() && columnEnds.at(column) > start)
            ++column;
        if (column == columnEnds.size())
            columnEnds.append(end);
        else
            columnEnds[column] = end;
        columnOf.insert(meet->metId, int(column));
    }
    const int columnCount = std::max(1, int(columnEnds.size()));
    for (const MeetEntity* meet : cluster)
        output.append({*meet, columnOf.value(meet->metId, 0), columnCount});
}

} // namespace

QList<LayoutedMeet> DailyScheduleLayout::layout(QList<MeetEntity> meets)
{
    std::stable_sort(meets.begin(), meets.end(),
        [](const MeetEntity& lhs, const MeetEntity& rhs) { return lhs.metDate < rhs.metDate; });
    QList<LayoutedMeet> output;
    output.reserve(meets.size());
    QList<const MeetEntity*> cluster;
    // Comparisons run on milliseconds since the epoch: QDateTime comparisons convert zones on
    // every call, which dominates a busy day's layout.
    qint64 clusterEnd = std::numeric_limits<qint64>::min();
    for (const MeetEntity& meet : std::as_const(meets)) {
        const qint64 start = meet.metDate.toMSecsSinceEpoch();
        const qint64 end = start + qint64(meet.metDuration * 1000);
        if (!cluster.isEmpty() && start >= clusterEnd) {
            layoutCluster(cluster, output);
            cluster = {&meet};
            clusterEnd = end;
        } else {
            cluster.append(&meet);
            clusterEnd = std::max(clusterEnd, end);
        }
    }
    if (!cluster.isEmpty())
        layoutCluster(cluster, output);
    return output;
}

std::optional<QDateTime> DailyScheduleLayout::firstFreeSlot(
    const QList<MeetEntity>& meets, const QDateTime& from, const QDateTime& until, qint64 seconds)
{
    // Up to the next quarter hour of from's own clock.
    const QTime at = from.time();
    const int past = (at.minute() % 15) * 60 + at.second();
    QDateTime candidate = past == 0 && at.msec() == 0 ? from : from.addSecs(15 * 60 - past).addMSecs(-at.msec());
    QList<MeetEntity> timed;
    for (const MeetEntity& meet : meets) {
        if (!meet.metIsAllDay)
            timed.append(meet);
    }
    std::sort(
        timed.begin(), timed.end(), [](const MeetEntity& a, const MeetEntity& b) { return a.metDate < b.metDate; });
    // Each meet in the way pushes the candidate to its end; sorted by start, one pass does.
    for (const MeetEntity& meet : std::as_const(timed)) {
        const QDateTime end = candidate.addSecs(seconds);
        if (meet.metDate >= end)
            break;
        if (meet.endDate() > candidate)
            candidate = meet.endDate();
    }
    if (candidate.addSecs(seconds) > until)
        return std::nullopt;
    return candidate;
}
