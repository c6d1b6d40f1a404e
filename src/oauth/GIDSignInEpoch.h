#pragma once

#include <QMutex>

#include <functional>

// Counts sign-outs, so that work begun before one cannot outlive it. A refresh or a sign-in takes
// the current epoch when it starts and may store what it obtained only while that epoch lasts:
// storing and ending the epoch exclude each other, so once a sign-out has deleted the stored session
// nothing begun earlier can write it back.
class GIDSignInEpoch {
public:
    using Epoch = quint64;

    Epoch current() const;

    // Runs keep while epoch is still the current one and answers true; answers false and runs
    // nothing once a sign-out has ended it.
    bool whileCurrent(Epoch epoch, const std::function<void()>& keep);

    // Ends the current epoch, running forget before anything of the next one can run.
    void end(const std::function<void()>& forget);

private:
    mutable QMutex m_mutex;
    Epoch m_epoch = 0;
};
