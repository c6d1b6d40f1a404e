#pragma once

#include "login/LoginResultEntity.h"

class SupportRepository {
public:
    virtual ~SupportRepository() = default;
    virtual LoginResultEntity sendSupportMessage(const QString& message) = 0;
};
