#pragma once

#include <QtGlobal>

#include <atomic>
#include <functional>

// What a long export or import reports while it runs and how it is asked to stop. The work runs
// off the GUI thread: progress is called on that thread, cancel() may be called from any thread.
class TransferControl {
public:
    using Progress = std::function<void(qint64 done, qint64 total)>;

    TransferControl() = default;
    explicit TransferControl(Progress progress)
        : m_progress(std::move(progress))
    {
    }

    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }
    void report(qint64 done, qint64 total) const
    {
        if (m_progress)
            m_progress(done, total);
    }

private:
    Progress m_progress;
    std::atomic<bool> m_cancelled = false;
};
