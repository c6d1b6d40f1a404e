#pragma once

#include <QByteArray>

// Cryptographically secure random bytes.
class SecureRandom {
public:
    virtual ~SecureRandom() = default;
    // Fills the whole buffer; 0 on success, a non-zero status otherwise.
    virtual int copyBytes(QByteArray& buffer) = 0;
};
