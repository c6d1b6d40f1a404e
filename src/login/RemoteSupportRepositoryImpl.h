#pragma once

#include "login/SupportRepository.h"
#include "networking/APIClient.h"

// "POST /v0/support". The answer is checked, then dropped: the user only needs to know it arrived.
class RemoteSupportRepositoryImpl final : public SupportRepository {
public:
    explicit RemoteSupportRepositoryImpl(APIClient client);

    LoginResultEntity sendSupportMessage(const QString& message) override;

    const APIClient client;
};
