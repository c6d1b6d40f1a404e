#pragma once

#include <QFuture>
#include <QObject>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
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
// called.
template <typename Work, typename Done> void runAsync(QObject* receiver, Work&& work, Done&& done)
{
    QtConcurrent::run(screenThreadPool(), std::forward<Work>(work)).then(receiver, std::forward<Done>(done));
}
