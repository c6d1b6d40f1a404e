#include "platform/calendar_store/CalendarStore.h"

#include "platform/Logging.h"
#include "platform/calendar_store/CalendarText.h"

#include <QCoreApplication>
#include <QSet>
#include <QThread>
#include <QTimeZone>
#include <QUuid>

#include <algorithm>
#include <future>
#include <libecal/libecal.h>
#include <libedataserver/libedataserver.h>
#include <memory>
#include <tuple>
#include <vector>

namespace {

// How long a calendar backend may take to come online when a client first connects.
constexpr guint32 connectSeconds = 15;
// How long a new calendar may take to reach the calendar factory: 2 s.
constexpr int newSourceRetries = 20;
constexpr unsigned long newSourceRetryMilliseconds = 100;

// EDS matches a range against floating and all-day times, and against times in zones far from
// the reader's, in ways that can miss or add an occurrence near either edge. Reads ask for this
// much more on each side and then keep exactly the occurrences that overlap the range by
// instant: more than any two zones are apart (26 hours, from UTC-12 to UTC+14), and the hour
// an occurrence after a clock change may be misplaced by. Every series with an occurrence in
// the wider range costs a round trip to the store, so it is kept no wider than that.
constexpr qint64 marginSeconds = 28 * 3600;

// A read expands a calendar's series on up to this many threads, one per so many series.
constexpr qsizetype maxThreadsPerCalendar = 8;
constexpr qsizetype seriesPerThread = 2;

struct GObjectRelease {
    void operator()(gpointer object) const
    {
        if (object)
            g_object_unref(object);
    }
};
template <typename T> using GRef = std::unique_ptr<T, GObjectRelease>;

struct GFreeRelease {
    void operator()(gpointer memory) const { g_free(memory); }
};
using GText = std::unique_ptr<gchar, GFreeRelease>;

QString fromUtf8(const gchar* text)
{
    return text ? QString::fromUtf8(text) : QString();
}

QString takeText(gchar* text)
{
    const GText owned(text);
    return fromUtf8(owned.get());
}

// Throws the error's message, or fallback when EDS gave none.
[[noreturn]] void raise(GError* error, const char* fallback)
{
    const QString message = error && error->message ? QString::fromUtf8(error->message) : QString::fromUtf8(fallback);
    g_clear_error(&error);
    throw CalendarStoreError(message);
}

const char* const weekdayTokens[] = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

ICalTimezone* utcZone()
{
    return i_cal_timezone_get_utc_timezone();
}

// The zone the program shows times in: Qt's, which follows TZ, where EDS's own idea of the
// local zone (e_cal_util_get_system_timezone) reads /etc/localtime only. All-day and floating
// times are read in it and new events are written in it. Returned with the name EDS knows it
// by, as its range queries take zones by name.
std::pair<ICalTimezone*, QByteArray> shownZone()
{
    const QByteArray id = QTimeZone::systemTimeZoneId();
    if (ICalTimezone* zone = i_cal_timezone_get_builtin_timezone(id.constData()))
        return {zone, zone == utcZone() ? QByteArrayLiteral("UTC") : id};
    const QTimeZone qtZone = QTimeZone::systemTimeZone();
    if (!qtZone.hasDaylightTime() && qtZone.standardTimeOffset(QDateTime::currentDateTimeUtc()) == 0)
        return {utcZone(), QByteArrayLiteral("UTC")};
    // A zone libical does not know by name (a POSIX TZ rule, say): the system's is the best guess.
    qCWarning(lcCalendar) << "no calendar zone named" << id << "; using the system's";
    const GText location(e_cal_util_get_system_timezone_location());
    ICalTimezone* system = location ? i_cal_timezone_get_builtin_timezone(location.get()) : nullptr;
    if (!system)
        return {utcZone(), QByteArrayLiteral("UTC")};
    return {system, QByteArray(location.get())};
}

// Whether an occurrence overlaps [start, end); one of no duration counts where it starts.
bool overlaps(const CalendarStoreEvent& event, const QDateTime& start, const QDateTime& end)
{
    if (event.endDate <= event.startDate)
        return start <= event.startDate && event.startDate < end;
    return event.startDate < end && start < event.endDate;
}

// --- Reading -----------------------------------------------------------------------------------

QDateTime localMidnight(const ICalTime* date)
{
    return QDateTime(QDate(i_cal_time_get_year(date), i_cal_time_get_month(date), i_cal_time_get_day(date)),
        QTime(0, 0), Qt::LocalTime);
}

QDateTime floatingLocal(const ICalTime* time)
{
    return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
        QTime(i_cal_time_get_hour(time), i_cal_time_get_minute(time), i_cal_time_get_second(time)), Qt::LocalTime);
}

// A time's digits read as if they were UTC, in seconds since 1970.
qint64 wallSeconds(const ICalTime* time)
{
    return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
        QTime(i_cal_time_get_hour(time), i_cal_time_get_minute(time), i_cal_time_get_second(time)), Qt::UTC)
        .toSecsSinceEpoch();
}

// How far zone's clocks are ahead of UTC at an instant; libical gets this direction right.
qint64 offsetAt(ICalTimezone* zone, qint64 instant)
{
    const GRef<ICalTime> local(i_cal_time_new_from_timet_with_zone(instant, FALSE, zone));
    return wallSeconds(local.get()) - instant;
}

// The instant a wall-clock time in zone names, read as RFC 5545 (3.3.5) says and as the online
// calendars read it: a time in the hour skipped when clocks go forward with the offset before
// the change, a time in the hour that happens twice when they go back as its first time.
// libical's own conversion puts the first an hour early and takes the second time of the two.
qint64 instantInZone(const ICalTime* time, ICalTimezone* zone)
{
    const qint64 wall = wallSeconds(time);
    if (zone == utcZone())
        return wall;
    // No zone changes its offset twice within two days.
    const qint64 before = offsetAt(zone, wall - 24 * 3600);
    const qint64 after = offsetAt(zone, wall + 24 * 3600);
    // The larger offset gives the earlier instant: the first of an hour that happens twice.
    for (const qint64 offset : {qMax(before, after), qMin(before, after)}) {
        if (offsetAt(zone, wall - offset) == offset)
            return wall - offset;
    }
    return wall - before;
}

// The instant a time names. A zone attached to the time wins; otherwise the TZID, resolved by
// the calendar; otherwise the time floats in the local zone.
QDateTime instantOf(const ICalTime* time, ECalClient* client, const QString& tzid)
{
    if (i_cal_time_is_date(time))
        return localMidnight(time);
    if (i_cal_time_is_utc(time))
        return QDateTime::fromSecsSinceEpoch(i_cal_time_as_timet(time), Qt::UTC);
    ICalTimezone* zone = i_cal_time_get_timezone(time);
    if (!zone && !tzid.isEmpty() && client) {
        // Owned by the client's cache.
        ICalTimezone* resolved = nullptr;
        if (e_cal_client_get_timezone_sync(client, tzid.toUtf8().constData(), &resolved, nullptr, nullptr))
            zone = resolved;
    }
    if (!zone)
        return floatingLocal(time);
    return QDateTime::fromSecsSinceEpoch(instantInZone(time, zone), Qt::UTC);
}

QString tzidOf(ICalComponent* component, ICalPropertyKind kind)
{
    GRef<ICalProperty> property(i_cal_component_get_first_property(component, kind));
    if (!property)
        return {};
    GRef<ICalParameter> parameter(i_cal_property_get_first_parameter(property.get(), I_CAL_TZID_PARAMETER));
    return parameter ? fromUtf8(i_cal_parameter_get_tzid(parameter.get())) : QString();
}

std::optional<QString> textProperty(ICalComponent* component, ICalPropertyKind kind)
{
    GRef<ICalProperty> property(i_cal_component_get_first_property(component, kind));
    if (!property)
        return std::nullopt;
    const char* value = kind == I_CAL_URL_PROPERTY ? i_cal_property_get_url(property.get())
        : kind == I_CAL_LOCATION_PROPERTY          ? i_cal_property_get_location(property.get())
                                                   : i_cal_property_get_description(property.get());
    return fromUtf8(value);
}

QList<CalendarStoreRecurrenceRule> rulesOf(ICalComponent* component)
{
    QList<CalendarStoreRecurrenceRule> rules;
    for (ICalProperty* raw = i_cal_component_get_first_property(component, I_CAL_RRULE_PROPERTY); raw;
         raw = i_cal_component_get_next_property(component, I_CAL_RRULE_PROPERTY)) {
        GRef<ICalProperty> property(raw);
        GRef<ICalRecurrence> recurrence(i_cal_property_get_rrule(property.get()));
        if (!recurrence)
            continue;
        CalendarStoreRecurrenceRule rule;
        switch (i_cal_recurrence_get_freq(recurrence.get())) {
        case I_CAL_DAILY_RECURRENCE:
            rule.frequency = CalendarStoreFrequency::daily;
            break;
        case I_CAL_WEEKLY_RECURRENCE:
            rule.frequency = CalendarStoreFrequency::weekly;
            break;
        case I_CAL_MONTHLY_RECURRENCE:
            rule.frequency = CalendarStoreFrequency::monthly;
            break;
        case I_CAL_YEARLY_RECURRENCE:
            rule.frequency = CalendarStoreFrequency::yearly;
            break;
        default:
            rule.frequency = CalendarStoreFrequency::other;
        }
        rule.interval = qMax(1, i_cal_recurrence_get_interval(recurrence.get()));
        for (int i = 0; i < I_CAL_RECURRENCE_ARRAY_MAX; ++i) {
            const short day = i_cal_recurrence_get_by_day(recurrence.get(), i);
            if (day == I_CAL_RECURRENCE_ARRAY_MAX)
                break;
            rule.daysOfTheWeek.append(int(i_cal_recurrence_day_day_of_week(day)));
        }
        for (int i = 0; i < I_CAL_RECURRENCE_ARRAY_MAX; ++i) {
            const short day = i_cal_recurrence_get_by_month_day(recurrence.get(), i);
            if (day == I_CAL_RECURRENCE_ARRAY_MAX)
                break;
            rule.daysOfTheMonth.append(day);
        }
        rules.append(rule);
    }
    return rules;
}

// The parts of an event that do not depend on which occurrence it is.
void readCommon(ICalComponent* component, CalendarStoreEvent& event)
{
    event.eventIdentifier = fromUtf8(i_cal_component_get_uid(component));
    event.calendarItemIdentifier = event.eventIdentifier;
    event.title = fromUtf8(i_cal_component_get_summary(component));
    event.notes = textProperty(component, I_CAL_DESCRIPTION_PROPERTY).value_or(QString());
    event.location = textProperty(component, I_CAL_LOCATION_PROPERTY);
    event.url = textProperty(component, I_CAL_URL_PROPERTY);
    event.taskLink = takeText(e_cal_util_component_dup_x_property(component, calendarStoreTaskLinkProperty));
}

// The event as its own DTSTART and DTEND (or DURATION) say.
CalendarStoreEvent readStored(ICalComponent* component, ECalClient* client, const QString& calendarIdentifier)
{
    CalendarStoreEvent event;
    event.calendarIdentifier = calendarIdentifier;
    readCommon(component, event);
    event.recurrenceRules = rulesOf(component);
    GRef<ICalTime> start(i_cal_component_get_dtstart(component));
    GRef<ICalTime> end(i_cal_component_get_dtend(component));
    event.isAllDay = start && i_cal_time_is_date(start.get());
    event.startDate = start ? instantOf(start.get(), client, tzidOf(component, I_CAL_DTSTART_PROPERTY)) : QDateTime();
    if (end && !i_cal_time_is_null_time(end.get())) {
        event.endDate = instantOf(end.get(), client, tzidOf(component, I_CAL_DTEND_PROPERTY));
    } else {
        event.endDate = event.isAllDay ? event.startDate.addDays(1) : event.startDate;
    }
    return event;
}

// Servers export an occurrence the organiser called off as an edited occurrence with STATUS
// CANCELLED; it is not on anyone's schedule (and must not ring an alarm).
bool isCancelled(ICalComponent* component)
{
    return i_cal_component_get_status(component) == I_CAL_STATUS_CANCELLED;
}

struct Expansion {
    ECalClient* client;
    QString calendarIdentifier;
    QList<CalendarStoreRecurrenceRule> seriesRules;
    bool isSeries;
    QList<CalendarStoreEvent>* out;
    // Only occurrences overlapping this range are kept; EDS is asked for a wider one.
    QDateTime start;
    QDateTime end;
    // For a series whose rules keep DTSTART's time of day: that time, and the exact length of
    // the first occurrence, which every occurrence has (RFC 5545 3.8.5.3).
    std::optional<QTime> ruleTime = std::nullopt;
    qint64 seconds = 0;
};

// The expansion of master: libical's recurrence iterator, after an occurrence in the hour
// skipped when clocks go forward, puts the next one an hour late (03:30 for 02:30 the day after
// the change), and EDS gives each occurrence the wall-clock length of the first, not its exact
// one. Where the rules cannot change the time of day, it is put back.
Expansion expansionOf(ECalClient* client, ICalComponent* master, const QString& calendarIdentifier, bool isSeries,
    QList<CalendarStoreEvent>* out, const QDateTime& start, const QDateTime& end)
{
    Expansion expansion {client, calendarIdentifier, rulesOf(master), isSeries, out, start, end};
    GRef<ICalTime> dtstart(i_cal_component_get_dtstart(master));
    if (!dtstart || i_cal_time_is_date(dtstart.get()) || i_cal_time_is_utc(dtstart.get())
        || e_cal_util_component_has_property(master, I_CAL_RDATE_PROPERTY)
        || !e_cal_util_component_has_property(master, I_CAL_RRULE_PROPERTY))
        return expansion;
    for (ICalProperty* raw = i_cal_component_get_first_property(master, I_CAL_RRULE_PROPERTY); raw;
         raw = i_cal_component_get_next_property(master, I_CAL_RRULE_PROPERTY)) {
        GRef<ICalProperty> property(raw);
        GRef<ICalRecurrence> rule(i_cal_property_get_rrule(property.get()));
        const ICalRecurrenceFrequency frequency = rule ? i_cal_recurrence_get_freq(rule.get()) : I_CAL_NO_RECURRENCE;
        if (!rule || frequency < I_CAL_DAILY_RECURRENCE || frequency > I_CAL_YEARLY_RECURRENCE
            || i_cal_recurrence_get_by_hour(rule.get(), 0) != I_CAL_RECURRENCE_ARRAY_MAX
            || i_cal_recurrence_get_by_minute(rule.get(), 0) != I_CAL_RECURRENCE_ARRAY_MAX
            || i_cal_recurrence_get_by_second(rule.get(), 0) != I_CAL_RECURRENCE_ARRAY_MAX)
            return expansion;
    }
    const CalendarStoreEvent first = readStored(master, client, calendarIdentifier);
    expansion.ruleTime = QTime(
        i_cal_time_get_hour(dtstart.get()), i_cal_time_get_minute(dtstart.get()), i_cal_time_get_second(dtstart.get()));
    expansion.seconds = first.startDate.secsTo(first.endDate);
    return expansion;
}

gboolean collectInstance(ICalComponent* component, ICalTime* start, ICalTime* end, gpointer data,
    GCancellable* /*cancellable*/, GError** /*error*/)
{
    auto* expansion = static_cast<Expansion*>(data);
    if (isCancelled(component))
        return TRUE;
    CalendarStoreEvent event;
    event.calendarIdentifier = expansion->calendarIdentifier;
    readCommon(component, event);
    event.isAllDay = i_cal_time_is_date(start);
    if (expansion->isSeries) {
        event.recurrenceRules = expansion->seriesRules;
        // Expanded here, the series itself comes with each occurrence's times; the store's
        // expansion names an occurrence by its start as the rules make it, and so does this one.
        event.occurrenceIdentifier = e_cal_util_component_is_instance(component)
            ? takeText(e_cal_util_component_get_recurid_as_string(component))
            : takeText(i_cal_time_as_ical_string(start));
    }
    // Occurrences the rules make (edited ones, on their own, carry no rules) start at the
    // series' time of day.
    if (expansion->ruleTime && e_cal_util_component_has_property(component, I_CAL_RRULE_PROPERTY)) {
        GRef<ICalTime> ruled(i_cal_time_clone(start));
        i_cal_time_set_time(
            ruled.get(), expansion->ruleTime->hour(), expansion->ruleTime->minute(), expansion->ruleTime->second());
        event.startDate = instantOf(ruled.get(), expansion->client, {});
        event.endDate = event.startDate.addSecs(expansion->seconds);
    } else {
        event.startDate = instantOf(start, expansion->client, {});
        event.endDate = instantOf(end, expansion->client, {});
    }
    if (overlaps(event, expansion->start, expansion->end))
        expansion->out->append(std::move(event));
    return TRUE;
}

// The series of a calendar that have occurrences edited on their own: only those need the
// store's expansion, which asks it for each series' edited occurrences, one round trip per
// series. Unknown (nullopt) when the store cannot tell, and then every series goes the long way.
std::optional<QSet<QByteArray>> seriesWithEditedOccurrences(ECalClient* client)
{
    GSList* objects = nullptr;
    // Matches series and edited occurrences, without the store expanding anything.
    if (!e_cal_client_get_object_list_sync(client, "(has-recurrences?)", &objects, nullptr, nullptr))
        return std::nullopt;
    QSet<QByteArray> edited;
    for (GSList* item = objects; item; item = item->next) {
        auto* component = static_cast<ICalComponent*>(item->data);
        if (e_cal_util_component_is_instance(component))
            edited.insert(QByteArray(i_cal_component_get_uid(component)));
    }
    g_slist_free_full(objects, g_object_unref);
    return edited;
}

// Expands a series that has no occurrence edited on its own from the series alone, as the
// store would, without a round trip to it.
void expandHere(ECalClient* client, ICalComponent* master, time_t from, time_t to, Expansion& expansion)
{
    const GRef<ICalTime> start(i_cal_time_new_from_timet_with_zone(from, FALSE, utcZone()));
    const GRef<ICalTime> end(i_cal_time_new_from_timet_with_zone(to, FALSE, utcZone()));
    e_cal_recur_generate_instances_sync(master, start.get(), end.get(), collectInstance, &expansion,
        e_cal_client_tzlookup_cb, client, e_cal_client_get_default_timezone(client), nullptr, nullptr);
}

QByteArray isoUtc(const QDateTime& instant)
{
    return instant.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1();
}

// --- Writing -----------------------------------------------------------------------------------

// A day, for all-day events, or the instant's wall-clock time in zone. Rules are evaluated in
// DTSTART's zone, so a series written in the user's zone keeps its weekday, day of the month and
// hour across daylight-saving changes, as the user chose them.
ICalTime* newTime(const QDateTime& instant, bool allDay, ICalTimezone* zone)
{
    if (allDay) {
        const QDate day = instant.toLocalTime().date();
        ICalTime* date = i_cal_time_new_null_time();
        i_cal_time_set_date(date, day.year(), day.month(), day.day());
        i_cal_time_set_is_date(date, TRUE);
        return date;
    }
    ICalTime* time = i_cal_time_new_from_timet_with_zone(instant.toSecsSinceEpoch(), FALSE, zone);
    // libical converts to the zone's wall clock but leaves the time marked as UTC.
    i_cal_time_set_timezone(time, zone);
    return time;
}

void removeAll(ICalComponent* component, ICalPropertyKind kind)
{
    while (ICalProperty* property = i_cal_component_get_first_property(component, kind)) {
        i_cal_component_remove_property(component, property);
        g_object_unref(property);
    }
}

void setText(ICalComponent* component, ICalPropertyKind kind, const std::optional<QString>& text)
{
    removeAll(component, kind);
    if (!text || text->isEmpty())
        return;
    const QByteArray utf8 = text->toUtf8();
    ICalProperty* property = kind == I_CAL_SUMMARY_PROPERTY ? i_cal_property_new_summary(utf8.constData())
        : kind == I_CAL_DESCRIPTION_PROPERTY                ? i_cal_property_new_description(utf8.constData())
        : kind == I_CAL_LOCATION_PROPERTY                   ? i_cal_property_new_location(utf8.constData())
                                                            : i_cal_property_new_url(utf8.constData());
    i_cal_component_take_property(component, property);
}

QByteArray ruleText(const CalendarStoreRecurrenceRule& rule)
{
    static const char* const names[] = {"DAILY", "WEEKLY", "MONTHLY", "YEARLY", "DAILY"};
    QByteArray text
        = QByteArray("FREQ=") + names[int(rule.frequency)] + ";INTERVAL=" + QByteArray::number(rule.interval);
    QByteArrayList days;
    for (int day : rule.daysOfTheWeek) {
        if (day >= 1 && day <= 7)
            days.append(weekdayTokens[day - 1]);
    }
    if (!days.isEmpty())
        text += ";BYDAY=" + days.join(',');
    QByteArrayList monthDays;
    for (int day : rule.daysOfTheMonth)
        monthDays.append(QByteArray::number(day));
    if (!monthDays.isEmpty())
        text += ";BYMONTHDAY=" + monthDays.join(',');
    return text;
}

void setRules(ICalComponent* component, const QList<CalendarStoreRecurrenceRule>& rules)
{
    removeAll(component, I_CAL_RRULE_PROPERTY);
    for (const CalendarStoreRecurrenceRule& rule : rules) {
        GRef<ICalRecurrence> recurrence(i_cal_recurrence_new_from_string(ruleText(rule).constData()));
        i_cal_component_take_property(component, i_cal_property_new_rrule(recurrence.get()));
    }
}

void stampModified(ICalComponent* component)
{
    GRef<ICalTime> now(i_cal_time_new_current_with_zone(utcZone()));
    removeAll(component, I_CAL_DTSTAMP_PROPERTY);
    i_cal_component_take_property(component, i_cal_property_new_dtstamp(now.get()));
    removeAll(component, I_CAL_LASTMODIFIED_PROPERTY);
    i_cal_component_take_property(component, i_cal_property_new_lastmodified(now.get()));
}

// The calendar must hold the VTIMEZONE of every TZID its events name.
void addZone(ECalClient* client, ICalTimezone* zone)
{
    if (zone == utcZone())
        return;
    GError* error = nullptr;
    if (!e_cal_client_add_timezone_sync(client, zone, nullptr, &error))
        raise(error, "The calendar did not take the time zone");
}

// Title, notes, place, link and times of event onto component, times in zone; rules only when
// asked.
void writeFields(ICalComponent* component, const CalendarStoreEvent& event, bool withRules, ICalTimezone* zone)
{
    setText(component, I_CAL_SUMMARY_PROPERTY, event.title);
    setText(component, I_CAL_DESCRIPTION_PROPERTY, event.notes);
    setText(component, I_CAL_LOCATION_PROPERTY, event.location);
    setText(component, I_CAL_URL_PROPERTY, event.url);
    // No value takes the property away.
    e_cal_util_component_set_x_property(component, calendarStoreTaskLinkProperty,
        event.taskLink.isEmpty() ? nullptr : event.taskLink.toUtf8().constData());
    removeAll(component, I_CAL_DTSTART_PROPERTY);
    removeAll(component, I_CAL_DTEND_PROPERTY);
    removeAll(component, I_CAL_DURATION_PROPERTY);
    GRef<ICalTime> start(newTime(event.startDate, event.isAllDay, zone));
    GRef<ICalTime> end(newTime(event.endDate, event.isAllDay, zone));
    // These setters also name the time's zone in a TZID parameter.
    i_cal_component_set_dtstart(component, start.get());
    i_cal_component_set_dtend(component, end.get());
    if (withRules)
        setRules(component, event.recurrenceRules);
    stampModified(component);
}

GRef<ICalComponent> storedObject(ECalClient* client, const QString& uid, const QString& rid)
{
    ICalComponent* component = nullptr;
    GError* error = nullptr;
    const QByteArray ridText = rid.toUtf8();
    if (!e_cal_client_get_object_sync(client, uid.toUtf8().constData(), rid.isEmpty() ? nullptr : ridText.constData(),
            &component, nullptr, &error))
        raise(error, "The event is not in its calendar");
    return GRef<ICalComponent>(component);
}

// An occurrence of master as a component of its own, RECURRENCE-ID set, no rules: one edited
// before comes from the calendar; for one that never was, EDS 3.46 cannot build it from the
// RECURRENCE-ID text when the series is in a named zone (it reads the text as UTC and finds no
// such occurrence), so it is built here from the series, as the desktop's other clients do.
GRef<ICalComponent> occurrenceObject(ECalClient* client, ICalComponent* master, const QString& rid)
{
    ICalComponent* stored = nullptr;
    if (e_cal_client_get_object_sync(
            client, i_cal_component_get_uid(master), rid.toUtf8().constData(), &stored, nullptr, nullptr))
        return GRef<ICalComponent>(stored);

    GRef<ICalComponent> occurrence(i_cal_component_clone(master));
    for (ICalPropertyKind kind : {I_CAL_RRULE_PROPERTY, I_CAL_RDATE_PROPERTY, I_CAL_EXDATE_PROPERTY,
             I_CAL_EXRULE_PROPERTY, I_CAL_RECURRENCEID_PROPERTY})
        removeAll(occurrence.get(), kind);
    // The text is the occurrence's original start as DTSTART writes it: UTC, a date, or the
    // wall clock in DTSTART's zone.
    GRef<ICalTime> time(i_cal_time_new_from_string(rid.toUtf8().constData()));
    if (!time || i_cal_time_is_null_time(time.get()))
        throw CalendarStoreError(QStringLiteral("The event is not in its calendar"));
    ICalProperty* property = i_cal_property_new_recurrenceid(time.get());
    const QString tzid = tzidOf(master, I_CAL_DTSTART_PROPERTY);
    if (!tzid.isEmpty() && !i_cal_time_is_utc(time.get()) && !i_cal_time_is_date(time.get()))
        i_cal_property_take_parameter(property, i_cal_parameter_new_tzid(tzid.toUtf8().constData()));
    i_cal_component_take_property(occurrence.get(), property);
    return occurrence;
}

void modify(ECalClient* client, ICalComponent* component, ECalObjModType mod)
{
    GError* error = nullptr;
    if (!e_cal_client_modify_object_sync(client, component, mod, E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
        raise(error, "The calendar did not save the event");
}

void removeObject(ECalClient* client, const QString& uid, const QString& rid, ECalObjModType mod)
{
    GError* error = nullptr;
    const QByteArray ridText = rid.toUtf8();
    if (!e_cal_client_remove_object_sync(client, uid.toUtf8().constData(),
            rid.isEmpty() ? nullptr : ridText.constData(), mod, E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
        raise(error, "The calendar did not remove the event");
}

// --- Calendars ---------------------------------------------------------------------------------

QString backendName(ESource* source, const char* extension)
{
    if (!e_source_has_extension(source, extension))
        return {};
    return fromUtf8(e_source_backend_get_backend_name(E_SOURCE_BACKEND(e_source_get_extension(source, extension))));
}

CalendarStoreCalendar describe(ESourceRegistry* registry, ESource* source)
{
    CalendarStoreCalendar calendar;
    calendar.identifier = fromUtf8(e_source_get_uid(source));
    calendar.title = takeText(e_source_dup_display_name(source));
    auto* selectable = E_SOURCE_SELECTABLE(e_source_get_extension(source, E_SOURCE_EXTENSION_CALENDAR));
    calendar.color = takeText(e_source_selectable_dup_color(selectable));
    calendar.type = backendName(source, E_SOURCE_EXTENSION_CALENDAR);
    // Birthdays and weather are generated from elsewhere; EDS refuses writes to them.
    calendar.writable = calendar.type != QLatin1String("contacts") && calendar.type != QLatin1String("weather");

    if (GRef<ESource> collection {e_source_registry_find_extension(registry, source, E_SOURCE_EXTENSION_COLLECTION)}) {
        calendar.source
            = {fromUtf8(e_source_get_uid(collection.get())), takeText(e_source_dup_display_name(collection.get())),
                backendName(collection.get(), E_SOURCE_EXTENSION_COLLECTION)};
    } else if (const gchar* parentUid = e_source_get_parent(source);
               GRef<ESource> parent {parentUid ? e_source_registry_ref_source(registry, parentUid) : nullptr}) {
        calendar.source = {fromUtf8(parentUid), takeText(e_source_dup_display_name(parent.get())), calendar.type};
    } else {
        calendar.source = {calendar.identifier, calendar.title, calendar.type};
    }
    return calendar;
}

} // namespace

QList<CalendarStoreEvent> calendarStoreEventsFromText(const QByteArray& icalendar, const QString& calendarIdentifier)
{
    QList<CalendarStoreEvent> events;
    const GRef<ICalComponent> top(i_cal_component_new_from_string(icalendar.constData()));
    if (!top)
        return events;
    if (i_cal_component_isa(top.get()) == I_CAL_VEVENT_COMPONENT) {
        if (!isCancelled(top.get()))
            events.append(readStored(top.get(), nullptr, calendarIdentifier));
        return events;
    }
    for (ICalComponent* raw = i_cal_component_get_first_component(top.get(), I_CAL_VEVENT_COMPONENT); raw;
         raw = i_cal_component_get_next_component(top.get(), I_CAL_VEVENT_COMPONENT)) {
        const GRef<ICalComponent> component(raw);
        if (!isCancelled(component.get()))
            events.append(readStored(component.get(), nullptr, calendarIdentifier));
    }
    return events;
}

CalendarStore& CalendarStore::shared()
{
    // Never destroyed: EDS keeps its registry for the whole process anyway, and releasing it
    // after the event loop and GLib's main context are gone would only risk a crash at exit.
    static CalendarStore* store = new CalendarStore;
    return *store;
}

CalendarStore::CalendarStore()
{
    if (QCoreApplication* application = QCoreApplication::instance();
        application && QThread::currentThread() != application->thread()) {
        qCWarning(lcCalendar) << "calendar store created off the GUI thread; EDS calls will stall";
    }
    std::tie(m_zone, m_zoneLocation) = shownZone();
    m_registryThread = QThread::currentThread();
    GError* error = nullptr;
    m_registry = e_source_registry_new_sync(nullptr, &error);
    if (!m_registry) {
        m_connectionError = error ? QString::fromUtf8(error->message) : QStringLiteral("unknown error");
        qCWarning(lcCalendar) << "cannot reach the calendar store:" << m_connectionError;
    }
    g_clear_error(&error);
}

CalendarStore::~CalendarStore()
{
    for (ECalClient* client : std::as_const(m_clients))
        g_object_unref(client);
    g_clear_object(&m_registry);
}

int CalendarStore::authorizationStatus() const
{
    return m_registry ? CalendarAuthorizationStatus::fullAccess : CalendarAuthorizationStatus::denied;
}

bool CalendarStore::requestFullAccessToEvents()
{
    return authorizationStatus() == CalendarAuthorizationStatus::fullAccess;
}

QList<CalendarStoreCalendar> CalendarStore::calendars() const
{
    QList<CalendarStoreCalendar> calendars;
    if (!m_registry)
        return calendars;
    GList* sources = e_source_registry_list_enabled(m_registry, E_SOURCE_EXTENSION_CALENDAR);
    for (GList* item = sources; item; item = item->next)
        calendars.append(describe(m_registry, E_SOURCE(item->data)));
    g_list_free_full(sources, g_object_unref);
    return calendars;
}

std::optional<CalendarStoreCalendar> CalendarStore::calendar(const QString& identifier) const
{
    if (!m_registry || identifier.isEmpty())
        return std::nullopt;
    GRef<ESource> source(e_source_registry_ref_source(m_registry, identifier.toUtf8().constData()));
    if (!source || !e_source_has_extension(source.get(), E_SOURCE_EXTENSION_CALENDAR)
        || !e_source_registry_check_enabled(m_registry, source.get()))
        return std::nullopt;
    return describe(m_registry, source.get());
}

std::optional<CalendarStoreCalendar> CalendarStore::defaultCalendar() const
{
    if (!m_registry)
        return std::nullopt;
    GRef<ESource> source(e_source_registry_ref_default_calendar(m_registry));
    if (!source)
        return std::nullopt;
    return calendar(fromUtf8(e_source_get_uid(source.get())));
}

ECalClient* CalendarStore::client(const QString& calendarIdentifier, QString* why) const
{
    if (!m_registry) {
        if (why)
            *why = m_connectionError;
        return nullptr;
    }
    {
        const QMutexLocker locker(&m_clientsMutex);
        if (ECalClient* known = m_clients.value(calendarIdentifier))
            return known;
    }
    // Connecting can take up to its time-out (a calendar being removed, a busy factory): it runs
    // outside the lock, so one slow calendar never holds up the reads of the others.
    GRef<ESource> source(e_source_registry_ref_source(m_registry, calendarIdentifier.toUtf8().constData()));
    if (!source) {
        if (why)
            *why = QStringLiteral("No calendar %1").arg(calendarIdentifier);
        return nullptr;
    }
    // The calendar's "connected" status comes through the registry thread's main context. On that
    // thread nothing could deliver it while this call blocks, so the calendar opens at once there
    // (a remote one from its offline copy, going online by itself) instead of after the time-out.
    const guint32 waitSeconds = QThread::currentThread() == m_registryThread ? guint32(-1) : connectSeconds;
    GError* error = nullptr;
    EClient* connected
        = e_cal_client_connect_sync(source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, waitSeconds, nullptr, &error);
    // A calendar just added (by this program or another) reaches the calendar factory a moment
    // after the registry that told us of it; until then the factory knows no such source.
    for (int attempt = 0;
         !connected && attempt < newSourceRetries && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND);
         ++attempt) {
        QThread::msleep(newSourceRetryMilliseconds);
        // One being removed instead is not waited for.
        if (!GRef<ESource>(e_source_registry_ref_source(m_registry, calendarIdentifier.toUtf8().constData())))
            break;
        g_clear_error(&error);
        connected
            = e_cal_client_connect_sync(source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, waitSeconds, nullptr, &error);
    }
    if (!connected) {
        const QString message = error ? fromUtf8(error->message) : QStringLiteral("cannot open the calendar");
        g_clear_error(&error);
        qCWarning(lcCalendar) << "cannot open calendar" << calendarIdentifier << message;
        if (why)
            *why = message;
        return nullptr;
    }
    auto* calClient = E_CAL_CLIENT(connected);
    // All-day and floating times then expand in the zone shown rather than in UTC.
    e_cal_client_set_default_timezone(calClient, m_zone);
    const QMutexLocker locker(&m_clientsMutex);
    if (ECalClient* known = m_clients.value(calendarIdentifier)) {
        // Another thread connected meanwhile: keep one client per calendar.
        g_object_unref(calClient);
        return known;
    }
    m_clients.insert(calendarIdentifier, calClient);
    return calClient;
}

ECalClient* CalendarStore::requireClient(const QString& calendarIdentifier) const
{
    QString why;
    ECalClient* found = client(calendarIdentifier, &why);
    if (!found)
        throw CalendarStoreError(why);
    return found;
}

QByteArray CalendarStore::rangeQuery(const QDateTime& start, const QDateTime& end) const
{
    // The third argument names the zone floating times are read in (UTC otherwise).
    return "(occur-in-time-range? (make-time \"" + isoUtc(start.addSecs(-marginSeconds)) + "\") (make-time \""
        + isoUtc(end.addSecs(marginSeconds)) + "\") \"" + m_zoneLocation + "\")";
}

QList<CalendarStoreEvent> CalendarStore::events(
    const QDateTime& start, const QDateTime& end, const QStringList& calendarIdentifiers) const
{
    QList<CalendarStoreEvent> all;
    if (!m_registry || !(start < end))
        return all;
    const QByteArray query = rangeQuery(start, end);
    const time_t from = start.toSecsSinceEpoch() - marginSeconds;
    const time_t to = end.toSecsSinceEpoch() + marginSeconds;
    // Each calendar has its own backend: asked one after another, a read would wait for the sum
    // of their answers; asked at once, for the slowest. Plain threads, not the pool, whose
    // threads may be the very ones waiting here.
    const auto readOne = [&](const QString& calendarIdentifier) {
        QList<CalendarStoreEvent> events;
        ECalClient* calClient = client(calendarIdentifier);
        if (!calClient)
            return events;
        GSList* objects = nullptr;
        GError* error = nullptr;
        std::future<std::optional<QSet<QByteArray>>> editedLater
            = std::async(std::launch::async, seriesWithEditedOccurrences, calClient);
        if (!e_cal_client_get_object_list_sync(calClient, query.constData(), &objects, nullptr, &error)) {
            qCWarning(lcCalendar) << "cannot read calendar" << calendarIdentifier << (error ? error->message : "");
            g_clear_error(&error);
            editedLater.wait();
            return events;
        }
        const std::optional<QSet<QByteArray>> edited = editedLater.get();
        // The range query may hand back a stale copy of an occurrence edited on its own (EDS
        // 3.46), so occurrences are never taken from it: each series is expanded from its
        // master, by the store when it has edited occurrences, which the store then brings in
        // by UID. An edited occurrence whose series has no other occurrence in range arrives
        // without its master and is read as is.
        QSet<QByteArray> masters;
        std::vector<ICalComponent*> components;
        qsizetype storeExpansions = 0;
        for (GSList* item = objects; item; item = item->next) {
            auto* component = static_cast<ICalComponent*>(item->data);
            components.push_back(component);
            if (!e_cal_util_component_has_property(component, I_CAL_RECURRENCEID_PROPERTY)) {
                const QByteArray uid(i_cal_component_get_uid(component));
                masters.insert(uid);
                if (e_cal_util_component_has_recurrences(component) && (!edited || edited->contains(uid)))
                    ++storeExpansions;
            }
        }
        const auto readSome = [&](qsizetype first, qsizetype last) {
            QList<CalendarStoreEvent> some;
            for (qsizetype index = first; index < last; ++index) {
                ICalComponent* component = components.at(std::size_t(index));
                const bool isOccurrence = e_cal_util_component_has_property(component, I_CAL_RECURRENCEID_PROPERTY);
                if (isOccurrence) {
                    if (masters.contains(QByteArray(i_cal_component_get_uid(component))) || isCancelled(component))
                        continue;
                    CalendarStoreEvent event = readStored(component, calClient, calendarIdentifier);
                    event.occurrenceIdentifier = takeText(e_cal_util_component_get_recurid_as_string(component));
                    if (overlaps(event, start, end)) {
                        if (GRef<ICalComponent> master {[&]() -> ICalComponent* {
                                ICalComponent* found = nullptr;
                                e_cal_client_get_object_sync(
                                    calClient, i_cal_component_get_uid(component), nullptr, &found, nullptr, nullptr);
                                return found;
                            }()})
                            event.recurrenceRules = rulesOf(master.get());
                        some.append(std::move(event));
                    }
                    continue;
                }
                Expansion expansion = expansionOf(calClient, component, calendarIdentifier,
                    e_cal_util_component_has_recurrences(component) != FALSE, &some, start, end);
                if (!expansion.isSeries && !expansion.seriesRules.isEmpty())
                    expansion.isSeries = true;
                if (expansion.isSeries && edited && !edited->contains(QByteArray(i_cal_component_get_uid(component))))
                    expandHere(calClient, component, from, to, expansion);
                else
                    e_cal_client_generate_instances_for_object_sync(
                        calClient, component, from, to, nullptr, collectInstance, &expansion);
            }
            return some;
        };
        // The client asks the store for each series' edited occurrences, a round trip per
        // series: on a calendar with many series those dominate a read, and overlap well.
        const qsizetype parts = std::clamp<qsizetype>(storeExpansions / seriesPerThread, 1, maxThreadsPerCalendar);
        const qsizetype size = qsizetype(components.size());
        std::vector<std::future<QList<CalendarStoreEvent>>> later;
        for (qsizetype part = 1; part < parts; ++part)
            later.push_back(std::async(std::launch::async, readSome, size * part / parts, size * (part + 1) / parts));
        events = readSome(0, size / parts);
        for (std::future<QList<CalendarStoreEvent>>& part : later)
            events.append(part.get());
        g_slist_free_full(objects, g_object_unref);
        return events;
    };
    std::vector<std::future<QList<CalendarStoreEvent>>> others;
    for (qsizetype i = 1; i < calendarIdentifiers.size(); ++i)
        others.push_back(std::async(std::launch::async, readOne, calendarIdentifiers.at(i)));
    if (!calendarIdentifiers.isEmpty())
        all = readOne(calendarIdentifiers.constFirst());
    // In the calendars' order, as when they were read one by one.
    for (std::future<QList<CalendarStoreEvent>>& other : others)
        all.append(other.get());
    return all;
}

QList<CalendarStoreEvent> CalendarStore::occurrences(const QString& calendarIdentifier, const QString& eventIdentifier,
    const QDateTime& start, const QDateTime& end) const
{
    QList<CalendarStoreEvent> found;
    ECalClient* calClient = client(calendarIdentifier);
    if (!calClient || eventIdentifier.isEmpty() || !(start < end))
        return found;
    ICalComponent* component = nullptr;
    if (!e_cal_client_get_object_sync(
            calClient, eventIdentifier.toUtf8().constData(), nullptr, &component, nullptr, nullptr))
        return found;
    const GRef<ICalComponent> master(component);
    Expansion expansion = expansionOf(calClient, component, calendarIdentifier,
        e_cal_util_component_has_recurrences(component) || e_cal_util_component_is_instance(component), &found, start,
        end);
    // Expanded over a window of a second or two, a series in a named zone yields nothing.
    e_cal_client_generate_instances_for_object_sync(calClient, component, start.toSecsSinceEpoch() - marginSeconds,
        end.toSecsSinceEpoch() + marginSeconds, nullptr, collectInstance, &expansion);
    return found;
}

std::optional<CalendarStoreEvent> CalendarStore::event(const QString& eventIdentifier) const
{
    if (!m_registry || eventIdentifier.isEmpty())
        return std::nullopt;
    const QByteArray uid = eventIdentifier.toUtf8();
    for (const CalendarStoreCalendar& calendar : calendars()) {
        ECalClient* calClient = client(calendar.identifier);
        if (!calClient)
            continue;
        ICalComponent* component = nullptr;
        if (!e_cal_client_get_object_sync(calClient, uid.constData(), nullptr, &component, nullptr, nullptr))
            continue;
        const GRef<ICalComponent> owned(component);
        return readStored(component, calClient, calendar.identifier);
    }
    return std::nullopt;
}

void CalendarStore::save(CalendarStoreEvent& event, CalendarStoreSpan span) const
{
    ECalClient* calClient = requireClient(event.calendarIdentifier);

    if (event.eventIdentifier.isEmpty()) {
        GRef<ICalComponent> component(i_cal_component_new_vevent());
        const QByteArray uid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUtf8();
        i_cal_component_set_uid(component.get(), uid.constData());
        writeFields(component.get(), event, true, m_zone);
        addZone(calClient, m_zone);
        gchar* createdUid = nullptr;
        GError* error = nullptr;
        if (!e_cal_client_create_object_sync(
                calClient, component.get(), E_CAL_OPERATION_FLAG_NONE, &createdUid, nullptr, &error))
            raise(error, "The calendar did not save the event");
        event.eventIdentifier = takeText(createdUid);
        if (event.eventIdentifier.isEmpty())
            event.eventIdentifier = QString::fromUtf8(uid);
        event.calendarItemIdentifier = event.eventIdentifier;
        event.occurrenceIdentifier.clear();
        return;
    }

    GRef<ICalComponent> master = storedObject(calClient, event.eventIdentifier, {});
    const bool ownChange = !event.occurrenceIdentifier.isEmpty() && span == CalendarStoreSpan::thisEvent
        && rulesOf(master.get()) == event.recurrenceRules;
    if (!ownChange) {
        // The series, or an event that does not repeat, written whole.
        writeFields(master.get(), event, true, m_zone);
        addZone(calClient, m_zone);
        modify(calClient, master.get(), E_CAL_OBJ_MOD_ALL);
        event.occurrenceIdentifier.clear();
        return;
    }

    // One occurrence edited on its own: a detached instance with the series' UID and the
    // occurrence's RECURRENCE-ID, carrying no rules of its own.
    GRef<ICalComponent> occurrence = occurrenceObject(calClient, master.get(), event.occurrenceIdentifier);
    removeAll(occurrence.get(), I_CAL_RRULE_PROPERTY);
    removeAll(occurrence.get(), I_CAL_RDATE_PROPERTY);
    removeAll(occurrence.get(), I_CAL_EXDATE_PROPERTY);
    removeAll(occurrence.get(), I_CAL_EXRULE_PROPERTY);
    writeFields(occurrence.get(), event, false, m_zone);
    addZone(calClient, m_zone);
    modify(calClient, occurrence.get(), E_CAL_OBJ_MOD_THIS);
}

void CalendarStore::remove(const CalendarStoreEvent& event, CalendarStoreSpan span) const
{
    ECalClient* calClient = requireClient(event.calendarIdentifier);
    if (event.occurrenceIdentifier.isEmpty()) {
        removeObject(calClient, event.eventIdentifier, {}, E_CAL_OBJ_MOD_ALL);
        return;
    }
    if (span == CalendarStoreSpan::thisEvent) {
        removeObject(calClient, event.eventIdentifier, event.occurrenceIdentifier, E_CAL_OBJ_MOD_THIS);
        return;
    }
    // EDS 3.46 splits a series cut with THIS_AND_FUTURE under a new UID and cuts zoned series at
    // the wrong instant, so the series is ended by its own UNTIL instead.
    GRef<ICalComponent> master = storedObject(calClient, event.eventIdentifier, {});
    const CalendarStoreEvent series = readStored(master.get(), calClient, event.calendarIdentifier);
    if (event.startDate <= series.startDate) {
        removeObject(calClient, event.eventIdentifier, {}, E_CAL_OBJ_MOD_ALL);
        return;
    }
    // UNTIL is in UTC whenever DTSTART names a zone.
    GRef<ICalTime> until(newTime(event.startDate.addSecs(-1), series.isAllDay, utcZone()));
    for (ICalProperty* raw = i_cal_component_get_first_property(master.get(), I_CAL_RRULE_PROPERTY); raw;
         raw = i_cal_component_get_next_property(master.get(), I_CAL_RRULE_PROPERTY)) {
        GRef<ICalProperty> property(raw);
        GRef<ICalRecurrence> recurrence(i_cal_property_get_rrule(property.get()));
        i_cal_recurrence_set_count(recurrence.get(), 0);
        i_cal_recurrence_set_until(recurrence.get(), until.get());
        i_cal_property_set_rrule(property.get(), recurrence.get());
    }
    stampModified(master.get());
    modify(calClient, master.get(), E_CAL_OBJ_MOD_ALL);
}

void CalendarStore::addLocalCalendar(const QString& identifier, const QString& title, const QString& color) const
{
    if (!m_registry)
        throw CalendarStoreError(m_connectionError);
    GError* error = nullptr;
    GRef<ESource> source(e_source_new_with_uid(identifier.toUtf8().constData(), nullptr, &error));
    if (!source)
        raise(error, "Cannot make the calendar");
    e_source_set_display_name(source.get(), title.toUtf8().constData());
    e_source_set_parent(source.get(), "local-stub");
    auto* extension = E_SOURCE_SELECTABLE(e_source_get_extension(source.get(), E_SOURCE_EXTENSION_CALENDAR));
    e_source_backend_set_backend_name(E_SOURCE_BACKEND(extension), "local");
    e_source_selectable_set_color(extension, color.toUtf8().constData());
    if (!e_source_registry_commit_source_sync(m_registry, source.get(), nullptr, &error))
        raise(error, "Cannot add the calendar");
}

void CalendarStore::disableCalendar(const QString& identifier) const
{
    if (!m_registry)
        return;
    GRef<ESource> source(e_source_registry_ref_source(m_registry, identifier.toUtf8().constData()));
    if (!source)
        return;
    // Removing a calendar whose backend is open races the calendar factory's status updates, and
    // the source registry of EDS 3.46 dies of it (every client then loses every calendar).
    // Disabled, the calendar is gone from every list and read, and its client stays valid for
    // any thread still holding it.
    e_source_set_enabled(source.get(), FALSE);
    GError* error = nullptr;
    if (!e_source_write_sync(source.get(), nullptr, &error)) {
        qCWarning(lcCalendar) << "cannot disable calendar" << identifier << (error ? error->message : "");
        g_clear_error(&error);
    }
}

QByteArray CalendarStore::eventSnapshot(const QString& calendarIdentifier, const QString& uid) const
{
    ECalClient* calClient = requireClient(calendarIdentifier);
    GSList* components = nullptr;
    GError* error = nullptr;
    if (!e_cal_client_get_objects_for_uid_sync(calClient, uid.toUtf8().constData(), &components, nullptr, &error)) {
        // Not there is an answer too: nothing to keep.
        if (g_error_matches(error, E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND)) {
            g_clear_error(&error);
            return {};
        }
        raise(error, "The event is not in its calendar");
    }
    if (!components)
        return {};
    GRef<ICalComponent> root(i_cal_component_new_vcalendar());
    for (GSList* item = components; item; item = item->next) {
        ICalComponent* component = e_cal_component_get_icalcomponent(E_CAL_COMPONENT(item->data));
        i_cal_component_take_component(root.get(), i_cal_component_clone(component));
    }
    g_slist_free_full(components, g_object_unref);
    gchar* text = i_cal_component_as_ical_string(root.get());
    QByteArray snapshot(text);
    g_free(text);
    return snapshot;
}

void CalendarStore::restoreEvent(
    const QString& calendarIdentifier, const QString& uid, const QByteArray& snapshot) const
{
    ECalClient* calClient = requireClient(calendarIdentifier);
    if (!eventSnapshot(calendarIdentifier, uid).isEmpty())
        removeObject(calClient, uid, QString(), E_CAL_OBJ_MOD_ALL);
    if (snapshot.isEmpty())
        return;
    GRef<ICalComponent> root(i_cal_parser_parse_string(snapshot.constData()));
    if (!root)
        throw CalendarStoreError(QStringLiteral("Not an iCalendar text"));
    GError* error = nullptr;
    if (!e_cal_client_receive_objects_sync(calClient, root.get(), E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
        raise(error, "The calendar did not save the event");
}

bool CalendarStore::sameSnapshot(const QByteArray& a, const QByteArray& b)
{
    // Stamps change with every write, including the one that puts an event back.
    const auto lines = [](const QByteArray& text) {
        QList<QByteArray> kept;
        for (const QByteArray& line : text.split('\n')) {
            const QByteArray trimmed = line.trimmed();
            if (!trimmed.startsWith("DTSTAMP") && !trimmed.startsWith("LAST-MODIFIED") && !trimmed.startsWith("CREATED")
                && !trimmed.startsWith("SEQUENCE") && !trimmed.isEmpty())
                kept.append(trimmed);
        }
        std::sort(kept.begin(), kept.end());
        return kept;
    };
    return lines(a) == lines(b);
}

int CalendarStore::importCalendarData(const QString& calendarIdentifier, const QByteArray& icalendar) const
{
    ECalClient* calClient = requireClient(calendarIdentifier);
    GRef<ICalComponent> root(i_cal_parser_parse_string(icalendar.constData()));
    if (!root || i_cal_component_isa(root.get()) != I_CAL_VCALENDAR_COMPONENT)
        throw CalendarStoreError(QStringLiteral("Not an iCalendar text"));
    int count = 0;
    for (ICalComponent* raw = i_cal_component_get_first_component(root.get(), I_CAL_VEVENT_COMPONENT); raw;
         raw = i_cal_component_get_next_component(root.get(), I_CAL_VEVENT_COMPONENT)) {
        g_object_unref(raw);
        ++count;
    }
    // Received as a publication, the way importers hand files to EDS: the calendar takes the
    // VTIMEZONEs along with the events and their edited occurrences.
    GError* error = nullptr;
    if (!e_cal_client_receive_objects_sync(calClient, root.get(), E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
        raise(error, "The calendar refused the events");
    return count;
}
