#pragma once

#include "platform/SecureRandom.h"

// Predictable "random" bytes (0, 1, 2, ... from a moving start), or a forced failure status.
class FakeSecureRandom final : public SecureRandom {
public:
    int copyBytes(QByteArray& buffer) override;

    int status = 0;

private:
    char m_next = 0;
};
