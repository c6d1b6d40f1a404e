#pragma once

#include <QFuture>
#include <QObject>
#include <QtConcurrent/QtConcurrentRun>

#include <utility>

// Runs work (a use case, a repository call: anything that may block) on the global thread
// pool and hands its result to done on receiver's thread. When receiver is destroyed first,
// done is not called.
template <typename Work, typename Done> void runAsync(QObject* receiver, Work&& work, Done&& done)
{
    QtConcurrent::run(std::forward<Work>(work)).then(receiver, std::forward<Done>(done));
}
