#pragma once

#include "networking/APIClient.h"

#include <QUrl>

#include <memory>

// An API client for a fake backend (or for nothing at all) with a fixed bearer token and the
// network log off.
inline APIClient backendClient(const QUrl& baseURL, const QString& token)
{
    struct FixedToken final : AuthTokenProvider {
        QString value;
        QString token() override { return value; }
    };
    auto provider = std::make_shared<FixedToken>();
    provider->value = token;
    return APIClient(baseURL, provider, UrlSession::shared(), NetworkLogger(false, std::nullopt, nullptr));
}
