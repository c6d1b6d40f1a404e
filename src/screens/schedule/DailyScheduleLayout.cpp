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
