#pragma once

#include "login/SupportRepository.h"

#include <memory>

// The help form's one use case. Synchronous: run it off the GUI thread.
struct SupportApplication {
    std::shared_ptr<SupportRepository> repository;

    // Refuses a blank message locally; sends the rest without surrounding white space.
    LoginResultEntity sendSupportMessage(const QString& message) const;
};
