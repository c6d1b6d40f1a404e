#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QList>

// Where a timed meet sits across the timeline: column `column` of `columnCount` equal columns.
struct LayoutedMeet {
    MeetEntity meet;
    int column = 0;
    int columnCount = 1;

    friend bool operator==(const LayoutedMeet&, const LayoutedMeet&) = default;
};

namespace DailyScheduleLayout {

// Groups meets that overlap, directly or through others, into clusters, and packs each cluster
// into as few columns as the greedy first-fit gives. Meets that only touch end-to-start do not
// overlap. The result is in start order (stable for equal starts).
QList<LayoutedMeet> layout(QList<MeetEntity> meets);

// The first start, from `from` on, of `seconds` that no timed meet overlaps and that ends by
// `until`; none when the span is full. Starts fall on the quarter hour after `from` or on the end
// of a meet.
std::optional<QDateTime> firstFreeSlot(
    const QList<MeetEntity>& meets, const QDateTime& from, const QDateTime& until, qint64 seconds);

} // namespace DailyScheduleLayout
