#pragma once

#include <QString>

#include <optional>

class GoogleProfileRepresentable {
public:
    virtual ~GoogleProfileRepresentable() = default;
    virtual std::optional<QString> givenName() const = 0;
    virtual std::optional<QString> familyName() const = 0;
    virtual QString name() const = 0;
    virtual QString email() const = 0;
};
