#include "login/RemoteSupportRepositoryImpl.h"

#include "networking/APIErrorMessageEnum.h"
#include "wire/login/SupportDTOs.h"

RemoteSupportRepositoryImpl::RemoteSupportRepositoryImpl(APIClient client)
    : client(std::move(client))
{
}

LoginResultEntity RemoteSupportRepositoryImpl::sendSupportMessage(const QString& message)
{
    try {
        client.post<SupportResponseDTO>(QStringLiteral("/v0/support"), SupportRequestDTO {message});
        return LoginResultEntity::success();
    } catch (const APIError& error) {
        return LoginResultEntity::infrastructureFailure(
            APIErrorMessageEnum::message(error, QStringLiteral("endpoint de soporte no encontrado")));
    }
}
