#include "meetings/domain/MeetRepetition.h"

#define LIBICAL_GLIB_UNSTABLE_API 1
#include <array>
#include <libical-glib/libical-glib.h>

namespace {

// Owns one reference of one of libical's objects.
template <typename T> class Owned {
public:
    explicit Owned(T* object)
        : m_object(object)
    {
    }
    ~Owned()
    {
        if (m_object)
            g_object_unref(m_object);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    T* get() const { return m_object; }

private:
    T* m_object;
};

constexpr std::array<const char*, 7> dayCodes = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};

// A wall-clock time with no zone: the rule is worked out in the calendar's local time.
ICalTime* floating(const QDateTime& local)
{
    ICalTime* time = i_cal_time_new_null_time();
    i_cal_time_set_date(time, local.date().year(), local.date().month(), local.date().day());
    i_cal_time_set_time(time, local.time().hour(), local.time().minute(), local.time().second());
    return time;
}

QDateTime inZone(ICalTime* time, const QTimeZone& zone)
{
    return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
        QTime(i_cal_time_get_hour(time), i_cal_time_get_minute(time), i_cal_time_get_second(time)), zone);
}

bool overlaps(const MeetEntity& meet, const QDateTime& start, const QDateTime& from, const QDateTime& to)
{
    const QDateTime end = start.addMSecs(qint64(meet.metDuration * 1000));
    return start < to && (end > from || start == from);
}

// Far more than any range the schedule or an export asks for holds; a guard against a rule
// that never gets past the range.
constexpr int maximumSteps = 100000;

} // namespace

namespace MeetRepetition {

QByteArray rule(MeetRecurrenceFrequency frequency, const QSet<int>& weekdays)
{
    switch (frequency) {
    case MeetRecurrenceFrequency::none:
        break;
    case MeetRecurrenceFrequency::daily:
        return QByteArrayLiteral("FREQ=DAILY");
    case MeetRecurrenceFrequency::monthly:
        return QByteArrayLiteral("FREQ=MONTHLY");
    case MeetRecurrenceFrequency::weekly: {
        QByteArrayList days;
        for (int day = 1; day <= 7; ++day) {
            if (weekdays.contains(day))
                days.append(dayCodes.at(day - 1));
        }
        QByteArray text = QByteArrayLiteral("FREQ=WEEKLY");
        if (!days.isEmpty())
            text += ";BYDAY=" + days.join(',');
        return text;
    }
    }
    return {};
}

QList<QDateTime> starts(const MeetEntity& meet, const QDateTime& from, const QDateTime& to, const QTimeZone& zone)
{
    QList<QDateTime> found;
    if (overlaps(meet, meet.metDate, from, to))
        found.append(meet.metDate);
    const QByteArray text = rule(meet.metRecurrenceFrequency, meet.metRecurringWeekdays);
    if (text.isEmpty() || meet.metDate >= to)
        return found;

    Owned<ICalRecurrence> recurrence(i_cal_recurrence_new_from_string(text.constData()));
    Owned<ICalTime> first(floating(meet.metDate.toTimeZone(zone)));
    Owned<ICalRecurIterator> iterator(i_cal_recur_iterator_new(recurrence.get(), first.get()));
    if (!iterator.get())
        return found;
    // Straight to the range: a daily meet begun years ago need not be walked from its start. A
    // day earlier than the longest meet could reach back, whatever daylight saving does.
    const QDateTime skipTo = from.addMSecs(-qint64(meet.metDuration * 1000)).addDays(-1);
    if (skipTo > meet.metDate) {
        Owned<ICalTime> resume(floating(skipTo.toTimeZone(zone)));
        i_cal_recur_iterator_set_start(iterator.get(), resume.get());
    }
    for (int step = 0; step < maximumSteps; ++step) {
        Owned<ICalTime> next(i_cal_recur_iterator_next(iterator.get()));
        if (!next.get() || i_cal_time_is_null_time(next.get()))
            break;
        const QDateTime start = inZone(next.get(), zone);
        if (start >= to)
            break;
        if (start > meet.metDate && overlaps(meet, start, from, to))
            found.append(start);
    }
    return found;
}

bool ruleProducesStart(const MeetEntity& meet, const QTimeZone& zone)
{
    const QByteArray text = rule(meet.metRecurrenceFrequency, meet.metRecurringWeekdays);
    if (text.isEmpty())
        return false;
    Owned<ICalRecurrence> recurrence(i_cal_recurrence_new_from_string(text.constData()));
    Owned<ICalTime> first(floating(meet.metDate.toTimeZone(zone)));
    Owned<ICalRecurIterator> iterator(i_cal_recur_iterator_new(recurrence.get(), first.get()));
    if (!iterator.get())
        return false;
    Owned<ICalTime> next(i_cal_recur_iterator_next(iterator.get()));
    return next.get() && !i_cal_time_is_null_time(next.get()) && i_cal_time_compare(next.get(), first.get()) == 0;
}

} // namespace MeetRepetition
