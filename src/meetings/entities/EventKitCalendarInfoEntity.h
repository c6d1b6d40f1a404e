#pragma once

#include <QString>

// One calendar of the calendar store, for the visibility settings.
struct EventKitCalendarInfoEntity {
    QString eciId;
    QString eciTitle;
    // "#" followed by six hexadecimal digits.
    QString eciColorHex;

    friend bool operator==(const EventKitCalendarInfoEntity&, const EventKitCalendarInfoEntity&) = default;
};
