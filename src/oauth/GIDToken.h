#pragma once

#include <QDateTime>
#include <QString>

struct GIDToken {
    QString tokenString;
    // Invalid when the issuer gave none (refresh tokens).
    QDateTime expirationDate;

    friend bool operator==(const GIDToken&, const GIDToken&) = default;
};
