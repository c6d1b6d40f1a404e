#pragma once

#include "login/LoginResultEntity.h"
#include "login/UserEntity.h"

class UserRepository {
public:
    virtual ~UserRepository() = default;
    virtual LoginResultEntity getCurrentUser() = 0;
    virtual LoginResultEntity saveUser(const UserEntity& user) = 0;
    virtual LoginResultEntity deleteUser() = 0;
};
