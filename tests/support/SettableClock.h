#pragma once

#include "platform/Clock.h"

#include <QMutex>

// A clock that says what the test tells it.
class SettableClock final : public Clock {
public:
    explicit SettableClock(QDateTime now)
        : m_now(std::move(now))
    {
    }

    QDateTime now() const override
    {
        const QMutexLocker locker(&m_mutex);
        return m_now;
    }

    void set(QDateTime now)
    {
        const QMutexLocker locker(&m_mutex);
        m_now = std::move(now);
    }

    void advance(qint64 seconds) { set(now().addSecs(seconds)); }

private:
    mutable QMutex m_mutex;
    QDateTime m_now;
};
