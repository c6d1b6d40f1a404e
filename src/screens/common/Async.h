#pragma once

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <optional>
#include <type_traits>
#include <utility>

// The threads the screens' work runs on. The work waits on disks, the keyring, the calendar store
// and the network rather than on the processor, so there are more threads than cores: a slow
// request must not hold up a save. Never destroyed, so that quitting does not wait for a request
// still in flight.
inline QThreadPool* screenThreadPool()
{
    static QThreadPool* pool = [] {
        auto* created = new QThreadPool;
        created->setMaxThreadCount(std::max(8, QThread::idealThreadCount()));
        return created;
    }();
    return pool;
}

// Runs work (a use case, a repository call: anything that may block) on the screens' threads and
// hands its result to done on receiver's thread. When receiver is destroyed first, done is not
// called; nor is it when work throws.
template <typename Work, typename Done> void runAsync(QObject* receiver, Work&& work, Done&& done)
{
    using Result = std::invoke_result_t<std::decay_t<Work>>;
    if (QThread::currentThread() != receiver->thread()) {
        QtConcurrent::run(screenThreadPool(), std::forward<Work>(work)).then(receiver, std::forward<Done>(done));
        return;
    }
    // Not QFuture::then(receiver): it asserts when receiver is gone by the time the work ends (a
    // window closed while a request is out). The watcher is receiver's child and goes with it.
    auto* watcher = new QFutureWatcher<Result>(receiver);
    QObject::connect(
        watcher, &QFutureWatcherBase::finished, watcher, [watcher, done = std::forward<Done>(done)]() mutable {
            watcher->deleteLater();
            QFuture<Result> future = watcher->future();
            if constexpr (std::is_void_v<Result>) {
                try {
                    future.waitForFinished();
                } catch (...) {
                    return;
                }
                done();
            } else {
                std::optional<Result> result;
                try {
                    result.emplace(future.result());
                } catch (...) {
                    return;
                }
                done(std::move(*result));
            }
        });
    watcher->setFuture(QtConcurrent::run(screenThreadPool(), std::forward<Work>(work)));
}
