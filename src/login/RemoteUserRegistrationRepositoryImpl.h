#pragma once

#include "login/UserRegistrationRepository.h"
#include "networking/APIClient.h"

// "POST /v0/users" and "PUT /v0/users/<usrId>". A failure is printed for whoever runs the program
// from a terminal and answered as infrastructureMessage ("usuario no encontrado" for a 404).
class RemoteUserRegistrationRepositoryImpl final : public UserRegistrationRepository {
public:
    explicit RemoteUserRegistrationRepositoryImpl(APIClient client);

    LoginResultEntity createUser(const UserEntity& user) override;
    LoginResultEntity updateUser(const UserEntity& user) override;

    const APIClient client;
};
