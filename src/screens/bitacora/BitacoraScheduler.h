#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

// Delayed calls for the logbook rows: the autosave after the last key and the end of the saved
// mark. The program uses Qt timers; tests move time by hand, so that "one second after the last
// change" is checked exactly and without waiting.
class BitacoraScheduler {
public:
    using Handle = quint64;

    virtual ~BitacoraScheduler() = default;

    // Calls action on the GUI thread once delay has passed, unless cancel(handle) came first or
    // context was destroyed meanwhile.
    virtual Handle schedule(std::chrono::milliseconds delay, QObject* context, std::function<void()> action) = 0;
    virtual void cancel(Handle handle) = 0;

    // Over single-shot QTimers.
    static std::shared_ptr<BitacoraScheduler> timers();
};
