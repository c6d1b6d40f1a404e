#include "login/RemoteUserRegistrationRepositoryImpl.h"

#include "networking/APIErrorMessageEnum.h"
#include "wire/login/UserDTOs.h"

#include <QTextStream>

namespace {

LoginResultEntity registered(const UserResponseDTO& response)
{
    return LoginResultEntity::success(UserEntity {
        response.usrId, response.usrFirstName, response.usrLastName, response.usrEmail, response.usrIsGoogleAccount});
}

LoginResultEntity failed(const QString& path, const APIError& error)
{
    QTextStream(stdout) << "Fallo el endpoint " << path << ": " << error.debugDescription() << Qt::endl;
    return LoginResultEntity::infrastructureFailure(
        APIErrorMessageEnum::message(error, QStringLiteral("usuario no encontrado")));
}

} // namespace

RemoteUserRegistrationRepositoryImpl::RemoteUserRegistrationRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

LoginResultEntity RemoteUserRegistrationRepositoryImpl::createUser(const UserEntity& user)
{
    const QString path = QStringLiteral("/v0/users");
    try {
        return registered(client.post<UserResponseDTO>(
            path, UserProfileRequestDTO {user.usrFirstName, user.usrLastName, user.usrEmail}));
    } catch (const APIError& error) {
        return failed(path, error);
    }
}

LoginResultEntity RemoteUserRegistrationRepositoryImpl::updateUser(const UserEntity& user)
{
    // The backend's identifiers need no escaping; the client takes the path as it is.
    const QString path = QStringLiteral("/v0/users/") + user.usrId;
    try {
        return registered(client.put<UserResponseDTO>(
            path, UserProfileRequestDTO {user.usrFirstName, user.usrLastName, user.usrEmail}));
    } catch (const APIError& error) {
        return failed(path, error);
    }
}
