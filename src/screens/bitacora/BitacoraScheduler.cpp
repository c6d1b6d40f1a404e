#include "screens/bitacora/BitacoraScheduler.h"

#include <QHash>
#include <QPointer>
#include <QTimer>

namespace {

class TimerScheduler final : public BitacoraScheduler {
public:
    Handle schedule(std::chrono::milliseconds delay, QObject* context, std::function<void()> action) override
    {
        const Handle handle = ++m_lastHandle;
        auto* timer = new QTimer(context);
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, context, [this, handle, timer, action = std::move(action)] {
            m_timers.remove(handle);
            timer->deleteLater();
            action();
        });
        m_timers.insert(handle, timer);
        timer->start(delay);
        return handle;
    }

    void cancel(Handle handle) override
    {
        if (QPointer<QTimer> timer = m_timers.take(handle))
            delete timer;
    }

private:
    Handle m_lastHandle = 0;
    QHash<Handle, QPointer<QTimer>> m_timers;
};

} // namespace

std::shared_ptr<BitacoraScheduler> BitacoraScheduler::timers()
{
    return std::make_shared<TimerScheduler>();
}
