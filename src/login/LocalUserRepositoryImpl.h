#pragma once

#include "login/UserDatabase.h"
#include "login/UserRepository.h"

// The user as kept on this machine.
class LocalUserRepositoryImpl final : public UserRepository {
public:
    explicit LocalUserRepositoryImpl(UserDatabase database);

    LoginResultEntity getCurrentUser() override;
    LoginResultEntity saveUser(const UserEntity& user) override;
    LoginResultEntity deleteUser() override;

    const UserDatabase database;
};
