#pragma once

#include "platform/SecureRandom.h"

// The kernel's random generator, through getrandom(2).
class SystemSecureRandom final : public SecureRandom {
public:
    int copyBytes(QByteArray& buffer) override;
};
