#include "screens/common/ErrorConsoleStore.h"

#include "platform/SystemClock.h"

#include <QMutexLocker>
#include <QStringList>

#include <algorithm>
#include <vector>

ErrorConsoleStore& ErrorConsoleStore::shared()
{
    static ErrorConsoleStore store(UserDefaults::standard(), std::make_shared<SystemClock>());
    return store;
}

ErrorConsoleStore::ErrorConsoleStore(UserDefaults defaults, std::shared_ptr<const Clock> clock)
    : m_defaults(std::move(defaults))
    , m_clock(std::move(clock))
{
}

void ErrorConsoleStore::appendLine(const QString& text)
{
    if (!m_defaults.boolValue(isEnabledKey))
        return;
    const QMutexLocker locker(&m_queue);
    m_entries.push_back({m_clock->now(), text});
    while (m_entries.size() > maxLines)
        m_entries.pop_front();
}

QString ErrorConsoleStore::consoleText() const
{
    std::vector<Entry> entries;
    {
        const QMutexLocker locker(&m_queue);
        entries.assign(m_entries.begin(), m_entries.end());
    }
    // Appends from several threads may reach the lock out of clock order.
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.date < b.date; });
    const auto first = entries.size() > maxLines ? entries.end() - maxLines : entries.begin();

    QStringList lines;
    for (auto entry = first; entry != entries.end(); ++entry) {
        lines.append(QLatin1Char('[') + entry->date.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
            + QStringLiteral("] ") + entry->text);
    }
    return lines.join(QLatin1Char('\n'));
}
