#pragma once

#include "platform/Clock.h"
#include "platform/UserDefaults.h"

#include <QDateTime>
#include <QMutex>
#include <QString>

#include <deque>
#include <memory>

// The information console: the newest failures the screens met, kept in memory while the
// setting "ErrorConsoleStore.isEnabled" is on. Safe to use from any thread.
class ErrorConsoleStore {
public:
    static constexpr int maxLines = 500;
    static inline const QString isEnabledKey = QStringLiteral("ErrorConsoleStore.isEnabled");

    // The process's console, created on first use over the standard user defaults.
    static ErrorConsoleStore& shared();

    ErrorConsoleStore(UserDefaults defaults, std::shared_ptr<const Clock> clock);

    // Records one line when the console is enabled; drops it otherwise.
    void appendLine(const QString& text);
    // "[yyyy-MM-dd HH:mm:ss] text" lines, oldest first, joined by "\n" with none at the end.
    QString consoleText() const;

private:
    struct Entry {
        QDateTime date;
        QString text;
    };

    UserDefaults m_defaults;
    std::shared_ptr<const Clock> m_clock;
    mutable QMutex m_queue;
    std::deque<Entry> m_entries;
};
