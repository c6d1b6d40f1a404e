#include "transfer/MeetsIcsExport.h"

#include "meetings/domain/MeetRepetition.h"

// The GObject wrapper of libical, as the calendar store uses it.
#define LIBICAL_GLIB_UNSTABLE_API 1
#include <libical-glib/libical-glib.h>

namespace {

// Owns one reference of a GObject.
template <typename T> struct Owned {
    T* object;
    explicit Owned(T* created)
        : object(created)
    {
    }
    ~Owned()
    {
        if (object)
            g_object_unref(object);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    T* get() const { return object; }
};

ICalTime* dateOf(const QDate& day)
{
    ICalTime* time = i_cal_time_new_null_time();
    i_cal_time_set_date(time, day.year(), day.month(), day.day());
    i_cal_time_set_is_date(time, TRUE);
    return time;
}

ICalTime* zonedTime(const QDateTime& instant, const QTimeZone& zone, ICalTimezone* icalZone)
{
    const QDateTime local = instant.toTimeZone(zone);
    ICalTime* time = i_cal_time_new_null_time();
    i_cal_time_set_date(time, local.date().year(), local.date().month(), local.date().day());
    i_cal_time_set_time(time, local.time().hour(), local.time().minute(), local.time().second());
    i_cal_time_set_timezone(time, icalZone);
    return time;
}

ICalTime* utcTime(const QDateTime& instant)
{
    const QDateTime utc = instant.toUTC();
    ICalTime* time = i_cal_time_new_null_time();
    i_cal_time_set_date(time, utc.date().year(), utc.date().month(), utc.date().day());
    i_cal_time_set_time(time, utc.time().hour(), utc.time().minute(), utc.time().second());
    i_cal_time_set_timezone(time, i_cal_timezone_get_utc_timezone());
    return time;
}

void take(ICalComponent* component, ICalProperty* property)
{
    i_cal_component_take_property(component, property);
}

// A repeating backend meet comes whole, at its first start: the backend keeps no exceptions, so
// its rule says exactly when it happens. A start the rule would not give is listed on its own, as
// readers differ on whether such a start counts.
void repeat(ICalComponent* event, const MeetEntity& meet, const QTimeZone& zone, ICalTimezone* icalZone)
{
    Owned<ICalRecurrence> rule(i_cal_recurrence_new_from_string(
        MeetRepetition::rule(meet.metRecurrenceFrequency, meet.metRecurringWeekdays).constData()));
    take(event, i_cal_property_new_rrule(rule.get()));
    if (MeetRepetition::ruleProducesStart(meet, zone))
        return;
    Owned<ICalTime> start(icalZone ? zonedTime(meet.metDate, zone, icalZone) : utcTime(meet.metDate));
    Owned<ICalDatetimeperiod> period(i_cal_datetimeperiod_new());
    i_cal_datetimeperiod_set_time(period.get(), start.get());
    ICalProperty* extra = i_cal_property_new_rdate(period.get());
    if (icalZone)
        i_cal_property_take_parameter(extra, i_cal_parameter_new_tzid(i_cal_timezone_get_tzid(icalZone)));
    take(event, extra);
}

} // namespace

namespace MeetsIcsExport {

QByteArray write(const QList<MeetEntity>& meets, const QTimeZone& zone)
{
    Owned<ICalComponent> calendar(i_cal_component_new_vcalendar());
    take(calendar.get(), i_cal_property_new_version("2.0"));
    take(calendar.get(), i_cal_property_new_prodid("-//Quorvel//Tolvane//EN"));
    take(calendar.get(), i_cal_property_new_calscale("GREGORIAN"));

    // A zone libical does not know is written as UTC times, which every program reads right.
    ICalTimezone* icalZone = i_cal_timezone_get_builtin_timezone(zone.id().constData());
    if (icalZone) {
        Owned<ICalComponent> definition(i_cal_timezone_get_component(icalZone));
        if (definition.get())
            i_cal_component_take_component(calendar.get(), i_cal_component_clone(definition.get()));
    }

    Owned<ICalTime> stamp(utcTime(QDateTime::currentDateTimeUtc()));
    for (const MeetEntity& meet : meets) {
        ICalComponent* event = i_cal_component_new_vevent();
        const QByteArray uid = meet.metId.toString(QUuid::WithoutBraces).toUtf8() + "@tolvane";
        i_cal_component_set_uid(event, uid.constData());
        i_cal_component_set_dtstamp(event, stamp.get());
        i_cal_component_set_summary(event, meet.metName.toUtf8().constData());
        if (!meet.metDescription.isEmpty())
            i_cal_component_set_description(event, meet.metDescription.toUtf8().constData());
        if (meet.metLocation && !meet.metLocation->isEmpty())
            i_cal_component_set_location(event, meet.metLocation->toUtf8().constData());
        if (meet.metUrl && meet.metUrl->isValid())
            take(event, i_cal_property_new_url(meet.metUrl->toString().toUtf8().constData()));
        if (!meet.metCalendarName.isEmpty())
            take(event, i_cal_property_new_categories(meet.metCalendarName.toUtf8().constData()));

        if (meet.metIsAllDay) {
            const QDate first = meet.metDate.toTimeZone(zone).date();
            // The end is exclusive: the day after the last day the event covers.
            const QDate last = meet.endDate().toTimeZone(zone).addMSecs(-1).date();
            Owned<ICalTime> start(dateOf(first));
            Owned<ICalTime> end(dateOf(std::max(first, last).addDays(1)));
            i_cal_component_set_dtstart(event, start.get());
            i_cal_component_set_dtend(event, end.get());
        } else if (icalZone) {
            Owned<ICalTime> start(zonedTime(meet.metDate, zone, icalZone));
            Owned<ICalTime> end(zonedTime(meet.endDate(), zone, icalZone));
            i_cal_component_set_dtstart(event, start.get());
            i_cal_component_set_dtend(event, end.get());
        } else {
            Owned<ICalTime> start(utcTime(meet.metDate));
            Owned<ICalTime> end(utcTime(meet.endDate()));
            i_cal_component_set_dtstart(event, start.get());
            i_cal_component_set_dtend(event, end.get());
        }
        if (meet.metSource == MeetSource::backend && meet.metRecurrenceFrequency != MeetRecurrenceFrequency::none
            && !meet.metIsAllDay)
            repeat(event, meet, zone, icalZone);
        i_cal_component_take_component(calendar.get(), event);
    }
    gchar* text = i_cal_component_as_ical_string(calendar.get());
    const QByteArray result(text);
    g_free(text);
    return result;
}

} // namespace MeetsIcsExport
