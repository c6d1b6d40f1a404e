#pragma once

#include "login/LoginResultEntity.h"
#include "login/UserEntity.h"

// The user's record on the backend. Success carries the UserEntity the backend answered.
class UserRegistrationRepository {
public:
    virtual ~UserRegistrationRepository() = default;
    virtual LoginResultEntity createUser(const UserEntity& user) = 0;
    virtual LoginResultEntity updateUser(const UserEntity& user) = 0;
};
