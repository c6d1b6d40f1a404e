#include "meetings/entities/MeetColor.h"

#include <QRegularExpression>

MeetColor MeetColor::fromCalendarColor(const QString& color)
{
    static const QRegularExpression hex(QStringLiteral("^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{12})$"));
    const QString text = color.trimmed();
    if (!hex.match(text).hasMatch())
        return {QStringLiteral("#8E8E93")};
    const QString digits = text.mid(1).toUpper();
    if (digits.size() == 6)
        return {QLatin1Char('#') + digits};
    QString expanded;
    if (digits.size() == 3) {
        for (QChar digit : digits)
            expanded += QString(2, digit);
    } else {
        // Each channel keeps its high byte.
        for (int channel = 0; channel < 3; ++channel)
            expanded += digits.mid(channel * 4, 2);
    }
    return {QLatin1Char('#') + expanded};
}
