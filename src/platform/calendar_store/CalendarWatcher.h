#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

class CalendarStore;
struct CalendarStoreCalendar;

// What a screen watches: some calendars over a span of time.
struct CalendarWatchScope {
    QDateTime start;
    QDateTime end;
    QStringList calendarIdentifiers;

    bool isEmpty() const { return calendarIdentifiers.isEmpty() || !(start < end); }
    bool covers(const QDate& day) const;

    // The scope to watch for showing day: the current one while it still covers the day with a
    // day to spare on each side and the calendars are the same (watches are costly to set up),
    // otherwise three weeks around the day.
    static CalendarWatchScope around(
        const QDate& day, const QStringList& calendarIdentifiers, const CalendarWatchScope& current);

    // The scope to watch for the alarms armed up to lastArmed: from today to a week past it, kept
    // while it still covers today and lastArmed's day with the same calendars. Empty without
    // alarms.
    static CalendarWatchScope untilAlarms(const QDate& today, const std::optional<QDateTime>& lastArmed,
        const QStringList& calendarIdentifiers, const CalendarWatchScope& current);

    friend bool operator==(const CalendarWatchScope&, const CalendarWatchScope&) = default;
};

// Tells a screen when what it shows may have changed behind its back: events of the watched
// calendars in the watched span, added, edited or removed by any program, and calendars added,
// removed, switched on or off or recoloured. Bursts (an import, a sync) come as one signal.
// Lives on the GUI thread.
class CalendarWatching : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // Watches scope from now on, in place of what was watched before; the same scope again
    // changes nothing.
    virtual void watch(const CalendarWatchScope& scope) = 0;
    virtual CalendarWatchScope scope() const = 0;

Q_SIGNALS:
    // Events of these calendars changed within the scope.
    void eventsChanged(const QStringList& calendarIdentifiers);
    void calendarsChanged();
};

// The calendar store's changes, from an ECalClientView per calendar on the watched span and the
// source registry's signals. Both deliver on the GLib main context of the GUI thread; the
// calendars open on a worker thread first, as opening blocks.
class CalendarStoreWatcher final : public CalendarWatching {
    Q_OBJECT

public:
    // How long a burst of changes is gathered before it is told.
    static constexpr int settleMilliseconds = 50;

    explicit CalendarStoreWatcher(CalendarStore& store, QObject* parent = nullptr);
    ~CalendarStoreWatcher() override;

    void watch(const CalendarWatchScope& scope) override;
    CalendarWatchScope scope() const override { return m_scope; }
    // The calendars whose views are running, for tests.
    QStringList watchedCalendars() const;

    // Called from the store's signals on the GUI thread.
    void noteEvents(const QString& calendarIdentifier);
    void noteCalendars();

    struct View;
    struct Watch;

private:
    void stopViews();

    CalendarStore& m_store;
    CalendarWatchScope m_scope;
    std::shared_ptr<Watch> m_watch;
    QList<std::shared_ptr<View>> m_views;
    QSet<QString> m_changedCalendars;
    bool m_calendarsChanged = false;
    QList<CalendarStoreCalendar> m_knownCalendars;
    QTimer m_settle;
};
