#include "DirectCalendar.h"
#include "OffMainThread.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QUuid>

// Meets written through the repository, read back as another client of the same calendar reads
// them: its own EDS connection and libical's recurrence iterator. What they show must be what the
// user chose, in the user's zone. "Now" is Tuesday 17 March 2026, 10:00.
namespace {

QTimeZone zone()
{
    return QTimeZone::systemTimeZone();
}

QDateTime at(int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute), zone());
}

// A wall-clock reading as DirectCalendar gives it.
QDateTime wall(int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute), Qt::UTC);
}

// What another client finds stored under a UID.
struct Stored {
    bool found = false;
    QString title;
    WrittenTime start;
    WrittenTime end;
    QList<QDateTime> ruleWallClocks;
    int components = 0;
    QList<WrittenTime> exdates;
};

} // namespace

class MeetRoundTripTest : public QObject {
    Q_OBJECT

    CalendarStore* m_store = nullptr;
    std::shared_ptr<SettableClock> m_clock = std::make_shared<SettableClock>(at(3, 17, 10));
    QString m_calendarId;
    std::shared_ptr<EventKitMeetRepositoryImpl> m_meets;

    Stored stored(const QString& uid) const
    {
        return offMainThread([&] {
            Stored result;
            DirectCalendar direct(m_calendarId);
            result.components = direct.componentCount(uid);
            ICalComponent* master = direct.master(uid);
            if (!master)
                return result;
            result.found = true;
            result.title = QString::fromUtf8(i_cal_component_get_summary(master));
            result.start = writtenTime(master, I_CAL_DTSTART_PROPERTY);
            result.end = writtenTime(master, I_CAL_DTEND_PROPERTY);
            result.ruleWallClocks = ruleWallClocks(master, 6);
            for (ICalProperty* p = i_cal_component_get_first_property(master, I_CAL_EXDATE_PROPERTY); p;
                 p = i_cal_component_get_next_property(master, I_CAL_EXDATE_PROPERTY)) {
                ICalTime* time = i_cal_property_get_exdate(p);
                result.exdates.append({wallClockOf(time), QString(), bool(i_cal_time_is_utc(time)), false});
                g_object_unref(time);
                g_object_unref(p);
            }
            g_object_unref(master);
            return result;
        });
    }

    // The occurrences libecal itself expands for a UID that start in the schedule's window, with
    // their titles. libecal is asked for a wider range: it misses occurrences near the edges of a
    // range in another zone than the series'.
    QList<std::pair<QDateTime, QString>> expanded(const QString& uid) const
    {
        return offMainThread([&] {
            QList<std::pair<QDateTime, QString>> found;
            DirectCalendar direct(m_calendarId);
            ICalComponent* master = direct.master(uid);
            if (!master)
                return found;
            e_cal_client_generate_instances_for_object_sync(
                direct.client(), master, at(3, 14, 0).toSecsSinceEpoch(), at(4, 2, 0).toSecsSinceEpoch(), nullptr,
                [](ICalComponent* component, ICalTime* start, ICalTime*, gpointer data, GCancellable*,
                    GError**) -> gboolean {
                    const QDateTime instant = QDateTime::fromSecsSinceEpoch(
                        i_cal_time_as_timet_with_zone(start, i_cal_time_get_timezone(start)), zone());
                    static_cast<QList<std::pair<QDateTime, QString>>*>(data)->append(
                        {instant, QString::fromUtf8(i_cal_component_get_summary(component))});
                    return TRUE;
                },
                &found);
            g_object_unref(master);
            found.removeIf([](const auto& occurrence) {
                return occurrence.first < at(3, 16, 0) || occurrence.first >= at(3, 31, 0);
            });
            std::sort(found.begin(), found.end());
            return found;
        });
    }

    MeetEntity create(const QString& title, const QDateTime& start, int minutes,
        MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none, QSet<int> weekdays = {}) const
    {
        const MeetDraft draft {title, QString(), start, start.addSecs(minutes * 60), recurrence, weekdays};
        return offMainThread([&] { return m_meets->createMeet(draft); });
    }

    QList<MeetEntity> named(const QString& title) const
    {
        QList<MeetEntity> found;
        for (const MeetEntity& meet : offMainThread([&] { return m_meets->fetchMeets(); })) {
            if (meet.metName == title)
                found.append(meet);
        }
        return found;
    }

private Q_SLOTS:
    void initTestCase() { m_store = &CalendarStore::shared(); }

    void init()
    {
        m_calendarId = QStringLiteral("tolvane-round-trip-") + QUuid::createUuid().toString(QUuid::Id128);
        m_store->addLocalCalendar(m_calendarId, QStringLiteral("Round trips"), QStringLiteral("#446688"));
        QTRY_VERIFY(m_store->calendar(m_calendarId).has_value());
        // The calendar factory learns of a new calendar a moment after the registry.
        QTRY_VERIFY_WITH_TIMEOUT(
            offMainThread([&] { return DirectCalendar(m_calendarId).client() != nullptr; }), 30000);
        QSet<QString> hidden;
        for (const CalendarStoreCalendar& calendar : m_store->calendars()) {
            if (calendar.identifier != m_calendarId)
                hidden.insert(calendar.identifier);
        }
        m_meets = std::make_shared<EventKitMeetRepositoryImpl>(
            LiveEventKitStore::shared(), zone(), 1, 14, hidden, m_calendarId, m_clock);
    }

    void cleanup() { m_store->disableCalendar(m_calendarId); }

    void shouldStoreEachRepetitionInTheUsersZone_data()
    {
        QTest::addColumn<MeetRecurrenceFrequency>("recurrence");
        QTest::addColumn<QSet<int>>("weekdays");
        QTest::addColumn<QList<QDateTime>>("occurrences");
        const QDateTime start = wall(3, 17, 19, 45); // a Tuesday evening
        QTest::newRow("never") << MeetRecurrenceFrequency::none << QSet<int>() << QList<QDateTime>();
        QTest::newRow("every day") << MeetRecurrenceFrequency::daily << QSet<int>()
                                   << QList<QDateTime> {start, start.addDays(1), start.addDays(2), start.addDays(3),
                                          start.addDays(4), start.addDays(5)};
        QTest::newRow("every week on its day") << MeetRecurrenceFrequency::weekly << QSet<int>()
                                               << QList<QDateTime> {start, start.addDays(7), start.addDays(14),
                                                      start.addDays(21), start.addDays(28), start.addDays(35)};
        QTest::newRow("Tuesday and Saturday") << MeetRecurrenceFrequency::weekly << QSet<int> {3, 7}
                                              << QList<QDateTime> {start, start.addDays(4), start.addDays(7),
                                                     start.addDays(11), start.addDays(14), start.addDays(18)};
        QTest::newRow("every month") << MeetRecurrenceFrequency::monthly << QSet<int>()
                                     << QList<QDateTime> {start, start.addMonths(1), start.addMonths(2),
                                            start.addMonths(3), start.addMonths(4), start.addMonths(5)};
    }

    void shouldStoreEachRepetitionInTheUsersZone()
    {
        QFETCH(MeetRecurrenceFrequency, recurrence);
        QFETCH(QSet<int>, weekdays);
        QFETCH(QList<QDateTime>, occurrences);
        const MeetEntity meet = create(QStringLiteral("Evening"), at(3, 17, 19, 45), 90, recurrence, weekdays);
        QCOMPARE(meet.metDate, at(3, 17, 19, 45));
        QCOMPARE(meet.metRecurrenceFrequency, recurrence);

        const Stored written = stored(meet.metOriginalIdentifier);
        QVERIFY(written.found);
        QCOMPARE(written.title, QStringLiteral("Evening"));
        QCOMPARE(written.start.wallClock, wall(3, 17, 19, 45));
        QCOMPARE(written.end.wallClock, wall(3, 17, 21, 15));
        QVERIFY(!written.start.isUtc);
        QCOMPARE(zoneOfTzid(written.start.tzid), zone());
        QCOMPARE(written.ruleWallClocks, occurrences);
    }

    void shouldKeepAnAllDayMeetAsDates()
    {
        CalendarStoreEvent holiday;
        holiday.calendarIdentifier = m_calendarId;
        holiday.title = QStringLiteral("Holiday");
        holiday.isAllDay = true;
        holiday.startDate = at(3, 19, 0);
        holiday.endDate = at(3, 21, 0);
        holiday.recurrenceRules = {{CalendarStoreFrequency::yearly, 1, {}, {}}};
        offMainThread([&] { m_store->save(holiday, CalendarStoreSpan::thisEvent); });
        const Stored written = stored(holiday.eventIdentifier);
        QVERIFY(written.start.isDate && written.end.isDate);
        QVERIFY(written.start.tzid.isEmpty());
        QCOMPARE(written.start.wallClock.date(), QDate(2026, 3, 19));
        QCOMPARE(written.end.wallClock.date(), QDate(2026, 3, 21));
        const QList<MeetEntity> read = named(QStringLiteral("Holiday"));
        QCOMPARE(read.size(), 1);
        QVERIFY(read.front().metIsAllDay);
        QCOMPARE(read.front().metDate, at(3, 19, 0));
        QCOMPARE(read.front().metDuration, 2 * 86400.0);
    }

    void shouldEditOneOccurrenceOnItsOwn()
    {
        const MeetEntity series
            = create(QStringLiteral("Stand-up"), at(3, 16, 9), 15, MeetRecurrenceFrequency::weekly, {2, 3, 4, 5, 6});
        const MeetEntity thursday = named(QStringLiteral("Stand-up")).at(3);
        QCOMPARE(thursday.metDate, at(3, 19, 9));
        offMainThread([&] {
            m_meets->updateMeet(thursday,
                {QStringLiteral("Stand-up, late"), QString(), at(3, 19, 11, 30), at(3, 19, 12),
                    MeetRecurrenceFrequency::weekly, {2, 3, 4, 5, 6}});
        });

        const Stored written = stored(series.metOriginalIdentifier);
        QCOMPARE(written.components, 2); // the series and the edited occurrence
        QCOMPARE(written.title, QStringLiteral("Stand-up"));
        QCOMPARE(written.start.wallClock, wall(3, 16, 9));
        const QList<std::pair<QDateTime, QString>> occurrences = expanded(series.metOriginalIdentifier);
        QCOMPARE(occurrences.size(), 11);
        QVERIFY(occurrences.contains(std::pair {at(3, 19, 11, 30), QStringLiteral("Stand-up, late")}));
        QVERIFY(!occurrences.contains(std::pair {at(3, 19, 9), QStringLiteral("Stand-up")}));
        QVERIFY(occurrences.contains(std::pair {at(3, 20, 9), QStringLiteral("Stand-up")}));
    }

    void shouldEditTheWholeSeriesWhenItsRepetitionChanges()
    {
        const MeetEntity series
            = create(QStringLiteral("Review"), at(3, 16, 18), 60, MeetRecurrenceFrequency::weekly, {2});
        const MeetEntity second = named(QStringLiteral("Review")).at(1);
        QCOMPARE(second.metDate, at(3, 23, 18));
        offMainThread([&] {
            m_meets->updateMeet(second,
                {QStringLiteral("Review"), QString(), at(3, 23, 17), at(3, 23, 18), MeetRecurrenceFrequency::weekly,
                    {2, 4}});
        });
        const Stored written = stored(series.metOriginalIdentifier);
        QCOMPARE(written.components, 1);
        QCOMPARE(zoneOfTzid(written.start.tzid), zone());
        QCOMPARE(written.ruleWallClocks,
            QList<QDateTime>(
                {wall(3, 23, 17), wall(3, 25, 17), wall(3, 30, 17), wall(4, 1, 17), wall(4, 6, 17), wall(4, 8, 17)}));
    }

    void shouldDeleteOneEventOrAWholeSeries()
    {
        const MeetEntity single = create(QStringLiteral("Single"), at(3, 18, 20), 30);
        const MeetEntity series = create(QStringLiteral("Series"), at(3, 16, 20), 30, MeetRecurrenceFrequency::daily);
        const MeetEntity kept = create(QStringLiteral("Kept"), at(3, 18, 21), 30);

        offMainThread([&] { m_meets->deleteMeet(single); });
        QVERIFY(!stored(single.metOriginalIdentifier).found);
        QVERIFY(stored(series.metOriginalIdentifier).found);

        offMainThread([&] { m_meets->deleteMeet(named(QStringLiteral("Series")).at(4)); });
        const Stored gone = stored(series.metOriginalIdentifier);
        QVERIFY(!gone.found);
        QCOMPARE(gone.components, 0);
        QVERIFY(stored(kept.metOriginalIdentifier).found);
    }

    void shouldRemoveOneOccurrenceOfASeriesAsAnException()
    {
        const MeetEntity series
            = create(QStringLiteral("Daily"), at(3, 16, 23, 30), 30, MeetRecurrenceFrequency::daily);
        // The store's own occurrence, as a screen offering "this occurrence only" would pass it.
        const QList<CalendarStoreEvent> occurrences = offMainThread([&] {
            return m_store->occurrences(m_calendarId, series.metOriginalIdentifier, at(3, 18, 0), at(3, 19, 0));
        });
        QCOMPARE(occurrences.size(), 1);
        QCOMPARE(occurrences.front().startDate, at(3, 18, 23, 30));
        offMainThread([&] { m_store->remove(occurrences.front(), CalendarStoreSpan::thisEvent); });

        const Stored written = stored(series.metOriginalIdentifier);
        QCOMPARE(written.exdates.size(), 1);
        const QDateTime excluded = written.exdates.front().isUtc
            ? QDateTime(written.exdates.front().wallClock.date(), written.exdates.front().wallClock.time(), Qt::UTC)
            : QDateTime(written.exdates.front().wallClock.date(), written.exdates.front().wallClock.time(), zone());
        QCOMPARE(excluded, at(3, 18, 23, 30));
        const QList<std::pair<QDateTime, QString>> left = expanded(series.metOriginalIdentifier);
        QCOMPARE(left.size(), 14);
        QVERIFY(!left.contains(std::pair {at(3, 18, 23, 30), QStringLiteral("Daily")}));
    }
};

TOLVANE_TEST_MAIN(MeetRoundTripTest)
#include "MeetRoundTripTest.moc"
