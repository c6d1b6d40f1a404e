#include "screens/projects/EisenhowerTagStyle.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>

namespace EisenhowerTagStyle {

QString label(std::optional<EisenhowerTagEnum> tag)
{
    if (!tag) {
        //% "No quadrant"
        return qtTrId("eisenhower-tag-none");
    }
    switch (*tag) {
    case EisenhowerTagEnum::doIt:
        //% "Do"
        return qtTrId("eisenhower-tag-do");
    case EisenhowerTagEnum::planning:
        //% "Plan"
        return qtTrId("eisenhower-tag-planning");
    case EisenhowerTagEnum::delegate:
        //% "Delegate"
        return qtTrId("eisenhower-tag-delegate");
    case EisenhowerTagEnum::delete_:
        //% "Delete"
        return qtTrId("eisenhower-tag-delete");
    }
    return {};
}

QColor color(EisenhowerTagEnum tag)
{
    return QColor(EisenhowerTag::colorHex(tag));
}

QIcon dot(std::optional<EisenhowerTagEnum> tag)
{
    static QHash<int, QIcon> painted;
    const int key = tag ? int(*tag) : -1;
    if (const auto cached = painted.constFind(key); cached != painted.cend())
        return *cached;
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    if (tag) {
        painter.setBrush(color(*tag));
        painter.setPen(Qt::NoPen);
    } else {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(QColor(0x8e, 0x8e, 0x93), 2));
    }
    painter.drawEllipse(QRectF(5, 5, 14, 14));
    painter.end();
    return *painted.insert(key, QIcon(pixmap));
}

} // namespace EisenhowerTagStyle
