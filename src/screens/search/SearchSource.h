#pragma once

#include "search/SearchIndex.h"
#include "tasks/TasksApplicationFactory.h"

#include <QDate>
#include <QObject>

#include <memory>

class AppServices;
class Clock;
class EventKitStoring;
class MeetingsApplication;

// What search looks through, read through the same applications the workspaces use (local
// stores or the backend, whichever the account has) off the GUI thread, and read again each
// time search opens so that it finds what was changed since. The index is kept in memory only.
class SearchSource final : public QObject {
    Q_OBJECT

public:
    // The days whose daily tasks and meets are searched: the months the schedule can show.
    struct Range {
        QDate from;
        QDate to;
        static Range around(const QDate& today) { return {today.addMonths(-3), today.addMonths(3)}; }
    };

    SearchSource(const AppServices& services, QObject* parent = nullptr, std::shared_ptr<const Clock> clock = nullptr,
        std::shared_ptr<EventKitStoring> eventStore = nullptr);

    // Starts reading everything again; one already under way is followed by another.
    void refresh();
    bool isLoading() const { return m_isLoading; }
    // The last index read; empty before the first one.
    const std::shared_ptr<SearchIndex>& index() const { return m_index; }

    // Projects, lists, tasks, the logbook and the daily tasks of range, as one user's
    // applications answer. Blocking.
    static QList<SearchItem> taskItems(
        const TasksApplicationFactory::Applications& apps, const QUuid& userId, const Range& range);
    // The meets of range that meetings reads. Blocking.
    static QList<SearchItem> meetItems(const MeetingsApplication& meetings, const Range& range);

Q_SIGNALS:
    // A new index is ready.
    void loaded();

private:
    const AppServices& m_services;
    std::shared_ptr<const Clock> m_clock;
    std::shared_ptr<EventKitStoring> m_eventStore;
    std::shared_ptr<SearchIndex> m_index = std::make_shared<SearchIndex>();
    bool m_isLoading = false;
    bool m_isStale = false;
};
