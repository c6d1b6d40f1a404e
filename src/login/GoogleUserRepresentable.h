#pragma once

#include "login/GoogleProfileRepresentable.h"

#include <QString>

#include <memory>
#include <optional>

// A signed-in Google user as the account code needs to see it.
class GoogleUserRepresentable {
public:
    virtual ~GoogleUserRepresentable() = default;
    virtual std::optional<QString> userID() const = 0;
    virtual std::shared_ptr<const GoogleProfileRepresentable> profile() const = 0;
};
