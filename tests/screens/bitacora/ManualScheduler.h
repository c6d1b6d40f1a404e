#pragma once

#include "screens/bitacora/BitacoraScheduler.h"

#include <QList>
#include <QPointer>

#include <algorithm>

// Delayed calls that happen when the test moves time on, in the order they fall due.
class ManualScheduler final : public BitacoraScheduler {
public:
    Handle schedule(std::chrono::milliseconds delay, QObject* context, std::function<void()> action) override
    {
        m_calls.append({++m_lastHandle, m_now + delay.count(), context, std::move(action)});
        return m_lastHandle;
    }

    void cancel(Handle handle) override
    {
        m_calls.removeIf([handle](const Call& call) { return call.handle == handle; });
    }

    void advance(std::chrono::milliseconds by)
    {
        const qint64 until = m_now + by.count();
        for (;;) {
            const auto next = std::min_element(m_calls.begin(), m_calls.end(),
                [](const Call& a, const Call& b) { return a.due < b.due || (a.due == b.due && a.handle < b.handle); });
            if (next == m_calls.end() || next->due > until)
                break;
            const Call call = *next;
            m_calls.erase(next);
            m_now = call.due;
            if (call.context)
                call.action();
        }
        m_now = until;
    }

private:
    struct Call {
        Handle handle;
        qint64 due;
        QPointer<QObject> context;
        std::function<void()> action;
    };

    qint64 m_now = 0;
    Handle m_lastHandle = 0;
    QList<Call> m_calls;
};
