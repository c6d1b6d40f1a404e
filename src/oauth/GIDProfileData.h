#pragma once

#include <QString>

#include <optional>

// Who signed in, as the ID token's claims tell it.
struct GIDProfileData {
    QString email;
    // The full name; may be empty when the account shares none.
    QString name;
    std::optional<QString> givenName;
    std::optional<QString> familyName;

    friend bool operator==(const GIDProfileData&, const GIDProfileData&) = default;
};
