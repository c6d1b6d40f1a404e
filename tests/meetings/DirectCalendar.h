#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QTimeZone>

#include <libecal/libecal.h>

// A calendar read the way another client reads it: its own connection to EDS and libical's own
// recurrence iterator, none of the repository's code. Call it off the GUI thread.
class DirectCalendar {
public:
    explicit DirectCalendar(const QString& calendarId)
    {
        m_registry = e_source_registry_new_sync(nullptr, nullptr);
        ESource* source = e_source_registry_ref_source(m_registry, calendarId.toUtf8().constData());
        if (source) {
            m_client = E_CAL_CLIENT(
                e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, 15, nullptr, nullptr));
            g_object_unref(source);
        }
    }
    ~DirectCalendar()
    {
        g_clear_object(&m_client);
        g_clear_object(&m_registry);
    }
    DirectCalendar(const DirectCalendar&) = delete;
    DirectCalendar& operator=(const DirectCalendar&) = delete;

    ECalClient* client() const { return m_client; }

    // The stored master (or single event), owned by the caller; nullptr when there is none.
    ICalComponent* master(const QString& uid) const
    {
        ICalComponent* component = nullptr;
        if (!m_client
            || !e_cal_client_get_object_sync(m_client, uid.toUtf8().constData(), nullptr, &component, nullptr, nullptr))
            return nullptr;
        return component;
    }

    // The components stored under a UID: the master and its detached occurrences.
    int componentCount(const QString& uid) const
    {
        GSList* components = nullptr;
        if (!m_client
            || !e_cal_client_get_objects_for_uid_sync(
                m_client, uid.toUtf8().constData(), &components, nullptr, nullptr))
            return 0;
        const int count = int(g_slist_length(components));
        g_slist_free_full(components, g_object_unref);
        return count;
    }

    // Every UID in the calendar.
    QStringList uids() const
    {
        QStringList found;
        GSList* components = nullptr;
        if (!m_client || !e_cal_client_get_object_list_sync(m_client, "#t", &components, nullptr, nullptr))
            return found;
        for (GSList* item = components; item; item = item->next) {
            const QString uid = QString::fromUtf8(i_cal_component_get_uid(static_cast<ICalComponent*>(item->data)));
            if (!found.contains(uid))
                found.append(uid);
        }
        g_slist_free_full(components, g_object_unref);
        return found;
    }

private:
    ESourceRegistry* m_registry = nullptr;
    ECalClient* m_client = nullptr;
};

// What a component's DTSTART says, as written.
struct WrittenTime {
    QDateTime wallClock; // no zone: the digits as written
    QString tzid; // empty for UTC, floating and dates
    bool isUtc = false;
    bool isDate = false;
};

inline QDateTime wallClockOf(ICalTime* time)
{
    return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
        QTime(i_cal_time_get_hour(time), i_cal_time_get_minute(time), i_cal_time_get_second(time)), Qt::UTC);
}

inline WrittenTime writtenTime(ICalComponent* component, ICalPropertyKind kind)
{
    WrittenTime written;
    ICalProperty* property = i_cal_component_get_first_property(component, kind);
    if (!property)
        return written;
    ICalTime* time = kind == I_CAL_DTSTART_PROPERTY ? i_cal_property_get_dtstart(property)
        : kind == I_CAL_DTEND_PROPERTY              ? i_cal_property_get_dtend(property)
                                                    : i_cal_property_get_recurrenceid(property);
    written.wallClock = wallClockOf(time);
    written.isUtc = i_cal_time_is_utc(time);
    written.isDate = i_cal_time_is_date(time);
    if (ICalParameter* tzid = i_cal_property_get_first_parameter(property, I_CAL_TZID_PARAMETER)) {
        written.tzid = QString::fromUtf8(i_cal_parameter_get_tzid(tzid));
        g_object_unref(tzid);
    }
    g_object_unref(time);
    g_object_unref(property);
    return written;
}

// The IANA zone a TZID names, as the desktop's clients write it ("/freeassociation.sourceforge.net/
// Europe/Madrid") or bare.
inline QTimeZone zoneOfTzid(const QString& tzid)
{
    const QString prefix = QStringLiteral("/freeassociation.sourceforge.net/");
    return QTimeZone((tzid.startsWith(prefix) ? tzid.mid(prefix.size()) : tzid).toUtf8());
}

// The first occurrences of the component's first RRULE as wall-clock times in DTSTART's zone,
// by libical's recurrence iterator alone: what any client computes from the stored rule.
inline QList<QDateTime> ruleWallClocks(ICalComponent* component, int count)
{
    QList<QDateTime> found;
    ICalProperty* property = i_cal_component_get_first_property(component, I_CAL_RRULE_PROPERTY);
    if (!property)
        return found;
    ICalRecurrence* rule = i_cal_property_get_rrule(property);
    ICalTime* start = i_cal_component_get_dtstart(component);
    ICalRecurIterator* iterator = i_cal_recur_iterator_new(rule, start);
    while (iterator && found.size() < count) {
        ICalTime* next = i_cal_recur_iterator_next(iterator);
        const bool done = !next || i_cal_time_is_null_time(next);
        if (!done)
            found.append(wallClockOf(next));
        g_clear_object(&next);
        if (done)
            break;
    }
    g_clear_object(&iterator);
    g_object_unref(start);
    g_object_unref(rule);
    g_object_unref(property);
    return found;
}

inline QString ruleText(ICalComponent* component)
{
    ICalProperty* property = i_cal_component_get_first_property(component, I_CAL_RRULE_PROPERTY);
    if (!property)
        return {};
    ICalRecurrence* rule = i_cal_property_get_rrule(property);
    gchar* text = i_cal_recurrence_to_string(rule);
    const QString result = QString::fromUtf8(text);
    g_free(text);
    g_object_unref(rule);
    g_object_unref(property);
    return result;
}
