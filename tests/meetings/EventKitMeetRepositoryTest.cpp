#include "BackendClient.h"
#include "OffMainThread.h"
#include "meetings/applications/MeetingsApplication.h"
#include "meetings/domain/MeetTexts.h"
#include "meetings/repositories/CompositeMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryError.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/http/EventsBackend.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <algorithm>
#include <libecal/libecal.h>
#include <set>
#include <tuple>

// The meet repository over the session's real EDS, on private calendars made for each test and
// removed afterwards. "Now" is Tuesday 17 March 2026, 10:00 in the pinned zone, so the schedule's
// window runs from Monday 16 March to Tuesday 31 March.
namespace {

// Read once the test main has pinned the zone.
QTimeZone zone()
{
    return QTimeZone::systemTimeZone();
}

QDateTime at(int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute), zone());
}

// (UID, start, end) in seconds since 1970: what an occurrence is, whoever read it.
using Occurrence = std::tuple<QString, qint64, qint64>;

qint64 wallClockSeconds(ICalTime* time)
{
    return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
        QTime(i_cal_time_get_hour(time), i_cal_time_get_minute(time), i_cal_time_get_second(time)), Qt::LocalTime)
        .toSecsSinceEpoch();
}

// A DTSTART with neither "Z" nor TZID floats: the same wall-clock time wherever it is read.
// libecal's bulk expansion pins such single events to UTC, its per-object one leaves them
// floating; the reference takes the wall-clock reading either way.
bool floats(ICalComponent* component)
{
    ICalProperty* property = i_cal_component_get_first_property(component, I_CAL_DTSTART_PROPERTY);
    ICalParameter* tzid = property ? i_cal_property_get_first_parameter(property, I_CAL_TZID_PARAMETER) : nullptr;
    ICalTime* start = i_cal_component_get_dtstart(component);
    const bool floating = !tzid && start && !i_cal_time_is_utc(start) && !i_cal_time_is_date(start);
    g_clear_object(&tzid);
    g_clear_object(&property);
    g_clear_object(&start);
    return floating;
}

qint64 secondsOf(ICalTime* time, bool floating)
{
    if (i_cal_time_is_date(time))
        return QDateTime(QDate(i_cal_time_get_year(time), i_cal_time_get_month(time), i_cal_time_get_day(time)),
            QTime(0, 0), Qt::LocalTime)
            .toSecsSinceEpoch();
    if (floating)
        return wallClockSeconds(time);
    return i_cal_time_as_timet_with_zone(time, i_cal_time_get_timezone(time));
}

gboolean collectBare(ICalComponent* component, ICalTime* start, ICalTime* end, gpointer data, GCancellable*, GError**)
{
    // An occurrence the organiser called off is on nobody's schedule.
    if (i_cal_component_get_status(component) == I_CAL_STATUS_CANCELLED)
        return TRUE;
    const bool floating = floats(component);
    static_cast<std::set<Occurrence>*>(data)->insert(
        {QString::fromUtf8(i_cal_component_get_uid(component)), secondsOf(start, floating), secondsOf(end, floating)});
    return TRUE;
}

// The occurrences EDS itself expands in [start, end), asked through a client of our own.
std::set<Occurrence> expandedByEds(const QString& calendarId, const QDateTime& start, const QDateTime& end)
{
    ESourceRegistry* registry = e_source_registry_new_sync(nullptr, nullptr);
    ESource* source = e_source_registry_ref_source(registry, calendarId.toUtf8().constData());
    EClient* client = e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, 15, nullptr, nullptr);
    std::set<Occurrence> occurrences;
    if (client) {
        // The zone the program shows (TZ), not the machine's (/etc/localtime): with the two
        // different, all-day and floating times would otherwise expand in another zone.
        e_cal_client_set_default_timezone(
            E_CAL_CLIENT(client), i_cal_timezone_get_builtin_timezone(QTimeZone::systemTimeZoneId().constData()));
        e_cal_client_generate_instances_sync(
            E_CAL_CLIENT(client), start.toSecsSinceEpoch(), end.toSecsSinceEpoch(), nullptr, collectBare, &occurrences);
        // libecal also hands back occurrences that only touch the range, such as an all-day
        // event starting where it ends; the schedule shows those that overlap it.
        std::erase_if(occurrences, [&](const Occurrence& occurrence) {
            const auto& [uid, from, to] = occurrence;
            return to > from ? !(from < end.toSecsSinceEpoch() && start.toSecsSinceEpoch() < to)
                             : !(start.toSecsSinceEpoch() <= from && from < end.toSecsSinceEpoch());
        });
        g_object_unref(client);
    }
    g_object_unref(source);
    g_object_unref(registry);
    return occurrences;
}

std::set<Occurrence> occurrencesOf(const QList<MeetEntity>& meets)
{
    std::set<Occurrence> occurrences;
    for (const MeetEntity& meet : meets)
        occurrences.insert(
            {meet.metOriginalIdentifier, meet.metDate.toSecsSinceEpoch(), meet.endDate().toSecsSinceEpoch()});
    return occurrences;
}

QList<MeetEntity> named(const QList<MeetEntity>& meets, const QString& name)
{
    QList<MeetEntity> found;
    std::copy_if(
        meets.begin(), meets.end(), std::back_inserter(found), [&](const MeetEntity& m) { return m.metName == name; });
    return found;
}

QSet<int> weekdaysOf(const QList<MeetEntity>& meets)
{
    QSet<int> days;
    for (const MeetEntity& meet : meets)
        days.insert(meet.metDate.toTimeZone(zone()).date().dayOfWeek() % 7 + 1);
    return days;
}

} // namespace

// The repository, each call made from a worker thread.
class Meets {
public:
    explicit Meets(std::shared_ptr<EventKitMeetRepositoryImpl> repository)
        : m_repository(std::move(repository))
    {
    }
    QList<MeetEntity> fetchMeets() const
    {
        return offMainThread([&] { return m_repository->fetchMeets(); });
    }
    MeetEntity createMeet(const MeetDraft& draft) const
    {
        return offMainThread([&] { return m_repository->createMeet(draft); });
    }
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft& draft) const
    {
        return offMainThread([&] { return m_repository->updateMeet(meet, draft); });
    }
    void deleteMeet(const MeetEntity& meet) const
    {
        offMainThread([&] { m_repository->deleteMeet(meet); });
    }
    QList<EventKitAccountCalendarsEntity> accountCalendars() const
    {
        return offMainThread([&] { return m_repository->accountCalendars(); });
    }

private:
    std::shared_ptr<EventKitMeetRepositoryImpl> m_repository;
};

class EventKitMeetRepositoryTest : public QObject {
    Q_OBJECT

    CalendarStore* m_store = nullptr;
    std::shared_ptr<SettableClock> m_clock = std::make_shared<SettableClock>(at(3, 17, 10));
    QString m_calendarId;
    QString m_otherCalendarId;

    // Every calendar but ours hidden, so the session's own calendars stay out of the way.
    std::shared_ptr<Meets> repository(QSet<QString> alsoHidden = {}, int daysBehind = 1, int daysAhead = 14) const
    {
        QSet<QString> hidden = alsoHidden;
        for (const CalendarStoreCalendar& calendar : m_store->calendars()) {
            if (calendar.identifier != m_calendarId && calendar.identifier != m_otherCalendarId)
                hidden.insert(calendar.identifier);
        }
        return std::make_shared<Meets>(std::make_shared<EventKitMeetRepositoryImpl>(
            LiveEventKitStore::shared(), zone(), daysBehind, daysAhead, hidden, m_calendarId, m_clock));
    }

    void import(const QString& calendarId, const QString& file) const
    {
        QFile data(QStringLiteral(TOLVANE_MEET_DATA) + QLatin1Char('/') + file);
        QVERIFY2(data.open(QIODevice::ReadOnly), qPrintable(data.fileName()));
        const QByteArray text = data.readAll();
        QVERIFY(offMainThread([&] { return m_store->importCalendarData(calendarId, text); }) > 0);
    }

    static MeetDraft draft(const QString& title, const QDateTime& start, int minutes,
        MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none, QSet<int> weekdays = {})
    {
        return {title, title + QStringLiteral(" notes"), start, start.addSecs(minutes * 60), recurrence, weekdays};
    }

private Q_SLOTS:
    void initTestCase() { m_store = &CalendarStore::shared(); }

    void init()
    {
        m_clock->set(at(3, 17, 10));
        m_calendarId = QStringLiteral("tolvane-meets-") + QUuid::createUuid().toString(QUuid::Id128);
        m_otherCalendarId = m_calendarId + QStringLiteral("-other");
        m_store->addLocalCalendar(m_calendarId, QStringLiteral("Meets under test"), QStringLiteral("#1a2b3c"));
        m_store->addLocalCalendar(m_otherCalendarId, QStringLiteral("Other"), QStringLiteral("#abc"));
        QTRY_VERIFY(m_store->calendar(m_otherCalendarId).has_value());
    }

    void cleanup()
    {
        m_store->disableCalendar(m_calendarId);
        m_store->disableCalendar(m_otherCalendarId);
    }

    void shouldReadEveryOccurrenceOfCreatedSeriesWithStableIdentities()
    {
        auto meets = repository();
        const MeetEntity daily
            = meets->createMeet(draft(QStringLiteral("Daily"), at(3, 17, 9), 30, MeetRecurrenceFrequency::daily));
        QCOMPARE(daily.metCalendarIdentifier, m_calendarId);
        QCOMPARE(daily.metColor.hexValue, QStringLiteral("#1A2B3C"));
        meets->createMeet(draft(QStringLiteral("Weekly"), at(3, 18, 11), 60, MeetRecurrenceFrequency::weekly));
        meets->createMeet(draft(QStringLiteral("Mon Wed"), at(3, 16, 15), 45, MeetRecurrenceFrequency::weekly, {2, 4}));
        meets->createMeet(draft(QStringLiteral("Monthly"), at(2, 20, 8), 15, MeetRecurrenceFrequency::monthly));

        const QList<MeetEntity> first = meets->fetchMeets();
        const QList<MeetEntity> dailies = named(first, QStringLiteral("Daily"));
        QCOMPARE(dailies.size(), 14); // 17 March up to, not including, 31 March
        QCOMPARE(dailies.front().metRecurrenceFrequency, MeetRecurrenceFrequency::daily);
        QCOMPARE(dailies.front().metDescription, QStringLiteral("Daily notes"));
        QCOMPARE(dailies.front().metDuration, 1800.0);
        QVERIFY(dailies.at(0).metId != dailies.at(1).metId);

        const QList<MeetEntity> weekly = named(first, QStringLiteral("Weekly"));
        QCOMPARE(weekly.size(), 2);
        QCOMPARE(weekdaysOf(weekly), QSet<int>({4}));
        QCOMPARE(weekly.front().metRecurringWeekdays, QSet<int>({4}));

        const QList<MeetEntity> monWed = named(first, QStringLiteral("Mon Wed"));
        QCOMPARE(monWed.size(), 5); // 16, 18, 23, 25, 30 March
        QCOMPARE(weekdaysOf(monWed), QSet<int>({2, 4}));
        QCOMPARE(monWed.front().metRecurringWeekdays, QSet<int>({2, 4}));

        const QList<MeetEntity> monthly = named(first, QStringLiteral("Monthly"));
        QCOMPARE(monthly.size(), 1);
        QCOMPARE(monthly.front().metDate, at(3, 20, 8));
        QCOMPARE(monthly.front().metRecurrenceFrequency, MeetRecurrenceFrequency::monthly);

        QSet<QUuid> firstIds;
        for (const MeetEntity& meet : first)
            firstIds.insert(meet.metId);
        QCOMPARE(firstIds.size(), first.size());
        QSet<QUuid> secondIds;
        for (const MeetEntity& meet : meets->fetchMeets())
            secondIds.insert(meet.metId);
        QCOMPARE(secondIds, firstIds);
    }

    void shouldReadYearlyAsNoneUntitledAsUntitledAndAllDayInLocalTime()
    {
        import(m_calendarId, QStringLiteral("all-day-and-floating.ics"));
        CalendarStoreEvent bare;
        bare.calendarIdentifier = m_calendarId;
        bare.startDate = at(3, 19, 14);
        bare.endDate = at(3, 19, 15);
        bare.recurrenceRules = {{CalendarStoreFrequency::yearly, 1, {}, {}}};
        offMainThread([&] { m_store->save(bare, CalendarStoreSpan::thisEvent); });

        const QList<MeetEntity> meets = repository()->fetchMeets();
        const QList<MeetEntity> untitled = named(meets, MeetTexts::untitled());
        QCOMPARE(untitled.size(), 1);
        QCOMPARE(untitled.front().metDescription, QString());
        QCOMPARE(untitled.front().metRecurrenceFrequency, MeetRecurrenceFrequency::none);
        QCOMPARE(untitled.front().metRecurringWeekdays, QSet<int>());

        const QList<MeetEntity> holiday = named(meets, QStringLiteral("Holiday"));
        QCOMPARE(holiday.size(), 1);
        QVERIFY(holiday.front().metIsAllDay);
        QCOMPARE(holiday.front().metDate, QDateTime(QDate(2026, 3, 18), QTime(0, 0), zone()));
        QCOMPARE(holiday.front().metDuration, 86400.0);
        const QList<MeetEntity> trip = named(meets, QStringLiteral("Three-day trip"));
        QCOMPARE(trip.size(), 1);
        QCOMPARE(trip.front().metDuration, 3 * 86400.0);
        QCOMPARE(named(meets, QStringLiteral("Floating lunch")).front().metDate, at(3, 17, 12, 30));
    }

    void shouldLeaveHiddenCalendarsOut()
    {
        auto meets = repository();
        meets->createMeet(draft(QStringLiteral("Ours"), at(3, 18, 9), 30));
        CalendarStoreEvent elsewhere;
        elsewhere.calendarIdentifier = m_otherCalendarId;
        elsewhere.title = QStringLiteral("Elsewhere");
        elsewhere.startDate = at(3, 18, 10);
        elsewhere.endDate = at(3, 18, 11);
        offMainThread([&] { m_store->save(elsewhere, CalendarStoreSpan::thisEvent); });

        QCOMPARE(meets->fetchMeets().size(), 2);
        const QList<MeetEntity> shown = repository({m_otherCalendarId})->fetchMeets();
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown.front().metName, QStringLiteral("Ours"));
        QVERIFY(repository({m_calendarId, m_otherCalendarId})->fetchMeets().isEmpty());

        const auto accounts = meets->accountCalendars();
        const auto local = std::find_if(accounts.begin(), accounts.end(),
            [](const EventKitAccountCalendarsEntity& account) { return account.eacId == QLatin1String("local-stub"); });
        QVERIFY(local != accounts.end());
        QVERIFY(local->eacCalendars.contains(
            EventKitCalendarInfoEntity {m_otherCalendarId, QStringLiteral("Other"), QStringLiteral("#AABBCC")}));
    }

    void shouldDeleteTheWholeSeriesFromAnyOccurrenceAndASingleEventAlone()
    {
        auto meets = repository();
        meets->createMeet(draft(QStringLiteral("Series"), at(3, 16, 9), 30, MeetRecurrenceFrequency::daily));
        meets->createMeet(draft(QStringLiteral("Single"), at(3, 20, 9), 30));
        meets->createMeet(draft(QStringLiteral("Kept"), at(3, 21, 9), 30));

        const QList<MeetEntity> series = named(meets->fetchMeets(), QStringLiteral("Series"));
        QCOMPARE(series.size(), 15);
        meets->deleteMeet(series.at(6));
        QVERIFY(named(meets->fetchMeets(), QStringLiteral("Series")).isEmpty());

        meets->deleteMeet(named(meets->fetchMeets(), QStringLiteral("Single")).front());
        const QList<MeetEntity> left = meets->fetchMeets();
        QCOMPARE(left.size(), 1);
        QCOMPARE(left.front().metName, QStringLiteral("Kept"));

        QVERIFY_THROWS_EXCEPTION(EventKitMeetRepositoryError, meets->deleteMeet(series.at(6)));
        MeetEntity moved = left.front();
        moved.metDate = moved.metDate.addSecs(60);
        try {
            meets->updateMeet(moved, draft(QStringLiteral("x"), at(3, 21, 9), 30));
            QFAIL("an occurrence that does not start then was found");
        } catch (const EventKitMeetRepositoryError& error) {
            QCOMPARE(error.kind(), EventKitMeetRepositoryError::Case::eventNotFound);
        }
    }

    void shouldKeepAnEditedOccurrenceToItself()
    {
        auto meets = repository();
        meets->createMeet(draft(QStringLiteral("Stand-up"), at(3, 16, 9), 15, MeetRecurrenceFrequency::daily));
        const MeetEntity thursday = named(meets->fetchMeets(), QStringLiteral("Stand-up")).at(3);
        QCOMPARE(thursday.metDate, at(3, 19, 9));

        const MeetEntity edited = meets->updateMeet(
            thursday, draft(QStringLiteral("Stand-up, late"), at(3, 19, 11), 30, MeetRecurrenceFrequency::daily));
        QCOMPARE(edited.metName, QStringLiteral("Stand-up, late"));
        QCOMPARE(edited.metDate, at(3, 19, 11));

        const QList<MeetEntity> after = meets->fetchMeets();
        QCOMPARE(named(after, QStringLiteral("Stand-up")).size(), 14);
        const QList<MeetEntity> late = named(after, QStringLiteral("Stand-up, late"));
        QCOMPARE(late.size(), 1);
        QCOMPARE(late.front().metDate, at(3, 19, 11));
        QCOMPARE(late.front().metDuration, 1800.0);
        QCOMPARE(late.front().metRecurrenceFrequency, MeetRecurrenceFrequency::daily);
        QCOMPARE(after.size(), 15);

        // Deleting the edited occurrence still takes the series with it.
        meets->deleteMeet(late.front());
        QVERIFY(meets->fetchMeets().isEmpty());
    }

    // A read of one day expands the series that were never edited without the store, and
    // those with an occurrence edited on their own through it: the occurrence moved off the
    // day is gone from there and found where it went.
    void shouldReadADayAsItsSeriesStandAfterAnEdit()
    {
        auto meets = repository();
        meets->createMeet(draft(QStringLiteral("Stand-up"), at(3, 16, 9), 15, MeetRecurrenceFrequency::daily));
        meets->createMeet(draft(QStringLiteral("Review"), at(3, 16, 14), 60, MeetRecurrenceFrequency::daily));
        const MeetEntity thursday = named(meets->fetchMeets(), QStringLiteral("Stand-up")).at(3);
        meets->updateMeet(
            thursday, draft(QStringLiteral("Stand-up"), at(3, 20, 7), 15, MeetRecurrenceFrequency::daily));

        const auto startsOn = [&](int day) {
            m_clock->set(at(3, day, 12));
            QStringList starts;
            for (const MeetEntity& meet : repository({}, 0, 1)->fetchMeets())
                starts.append(meet.metName + meet.metDate.toTimeZone(zone()).toString(u" HH:mm"));
            starts.sort();
            return starts;
        };
        QCOMPARE(startsOn(19), QStringList({QStringLiteral("Review 14:00")}));
        QCOMPARE(startsOn(20),
            QStringList(
                {QStringLiteral("Review 14:00"), QStringLiteral("Stand-up 07:00"), QStringLiteral("Stand-up 09:00")}));
        QCOMPARE(startsOn(21), QStringList({QStringLiteral("Review 14:00"), QStringLiteral("Stand-up 09:00")}));
    }

    void shouldShowTheCalendarsMeetsWhateverTheBackendDoes()
    {
        auto store = std::make_shared<EventKitMeetRepositoryImpl>(
            LiveEventKitStore::shared(), zone(), 1, 14, QSet<QString> {m_otherCalendarId}, m_calendarId, m_clock);
        FakeBackend http;
        EventsBackend events(http);
        auto backend = std::make_shared<RemoteEventRepositoryImpl>(backendClient(http.baseURL(), http.bearerToken()));
        // Nothing listens on the discard port of loopback.
        auto unreachable = std::make_shared<RemoteEventRepositoryImpl>(
            backendClient(QUrl("http://127.0.0.1:9"), QStringLiteral("t")));
        const MeetingsApplication application(std::make_shared<CompositeMeetRepositoryImpl>(
            std::vector<std::shared_ptr<MeetRepository>> {store, unreachable, backend}));

        offMainThread([&] {
            application.createMeet(draft(QStringLiteral("In the calendar"), at(3, 18, 9), 30));
            backend->createMeet(draft(QStringLiteral("On the backend"), at(3, 17, 16), 30));
        });
        const QList<MeetEntity> meets = offMainThread([&] { return application.fetchMeets(); });
        QCOMPARE(meets.size(), 2);
        QCOMPARE(meets.at(0).metSource, MeetSource::backend);
        QCOMPARE(meets.at(1).metSource, MeetSource::eventKit);
        QCOMPARE(meets.at(1).metName, QStringLiteral("In the calendar"));
        QCOMPARE(events.events().size(), 1);
    }

    void shouldReadImportedCalendarsExactlyAsEdsExpandsThem_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString& file : QDir(QStringLiteral(TOLVANE_MEET_DATA)).entryList({QStringLiteral("*.ics")})) {
            // Occurrences in the hours daylight-saving time skips or repeats, which libical
            // misplaces and the repository reads as RFC 5545 says; tst_meet_time_zones compares
            // them with an independent expansion.
            if (file != QLatin1String("dst-edge-hours.ics"))
                QTest::newRow(qPrintable(file)) << file;
        }
    }

    void shouldReadImportedCalendarsExactlyAsEdsExpandsThem()
    {
        QFETCH(QString, file);
        import(m_calendarId, file);
        const int behind = 40;
        const int ahead = 80;
        const QDateTime today(QDate(2026, 3, 17), QTime(0, 0), zone());
        const std::set<Occurrence> expected
            = offMainThread([&] { return expandedByEds(m_calendarId, today.addDays(-behind), today.addDays(ahead)); });
        QVERIFY(expected.size() > 5);
        const QList<MeetEntity> meets = repository({m_otherCalendarId}, behind, ahead)->fetchMeets();
        const std::set<Occurrence> read = occurrencesOf(meets);
        QStringList differences;
        for (const auto& [set, label] : {std::pair {&read, "read only"}, std::pair {&expected, "expanded only"}}) {
            for (const auto& [uid, start, end] : *set) {
                if (!(set == &read ? expected : read).count({uid, start, end}))
                    differences.append(
                        QStringLiteral("%1 %2 %3..%4")
                            .arg(QLatin1String(label), uid, QDateTime::fromSecsSinceEpoch(start).toString(Qt::ISODate),
                                QDateTime::fromSecsSinceEpoch(end).toString(Qt::ISODate)));
            }
        }
        QVERIFY2(differences.isEmpty(), qPrintable(differences.join(QLatin1Char('\n'))));
        QCOMPARE(std::size_t(meets.size()), expected.size());
    }
};

TOLVANE_TEST_MAIN(EventKitMeetRepositoryTest)
#include "EventKitMeetRepositoryTest.moc"
