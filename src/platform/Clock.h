#pragma once

#include <QDateTime>

// Where "now" comes from; the program uses SystemClock, tests a clock they can set.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
};
