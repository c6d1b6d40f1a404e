#pragma once

#include "platform/Clock.h"

class SystemClock final : public Clock {
public:
    QDateTime now() const override;
};
