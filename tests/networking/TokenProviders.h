#pragma once

#include "networking/AuthTokenProvider.h"

#include <QSemaphore>

#include <atomic>
#include <stdexcept>

// Answers with the same token every time and counts the calls.
class FixedTokenProvider final : public AuthTokenProvider {
public:
    explicit FixedTokenProvider(QString token)
        : m_token(std::move(token))
    {
    }

    QString token() override
    {
        ++calls;
        return m_token;
    }

    std::atomic<int> calls {0};

private:
    QString m_token;
};

// No signed-in user.
class ThrowingTokenProvider final : public AuthTokenProvider {
public:
    QString token() override { throw std::runtime_error("no signed-in user"); }
};

// Never answers until the test lets it go.
class SilentTokenProvider final : public AuthTokenProvider {
public:
    QString token() override
    {
        m_release.acquire();
        return QStringLiteral("too-late");
    }

    void release() { m_release.release(1000); }

private:
    QSemaphore m_release;
};
