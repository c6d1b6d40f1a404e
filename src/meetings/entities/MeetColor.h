#pragma once

#include <QString>

// A meet's colour as "#" followed by six upper-case hexadecimal digits.
struct MeetColor {
    QString hexValue;

    // "#rrggbb", "#rgb" and the sixteen-bit "#rrrrggggbbbb" EDS may keep; anything else (a named
    // colour, an empty text) gets the neutral grey calendars without a colour are drawn in.
    static MeetColor fromCalendarColor(const QString& color);

    friend bool operator==(const MeetColor&, const MeetColor&) = default;
};
