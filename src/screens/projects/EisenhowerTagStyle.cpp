#include "screens/projects/EisenhowerTagStyle.h"

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
    return QIcon(pixmap);
}

} // namespace EisenhowerTagStyle
