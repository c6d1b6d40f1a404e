#include "networking/WithTimeout.h"

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace {

// Busy-waits for ready() up to limit. A race is usually decided within microseconds (a cached
// token), and putting a thread to sleep and waking it costs more than the whole wait.
template <typename Ready> bool spinUntil(Ready ready, std::chrono::microseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    for (int round = 0;; ++round) {
        if (ready())
            return true;
        if ((round & 7) == 7 && std::chrono::steady_clock::now() >= deadline)
            return false;
        // Yielding rather than pausing: on a busy machine the thread we wait for may need this core.
        std::this_thread::yield();
    }
}

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
        const bool needsWorker = m_available < static_cast<int>(m_queue.size());
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
        ++m_available;
        for (;;) {
            if (!m_wakeUp.wait_for(lock, idleLifetime, [this] { return !m_queue.empty(); })) {
                --m_available;
                return;
            }
            --m_available;
            std::function<void()> task = std::move(m_queue.front());
            m_queue.pop_front();
            lock.unlock();
            task();
            task = nullptr;
            lock.lock();
            ++m_available;
        }
    }

    static constexpr std::chrono::seconds idleLifetime {30};

    std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    std::deque<std::function<void()>> m_queue;
    // Workers spinning or waiting for a task.
    int m_available = 0;
};

struct Race {
    std::atomic<bool> done = false;
    std::mutex mutex;
    std::condition_variable finished;
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

constexpr std::chrono::microseconds callerSpin {50};

bool race(double seconds, std::function<void(std::stop_token)> task)
{
    const std::chrono::nanoseconds limit = checkedNanoseconds(seconds);
    auto state = std::make_shared<Race>();
    auto stop = std::make_shared<std::stop_source>();

    WorkerPool::instance().post([state, stop, task = std::move(task)] {
        task(stop->get_token());
        state->done.store(true, std::memory_order_release);
        // Taking the lock orders this with a caller that is about to sleep: it sees done or is woken.
        const std::lock_guard lock(state->mutex);
        state->finished.notify_all();
    });

    const auto isDone = [&] { return state->done.load(std::memory_order_acquire); };
    if (spinUntil(isDone,
            std::min<std::chrono::microseconds>(
                callerSpin, std::chrono::duration_cast<std::chrono::microseconds>(limit))))
        return true;
    std::unique_lock lock(state->mutex);
    // Limits beyond a few centuries would overflow the clock's time points; they never come anyway.
    constexpr std::chrono::nanoseconds forever = std::chrono::hours(24 * 365 * 100);
    if (limit >= forever)
        state->finished.wait(lock, isDone);
    else if (!state->finished.wait_for(lock, limit, isDone)) {
        lock.unlock();
        stop->request_stop();
        return false;
    }
    return true;
}

} // namespace WithTimeoutDetail
