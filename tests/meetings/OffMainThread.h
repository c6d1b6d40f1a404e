#pragma once

#include <QCoreApplication>
#include <QThread>

#include <exception>
#include <optional>
#include <type_traits>

// Runs work on a thread of its own while this (the GUI) thread keeps the GLib main context
// turning, as in the application, where EDS is only ever called from workers. Called on the GUI
// thread itself, EDS waits out its whole connection time-out for a reply nobody dispatches.
template <typename Work> auto offMainThread(Work work) -> decltype(work())
{
    using Result = decltype(work());
    std::exception_ptr failure;
    std::conditional_t<std::is_void_v<Result>, bool, std::optional<Result>> result {};
    QThread* thread = QThread::create([&] {
        try {
            if constexpr (std::is_void_v<Result>)
                work();
            else
                result = work();
        } catch (...) {
            failure = std::current_exception();
        }
    });
    thread->start();
    while (!thread->wait(QDeadlineTimer(5)))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    delete thread;
    if (failure)
        std::rethrow_exception(failure);
    if constexpr (!std::is_void_v<Result>)
        return std::move(*result);
}
