#pragma once

#include <QColor>
#include <QDate>
#include <QPainterPath>
#include <QRectF>
#include <QString>

// One day of the month grid. The day is also the cell's identity.
struct MiniCalendarDayCellEntity {
    QDate mcdId;
    int mcdDayNumber = 0;
    // False for the days of the neighbouring months that fill the first and last weeks.
    bool mcdIsCurrentMonth = false;
    bool mcdIsToday = false;

    friend bool operator==(const MiniCalendarDayCellEntity&, const MiniCalendarDayCellEntity&) = default;
};

// A holiday on a day: the colour of its calendar and the event's title.
struct MiniCalendarHolidayMarkEntity {
    QColor mchColor;
    QString mchTitle;

    friend bool operator==(const MiniCalendarHolidayMarkEntity&, const MiniCalendarHolidayMarkEntity&) = default;
};

// A pie slice from the centre of a day's cell. Angles are in degrees, clockwise from three
// o'clock, so -90 is the top of the cell.
struct HolidayWedgeShape {
    double startAngle = 0;
    double endAngle = 0;

    // The slice inside frame, with the radius of half its smaller side.
    QPainterPath path(const QRectF& frame) const;

    friend bool operator==(const HolidayWedgeShape&, const HolidayWedgeShape&) = default;
};
