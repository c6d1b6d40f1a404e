#include "networking/WithTimeout.h"

#include <QtGlobal>

#include <chrono>
#include <cmath>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace {

// Worker threads for the races. Starting a thread per race would cost more than a request on a
// warm connection, so idle workers wait for the next race. There is no upper bound: a worker whose
// operation never returns is lost to the pool, and the next race must not wait behind it.
class WorkerPool {
public:
    static WorkerPool& instance()
    {
        // Never destroyed: detached workers may still be waiting on it while the process exits.
        static WorkerPool* pool = new WorkerPool;
        return *pool;
    }

    void post(std::function<void()> task)
    {
        std::unique_lock lock(m_mutex);
        m_queue.push_back(std::move(task));
        const bool needsWorker = m_idle < static_cast<int>(m_queue.size());
        lock.unlock();
        if (needsWorker)
            std::thread([this] { work(); }).detach();
        else
            m_wakeUp.notify_one();
    }

private:
    void work()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            ++m_idle;
            const bool hasTask = m_wakeUp.wait_for(lock, idleLifetime, [this] { return !m_queue.empty(); });
            --m_idle;
            if (!hasTask)
                return;
            std::function<void()> task = std::move(m_queue.front());
            m_queue.pop_front();
            lock.unlock();
            task();
            task = nullptr;
            lock.lock();
        }
    }

    static constexpr std::chrono::seconds idleLifetime {30};

    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    std::deque<std::function<void()>> m_queue;
    int m_idle = 0;
};

struct Race {
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
};

std::chrono::nanoseconds checkedNanoseconds(double seconds)
{
    const double nanoseconds = seconds * 1e9;
    // 2^63 is the first value that no longer fits; NaN fails every comparison.
    if (!(nanoseconds >= 0.0) || !(nanoseconds < 9223372036854775808.0))
        qFatal("withTimeout: %g seconds is not a valid time limit", seconds);
    return std::chrono::nanoseconds(static_cast<std::int64_t>(nanoseconds));
}

} // namespace

namespace WithTimeoutDetail {

bool race(double seconds, std::function<void(std::stop_token)> task)
{
    const std::chrono::nanoseconds limit = checkedNanoseconds(seconds);
    auto state = std::make_shared<Race>();
    auto stop = std::make_shared<std::stop_source>();

    WorkerPool::instance().post([state, stop, task = std::move(task)] {
        task(stop->get_token());
        const std::lock_guard lock(state->mutex);
        state->done = true;
        state->finished.notify_all();
    });

    std::unique_lock lock(state->mutex);
    // Limits beyond a few centuries would overflow the clock's time points; they never come anyway.
    constexpr std::chrono::nanoseconds forever = std::chrono::hours(24 * 365 * 100);
    if (limit >= forever)
        state->finished.wait(lock, [&] { return state->done; });
    else if (!state->finished.wait_for(lock, limit, [&] { return state->done; })) {
        lock.unlock();
        stop->request_stop();
        return false;
    }
    return true;
}

} // namespace WithTimeoutDetail
