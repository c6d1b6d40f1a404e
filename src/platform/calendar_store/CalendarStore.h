#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>

#include <exception>
#include <optional>
#include <string>

typedef struct _ESourceRegistry ESourceRegistry;
typedef struct _ECalClient ECalClient;
typedef struct _ICalTimezone ICalTimezone;

// Authorisation answers for reading and writing events, numbered as the rest of the program
// expects them.
namespace CalendarAuthorizationStatus {
inline constexpr int notDetermined = 0;
inline constexpr int restricted = 1;
inline constexpr int denied = 2;
inline constexpr int fullAccess = 3;
inline constexpr int writeOnly = 4;
} // namespace CalendarAuthorizationStatus

// An account of the calendar store: an online account (collection) or the parent source such as
// "On This Computer".
struct CalendarStoreSource {
    QString identifier;
    QString title;
    QString type;

    friend bool operator==(const CalendarStoreSource&, const CalendarStoreSource&) = default;
};

struct CalendarStoreCalendar {
    QString identifier;
    QString title;
    // As EDS keeps it, normally "#rrggbb"; empty when the calendar has none.
    QString color;
    // The EDS backend: "local", "caldav", "webcal", "google", "contacts", ...
    QString type;
    bool writable = false;
    CalendarStoreSource source;

    friend bool operator==(const CalendarStoreCalendar&, const CalendarStoreCalendar&) = default;
};

enum class CalendarStoreFrequency { daily, weekly, monthly, yearly, other };

struct CalendarStoreRecurrenceRule {
    CalendarStoreFrequency frequency = CalendarStoreFrequency::daily;
    int interval = 1;
    // 1 = Sunday ... 7 = Saturday.
    QList<int> daysOfTheWeek;
    QList<int> daysOfTheMonth;

    friend bool operator==(const CalendarStoreRecurrenceRule&, const CalendarStoreRecurrenceRule&) = default;
};

// One event, or one occurrence of a repeating event, as read from or written to the store.
struct CalendarStoreEvent {
    // The iCalendar UID; the same for every occurrence of a series. Empty for an event not saved yet.
    QString eventIdentifier;
    QString calendarItemIdentifier;
    // The RECURRENCE-ID of an occurrence of a series, as EDS writes it; empty for an event that
    // does not repeat and for a series taken as a whole.
    QString occurrenceIdentifier;
    QString calendarIdentifier;
    QString title;
    QString notes;
    std::optional<QString> location;
    std::optional<QString> url;
    QDateTime startDate;
    // Exclusive; the day after the last one for all-day events.
    QDateTime endDate;
    bool isAllDay = false;
    // An occurrence carries the rules of its series.
    QList<CalendarStoreRecurrenceRule> recurrenceRules;
    // The program's own link from the event to a task, kept in an X-TOLVANE-TASK property that
    // other programs carry along unread; empty when the event is linked to nothing.
    QString taskLink;

    bool hasRecurrenceRules() const { return !recurrenceRules.isEmpty(); }
};

// The name of the property that carries CalendarStoreEvent::taskLink.
inline constexpr char calendarStoreTaskLinkProperty[] = "X-TOLVANE-TASK";

// Which events a save or a removal touches when the event repeats.
enum class CalendarStoreSpan { thisEvent, futureEvents };

// The store refused a read, a save or a removal; what() is EDS's own explanation.
class CalendarStoreError : public std::exception {
public:
    explicit CalendarStoreError(QString description)
        : m_description(std::move(description))
        , m_what(m_description.toStdString())
    {
    }
    const QString& localizedDescription() const { return m_description; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    QString m_description;
    std::string m_what;
};

// The desktop's calendar store: the Evolution Data Server behind the session bus, the same
// calendars and accounts GNOME Calendar and Evolution show.
//
// The object owns the connection to the EDS source registry. The registry serves its D-Bus
// traffic on the GLib main context that is current where it is created, so a CalendarStore must
// be constructed on the GUI thread (whose Qt event loop iterates that context); once built, every
// operation may be called from any thread, and the blocking ones should be. Connecting happens
// once, in the constructor: a store that could not reach EDS stays unreachable for the life of
// the object, and its reads come back empty.
//
// There is no permission prompt on the desktop: the user's calendars are readable whenever EDS
// answers, so access is full when the registry connected and denied when it did not.
//
// Times: one zone throughout, the one Qt shows (it follows TZ): all-day events read as its
// midnights, floating times read in it, and new events are written in it (TZID and VTIMEZONE),
// so that their rules mean the weekday, day and hour the user chose. Times with a zone or in UTC
// read as the instant they name.
class CalendarStore {
public:
    // The one instance the application composes with, created on first use; the first call must
    // come from the GUI thread.
    static CalendarStore& shared();

    CalendarStore();
    ~CalendarStore();
    CalendarStore(const CalendarStore&) = delete;
    CalendarStore& operator=(const CalendarStore&) = delete;

    // CalendarAuthorizationStatus::fullAccess when the registry connected, denied otherwise.
    int authorizationStatus() const;
    // Nothing can be granted beyond what the session allows: true exactly when access is full.
    bool requestFullAccessToEvents();

    // Why EDS could not be reached; empty when it was.
    const QString& connectionError() const { return m_connectionError; }

    // The enabled event calendars, in the registry's order.
    QList<CalendarStoreCalendar> calendars() const;
    std::optional<CalendarStoreCalendar> calendar(const QString& identifier) const;
    // Where new events go unless the user chose otherwise.
    std::optional<CalendarStoreCalendar> defaultCalendar() const;

    // Every occurrence that overlaps [start, end) in the given calendars, calendar by calendar.
    // Occurrences edited on their own are read in their edited form; those called off
    // (STATUS:CANCELLED) are left out.
    QList<CalendarStoreEvent> events(
        const QDateTime& start, const QDateTime& end, const QStringList& calendarIdentifiers) const;
    // The occurrences of one event that overlap [start, end), wherever edits moved them; read
    // from the series itself, so a stale time index cannot hide one.
    QList<CalendarStoreEvent> occurrences(const QString& calendarIdentifier, const QString& eventIdentifier,
        const QDateTime& start, const QDateTime& end) const;
    // The event, or for a series its first occurrence as the series stands, searched in every
    // calendar.
    std::optional<CalendarStoreEvent> event(const QString& eventIdentifier) const;

    // Creates the event when it has no identifier yet (and fills in its identifiers), otherwise
    // writes it over the stored one. For an occurrence of a series, thisEvent keeps the change to
    // that occurrence, unless its rules differ from the series', which then changes the series
    // itself; futureEvents writes the series. Throws CalendarStoreError.
    void save(CalendarStoreEvent& event, CalendarStoreSpan span) const;
    // For an occurrence of a series, thisEvent removes only it and futureEvents ends the series
    // before it; an event that does not repeat, or a series taken as a whole, goes entirely.
    // Throws CalendarStoreError.
    void remove(const CalendarStoreEvent& event, CalendarStoreSpan span) const;

    // Every component of the event uid in the calendar (a series with its edited occurrences) as
    // an iCalendar text, the way an undo keeps it; empty when the calendar holds no such event.
    // Throws CalendarStoreError.
    QByteArray eventSnapshot(const QString& calendarIdentifier, const QString& uid) const;
    // Puts the event back as snapshot has it; an empty snapshot removes it. Throws
    // CalendarStoreError.
    void restoreEvent(const QString& calendarIdentifier, const QString& uid, const QByteArray& snapshot) const;
    // Whether two snapshots hold the same event, whatever the stamps of when they were written.
    static bool sameSnapshot(const QByteArray& a, const QByteArray& b);

    // A calendar "On This Computer"; for setting up, tools and tests. Throws CalendarStoreError.
    void addLocalCalendar(const QString& identifier, const QString& title, const QString& color) const;
    // Takes the calendar out of every list and read; its file stays.
    void disableCalendar(const QString& identifier) const;
    // Adds the time zones and events of an iCalendar text to the calendar, as an import does.
    // Returns the number of events added. Throws CalendarStoreError.
    int importCalendarData(const QString& calendarIdentifier, const QByteArray& icalendar) const;

    // A connected client for the calendar, kept for the life of the store; nullptr when the
    // calendar cannot be opened (why goes to *error). Blocks while the calendar opens.
    ECalClient* client(const QString& calendarIdentifier, QString* error = nullptr) const;
    // The source registry, for watching it on the GUI thread; nullptr when EDS was unreachable.
    ESourceRegistry* registry() const { return m_registry; }
    // The EDS query for the occurrences overlapping [start, end), with the margin reads use.
    QByteArray rangeQuery(const QDateTime& start, const QDateTime& end) const;

private:
    ECalClient* requireClient(const QString& calendarIdentifier) const;

    ESourceRegistry* m_registry = nullptr;
    // The thread whose main context delivers the registry's signals.
    QThread* m_registryThread = nullptr;
    // libical's own, never freed.
    ICalTimezone* m_zone = nullptr;
    QByteArray m_zoneLocation;
    QString m_connectionError;
    mutable QMutex m_clientsMutex;
    mutable QHash<QString, ECalClient*> m_clients;
};
