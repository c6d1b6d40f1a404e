#include "DirectCalendar.h"
#include "OffMainThread.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryError.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <algorithm>
#include <set>
#include <tuple>

// Times in calendars that other programs wrote, and in meets written here, read in the zone the
// program shows. Registered once per zone (TOLVANE_TEST_TZ) with the machine's own zone left
// different, so nothing passes because the two happen to agree. "Now" is Tuesday 17 March 2026,
// 10:00 in that zone: the schedule's window runs from Monday 16 March to Tuesday 31 March.
namespace {

QTimeZone zone()
{
    return QTimeZone::systemTimeZone();
}

QDateTime at(int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(2026, month, day), QTime(hour, minute), zone());
}

QByteArray calendarOf(const QByteArray& body)
{
    return "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//Tolvane tests//zones//EN\n" + body + "END:VCALENDAR\n";
}

// Zones without daylight-saving time, so the expected instants need no rules but Qt's.
QByteArray fixedZone(const QByteArray& tzid, const QByteArray& offset)
{
    return "BEGIN:VTIMEZONE\nTZID:" + tzid + "\nBEGIN:STANDARD\nTZOFFSETFROM:" + offset + "\nTZOFFSETTO:" + offset
        + "\nTZNAME:" + tzid + "\nDTSTART:19700101T000000\nEND:STANDARD\nEND:VTIMEZONE\n";
}

QByteArray vevent(const QByteArray& uid, const QByteArray& title, const QByteArray& start, const QByteArray& end,
    const QByteArray& extra = {})
{
    return "BEGIN:VEVENT\nUID:" + uid + "\nDTSTAMP:20260101T000000Z\nDTSTART" + start + "\nDTEND" + end
        + "\nSUMMARY:" + title + "\n" + extra + "END:VEVENT\n";
}

using Seen = std::tuple<QString, qint64, qint64>; // title, start, end

std::set<Seen> seen(const QList<MeetEntity>& meets)
{
    std::set<Seen> result;
    for (const MeetEntity& meet : meets)
        result.insert({meet.metName, meet.metDate.toSecsSinceEpoch(), meet.endDate().toSecsSinceEpoch()});
    return result;
}

QString describe(const std::set<Seen>& items)
{
    QStringList lines;
    for (const auto& [title, start, end] : items)
        lines.append(QStringLiteral("%1 %2..%3")
                         .arg(title, QDateTime::fromSecsSinceEpoch(start, zone()).toString(Qt::ISODate),
                             QDateTime::fromSecsSinceEpoch(end, zone()).toString(Qt::ISODate)));
    return lines.join(QLatin1Char('\n'));
}

QList<MeetEntity> named(const QList<MeetEntity>& meets, const QString& name)
{
    QList<MeetEntity> found;
    std::copy_if(
        meets.begin(), meets.end(), std::back_inserter(found), [&](const MeetEntity& m) { return m.metName == name; });
    return found;
}

// One line of a reference file: UID, title, start, end; see data/expand-reference.
struct Reference {
    QString uid;
    QString title;
    QDateTime start;
    QDateTime end;
    bool allDay;
};

QDateTime referenceTime(const QString& text)
{
    if (text.size() == 10)
        return QDateTime(QDate::fromString(text, Qt::ISODate), QTime(0, 0), zone());
    if (text.endsWith(QLatin1Char('Z')))
        return QDateTime::fromString(text, Qt::ISODate);
    // Floating: the wall-clock time it names, wherever it is read.
    return QDateTime(
        QDateTime::fromString(text, Qt::ISODate).date(), QDateTime::fromString(text, Qt::ISODate).time(), zone());
}

QList<Reference> readReference(const QString& path)
{
    QList<Reference> references;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return references;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QStringList fields = QString::fromUtf8(line).split(QLatin1Char('\t'));
        if (fields.size() == 4)
            references.append(
                {fields[0], fields[1], referenceTime(fields[2]), referenceTime(fields[3]), fields[2].size() == 10});
    }
    return references;
}

int weekdayOf(const QDate& day)
{
    return day.dayOfWeek() % 7 + 1;
}

} // namespace

class MeetTimeZonesTest : public QObject {
    Q_OBJECT

    CalendarStore* m_store = nullptr;
    std::shared_ptr<SettableClock> m_clock = std::make_shared<SettableClock>(at(3, 17, 10));
    QString m_calendarId;

    std::shared_ptr<EventKitMeetRepositoryImpl> repository(int daysBehind = 1, int daysAhead = 14) const
    {
        QSet<QString> hidden;
        for (const CalendarStoreCalendar& calendar : m_store->calendars()) {
            if (calendar.identifier != m_calendarId)
                hidden.insert(calendar.identifier);
        }
        return std::make_shared<EventKitMeetRepositoryImpl>(
            LiveEventKitStore::shared(), zone(), daysBehind, daysAhead, hidden, m_calendarId, m_clock);
    }

    QList<MeetEntity> fetch(int daysBehind = 1, int daysAhead = 14) const
    {
        auto meets = repository(daysBehind, daysAhead);
        return offMainThread([&] { return meets->fetchMeets(); });
    }

    void import(const QByteArray& body) const
    {
        const QByteArray text = calendarOf(body);
        QVERIFY(offMainThread([&] { return m_store->importCalendarData(m_calendarId, text); }) > 0);
    }

    static MeetDraft draft(const QString& title, const QDateTime& start, int minutes,
        MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none, QSet<int> weekdays = {})
    {
        return {title, QString(), start, start.addSecs(minutes * 60), recurrence, weekdays};
    }

    MeetEntity create(const MeetDraft& draft) const
    {
        auto meets = repository();
        return offMainThread([&] { return meets->createMeet(draft); });
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_store = &CalendarStore::shared();
        const QByteArray system = QTimeZone::systemTimeZoneId();
        QVERIFY2(qgetenv("TZ") == system, "the zone under test is Qt's zone");
        QFile localtime(QStringLiteral("/etc/localtime"));
        const QString machine = localtime.symLinkTarget();
        QVERIFY2(!machine.endsWith(QString::fromUtf8(system)),
            qPrintable(QStringLiteral("the machine's zone %1 must differ from the one under test").arg(machine)));
    }

    void init()
    {
        m_clock->set(at(3, 17, 10));
        m_calendarId = QStringLiteral("tolvane-zones-") + QUuid::createUuid().toString(QUuid::Id128);
        m_store->addLocalCalendar(m_calendarId, QStringLiteral("Zones under test"), QStringLiteral("#335577"));
        QTRY_VERIFY(m_store->calendar(m_calendarId).has_value());
        // The calendar factory learns of a new calendar a moment after the registry.
        QTRY_VERIFY_WITH_TIMEOUT(
            offMainThread([&] { return DirectCalendar(m_calendarId).client() != nullptr; }), 30000);
    }

    void cleanup() { m_store->disableCalendar(m_calendarId); }

    void shouldEditAndDeleteOccurrencesOfSeriesInNamedZones()
    {
        import(fixedZone("Asia/Kolkata", "+0530") + fixedZone("Asia/Tokyo", "+0900")
            + vevent("kolkata-sync", "Kolkata sync", ";TZID=Asia/Kolkata:20260302T190000",
                ";TZID=Asia/Kolkata:20260302T200000", "RRULE:FREQ=WEEKLY;BYDAY=MO,TH\n")
            + vevent("tokyo-daily", "Tokyo daily", ";TZID=Asia/Tokyo:20260310T070000",
                ";TZID=Asia/Tokyo:20260310T073000", "RRULE:FREQ=DAILY;COUNT=40\n"));
        auto meets = repository();
        const QList<MeetEntity> syncs = named(fetch(), QStringLiteral("Kolkata sync"));
        QCOMPARE(syncs.size(), 5); // 16, 19, 23, 26, 30 March
        QCOMPARE(syncs.front().metRecurringWeekdays, QSet<int>({2, 5}));

        // This occurrence alone: an hour later and retitled; the others stay.
        const MeetEntity third = syncs.at(2);
        const QDateTime later = third.metDate.addSecs(3600);
        MeetEntity moved = offMainThread([&] {
            return meets->updateMeet(third,
                draft(QStringLiteral("Moved sync"), later, 60, MeetRecurrenceFrequency::weekly,
                    third.metRecurringWeekdays));
        });
        QCOMPARE(moved.metDate, later);
        QList<MeetEntity> after = fetch();
        QCOMPARE(named(after, QStringLiteral("Kolkata sync")).size(), 4);
        QCOMPARE(named(after, QStringLiteral("Moved sync")).size(), 1);
        QCOMPARE(named(after, QStringLiteral("Moved sync")).front().metDate, later);

        // A moved occurrence is found where it now is.
        moved = named(after, QStringLiteral("Moved sync")).front();
        offMainThread([&] {
            return meets->updateMeet(moved,
                draft(QStringLiteral("Moved twice"), later, 30, MeetRecurrenceFrequency::weekly,
                    moved.metRecurringWeekdays));
        });
        after = fetch();
        QCOMPARE(named(after, QStringLiteral("Moved twice")).size(), 1);
        QCOMPARE(named(after, QStringLiteral("Moved twice")).front().metDuration, 1800.0);

        // Any occurrence takes its whole series along; the other series stays.
        const QList<MeetEntity> tokyo = named(after, QStringLiteral("Tokyo daily"));
        QVERIFY(tokyo.size() >= 14);
        offMainThread([&] { meets->deleteMeet(tokyo.at(5)); });
        after = fetch();
        QVERIFY(named(after, QStringLiteral("Tokyo daily")).isEmpty());
        QCOMPARE(named(after, QStringLiteral("Kolkata sync")).size(), 4);
    }

    void shouldEditAnOccurrenceNextToTheHourSkippedInSpring()
    {
        // 02:30 in Madrid does not exist on 29 March; libical puts the next day's occurrence at
        // 03:30, and an edit made there would name an occurrence the series does not have.
        QFile ics(QStringLiteral(TOLVANE_MEET_DATA "/dst-edge-hours.ics"));
        QVERIFY(ics.open(QIODevice::ReadOnly));
        const QByteArray text = ics.readAll();
        QVERIFY(offMainThread([&] { return m_store->importCalendarData(m_calendarId, text); }) > 0);
        auto meets = repository();
        const QList<MeetEntity> nights = named(fetch(), QStringLiteral("Night backup in spring"));
        const QTimeZone madrid("Europe/Madrid");
        const QDateTime monday(QDate(2026, 3, 30), QTime(2, 30), madrid);
        const auto found
            = std::find_if(nights.begin(), nights.end(), [&](const MeetEntity& m) { return m.metDate == monday; });
        QVERIFY(found != nights.end());
        offMainThread([&] {
            return meets->updateMeet(
                *found, draft(QStringLiteral("Edited backup"), monday, 30, MeetRecurrenceFrequency::daily));
        });
        const QList<MeetEntity> after = fetch();
        QCOMPARE(named(after, QStringLiteral("Night backup in spring")).size(), nights.size() - 1);
        const QList<MeetEntity> edited = named(after, QStringLiteral("Edited backup"));
        QCOMPARE(edited.size(), 1);
        QCOMPARE(edited.front().metDate, monday);
    }

    void shouldWriteRepeatingMeetsSoThatTheirRulesMeanTheShownZone()
    {
        // Late in the evening and just after midnight: in every zone but UTC one of them lies on
        // another UTC day than the local one.
        create(draft(QStringLiteral("Mon Wed late"), at(3, 16, 20), 60, MeetRecurrenceFrequency::weekly, {2, 4}));
        create(draft(QStringLiteral("Mon Wed early"), at(3, 16, 0, 30), 30, MeetRecurrenceFrequency::weekly, {2, 4}));
        create(draft(QStringLiteral("Daily nine"), at(3, 17, 9), 30, MeetRecurrenceFrequency::daily));
        create(draft(QStringLiteral("Month end"), at(3, 31, 20), 60, MeetRecurrenceFrequency::monthly));
        create(draft(QStringLiteral("Single"), at(3, 18, 23, 30), 60));

        // As another client sees them: times written in the shown zone, rules that keep weekday,
        // day and hour.
        struct Expected {
            QString title;
            QTime time;
            std::function<bool(const QDate&)> day;
        };
        const QList<Expected> expected {
            {QStringLiteral("Mon Wed late"), QTime(20, 0),
                [](const QDate& d) { return d.dayOfWeek() == 1 || d.dayOfWeek() == 3; }},
            {QStringLiteral("Mon Wed early"), QTime(0, 30),
                [](const QDate& d) { return d.dayOfWeek() == 1 || d.dayOfWeek() == 3; }},
            {QStringLiteral("Daily nine"), QTime(9, 0), [](const QDate&) { return true; }},
            {QStringLiteral("Month end"), QTime(20, 0), [](const QDate& d) { return d.day() == 31; }},
        };
        offMainThread([&] {
            DirectCalendar direct(m_calendarId);
            for (const QString& uid : direct.uids()) {
                ICalComponent* master = direct.master(uid);
                const QString title = QString::fromUtf8(i_cal_component_get_summary(master));
                const WrittenTime start = writtenTime(master, I_CAL_DTSTART_PROPERTY);
                const WrittenTime end = writtenTime(master, I_CAL_DTEND_PROPERTY);
                QVERIFY2(!start.isUtc && zoneOfTzid(start.tzid) == zone(), qPrintable(title + " " + start.tzid));
                QCOMPARE(end.tzid, start.tzid);
                const auto rule = std::find_if(
                    expected.begin(), expected.end(), [&](const Expected& e) { return e.title == title; });
                if (rule != expected.end()) {
                    const QList<QDateTime> wallClocks = ruleWallClocks(master, 12);
                    QCOMPARE(wallClocks.size(), 12);
                    QDate previous;
                    for (const QDateTime& wallClock : wallClocks) {
                        QVERIFY2(wallClock.time() == rule->time && rule->day(wallClock.date()),
                            qPrintable(title + " " + wallClock.toString(Qt::ISODate)));
                        if (title == QLatin1String("Daily nine") && previous.isValid())
                            QCOMPARE(previous.daysTo(wallClock.date()), 1);
                        previous = wallClock.date();
                    }
                }
                g_object_unref(master);
            }
        });

        // And as the schedule shows them, across the change to summer time where there is one.
        const QList<MeetEntity> meets = fetch(1, 80);
        const QList<MeetEntity> nine = named(meets, QStringLiteral("Daily nine"));
        QCOMPARE(nine.size(), 80);
        for (const MeetEntity& meet : nine)
            QCOMPARE(meet.metDate.toTimeZone(zone()).time(), QTime(9, 0));
        for (const QString& title : {QStringLiteral("Mon Wed late"), QStringLiteral("Mon Wed early")}) {
            const QList<MeetEntity> occurrences = named(meets, title);
            QVERIFY(occurrences.size() >= 22);
            for (const MeetEntity& meet : occurrences) {
                const QDateTime local = meet.metDate.toTimeZone(zone());
                QVERIFY2(local.date().dayOfWeek() == 1 || local.date().dayOfWeek() == 3,
                    qPrintable(title + local.toString(Qt::ISODate)));
            }
        }
        const QList<MeetEntity> monthEnds = named(meets, QStringLiteral("Month end"));
        QCOMPARE(monthEnds.size(), 2);
        QCOMPARE(monthEnds.at(0).metDate, at(3, 31, 20));
        QCOMPARE(monthEnds.at(1).metDate, at(5, 31, 20));
        QCOMPARE(monthEnds.at(1).metRecurrenceFrequency, MeetRecurrenceFrequency::monthly);
        QCOMPARE(named(meets, QStringLiteral("Single")).front().metDate, at(3, 18, 23, 30));
    }

    void shouldStartANewSeriesOnItsFirstOccurrence()
    {
        // Chosen on Sunday 15 March, repeating Monday to Friday.
        const MeetEntity created = create(
            draft(QStringLiteral("Weekdays"), at(3, 15, 10), 30, MeetRecurrenceFrequency::weekly, {2, 3, 4, 5, 6}));
        QCOMPARE(created.metDate, at(3, 16, 10));
        QCOMPARE(created.metDuration, 1800.0);
        offMainThread([&] {
            DirectCalendar direct(m_calendarId);
            ICalComponent* master = direct.master(created.metOriginalIdentifier);
            QVERIFY(master);
            const WrittenTime start = writtenTime(master, I_CAL_DTSTART_PROPERTY);
            QCOMPARE(start.wallClock.date(), QDate(2026, 3, 16));
            QCOMPARE(start.wallClock.time(), QTime(10, 0));
            for (const QDateTime& wallClock : ruleWallClocks(master, 20))
                QVERIFY2(wallClock.date().dayOfWeek() <= 5, qPrintable(wallClock.toString(Qt::ISODate)));
            g_object_unref(master);
        });
        const QList<MeetEntity> meets = fetch(3, 14);
        QCOMPARE(meets.size(), 11); // 16 to 30 March, Monday to Friday
        for (const MeetEntity& meet : meets)
            QVERIFY(weekdayOf(meet.metDate.toTimeZone(zone()).date()) != 1);
    }

    void shouldReadFloatingTimesInTheShownZoneAtTheWindowEdges()
    {
        import(vevent("early", "Early floating", ":20260316T010000", ":20260316T020000")
            + vevent("midnight", "Midnight floating", ":20260316T000000", ":20260316T003000")
            + vevent("late", "Late floating", ":20260330T220000", ":20260330T230000")
            + vevent("last", "Last floating", ":20260330T233000", ":20260331T000000")
            + vevent("before", "Before floating", ":20260315T230000", ":20260316T000000")
            + vevent("after", "After floating", ":20260331T000000", ":20260331T010000"));
        const std::set<Seen> expected {
            {QStringLiteral("Early floating"), at(3, 16, 1).toSecsSinceEpoch(), at(3, 16, 2).toSecsSinceEpoch()},
            {QStringLiteral("Midnight floating"), at(3, 16, 0).toSecsSinceEpoch(), at(3, 16, 0, 30).toSecsSinceEpoch()},
            {QStringLiteral("Late floating"), at(3, 30, 22).toSecsSinceEpoch(), at(3, 30, 23).toSecsSinceEpoch()},
            {QStringLiteral("Last floating"), at(3, 30, 23, 30).toSecsSinceEpoch(), at(3, 31, 0).toSecsSinceEpoch()},
        };
        const std::set<Seen> read = seen(fetch());
        QVERIFY2(read == expected,
            qPrintable(QStringLiteral("read:\n%1\nexpected:\n%2").arg(describe(read), describe(expected))));
    }

    void shouldExpandRepeatingFloatingEventsInTheShownZone()
    {
        import(vevent("floating-daily", "Floating daily", ":20260301T080000", ":20260301T083000", "RRULE:FREQ=DAILY\n")
            + vevent("floating-weekly", "Floating weekly", ":20260302T233000", ":20260303T000000",
                "RRULE:FREQ=WEEKLY;BYDAY=MO,FR\n"));
        const QList<MeetEntity> meets = fetch();
        const QList<MeetEntity> daily = named(meets, QStringLiteral("Floating daily"));
        QCOMPARE(daily.size(), 15);
        for (int i = 0; i < daily.size(); ++i)
            QCOMPARE(daily.at(i).metDate, at(3, 16 + i, 8));
        const QList<MeetEntity> weekly = named(meets, QStringLiteral("Floating weekly"));
        QList<QDateTime> starts;
        for (const MeetEntity& meet : weekly)
            starts.append(meet.metDate);
        QCOMPARE(starts,
            QList<QDateTime>(
                {at(3, 16, 23, 30), at(3, 20, 23, 30), at(3, 23, 23, 30), at(3, 27, 23, 30), at(3, 30, 23, 30)}));
    }

    void shouldReadEachDayExactlyTheOccurrencesThatFallOnIt()
    {
        // Daily series far from the shown zone on either side, and in UTC.
        import(fixedZone("Asia/Kolkata", "+0530") + fixedZone("Asia/Tokyo", "+0900")
            + fixedZone("America/Bogota", "-0500")
            + vevent("kolkata", "Kolkata", ";TZID=Asia/Kolkata:20260301T100000", ";TZID=Asia/Kolkata:20260301T110000",
                "RRULE:FREQ=DAILY\n")
            + vevent("kolkata-evening", "Kolkata evening", ";TZID=Asia/Kolkata:20260301T230000",
                ";TZID=Asia/Kolkata:20260301T233000", "RRULE:FREQ=DAILY\n")
            + vevent("tokyo", "Tokyo", ";TZID=Asia/Tokyo:20260301T070000", ";TZID=Asia/Tokyo:20260301T080000",
                "RRULE:FREQ=DAILY\n")
            + vevent("bogota", "Bogota", ";TZID=America/Bogota:20260301T213000", ";TZID=America/Bogota:20260301T223000",
                "RRULE:FREQ=DAILY\n")
            + vevent("utc", "UTC", ":20260301T233000Z", ":20260302T003000Z", "RRULE:FREQ=DAILY\n"));
        const QList<std::tuple<QString, QByteArray, QTime, int>> series {
            {QStringLiteral("Kolkata"), "Asia/Kolkata", QTime(10, 0), 60},
            {QStringLiteral("Kolkata evening"), "Asia/Kolkata", QTime(23, 0), 30},
            {QStringLiteral("Tokyo"), "Asia/Tokyo", QTime(7, 0), 60},
            {QStringLiteral("Bogota"), "America/Bogota", QTime(21, 30), 60},
            {QStringLiteral("UTC"), "UTC", QTime(23, 30), 60},
        };
        for (int day = 20; day <= 31; ++day) {
            m_clock->set(at(3, day, 12));
            const QDateTime from = at(3, day, 0);
            const QDateTime to = from.addDays(1);
            std::set<Seen> expected;
            for (const auto& [title, zoneId, time, minutes] : series) {
                const QTimeZone seriesZone(zoneId);
                for (int offset = -2; offset <= 2; ++offset) {
                    const QDateTime start(QDate(2026, 3, day).addDays(offset), time, seriesZone);
                    const QDateTime end = start.addSecs(minutes * 60);
                    if (start < to && from < end)
                        expected.insert({title, start.toSecsSinceEpoch(), end.toSecsSinceEpoch()});
                }
            }
            const std::set<Seen> read = seen(fetch(0, 1));
            QVERIFY2(read == expected,
                qPrintable(QStringLiteral("day %1\nread:\n%2\nexpected:\n%3")
                               .arg(day)
                               .arg(describe(read), describe(expected))));
        }
    }

    void shouldLeaveOutAllDayEventsThatEndWhereTheWindowStarts()
    {
        import(vevent("sunday", "Sunday", ";VALUE=DATE:20260315", ";VALUE=DATE:20260316")
            + vevent("weekend", "Weekend", ";VALUE=DATE:20260314", ";VALUE=DATE:20260316")
            + vevent("monday", "Monday", ";VALUE=DATE:20260316", ";VALUE=DATE:20260317")
            + vevent("across", "Across", ";VALUE=DATE:20260315", ";VALUE=DATE:20260317")
            + vevent("last", "Last day", ";VALUE=DATE:20260330", ";VALUE=DATE:20260331")
            + vevent("after", "After", ";VALUE=DATE:20260331", ";VALUE=DATE:20260401"));
        const std::set<Seen> expected {
            {QStringLiteral("Monday"), at(3, 16, 0).toSecsSinceEpoch(), at(3, 17, 0).toSecsSinceEpoch()},
            {QStringLiteral("Across"), at(3, 15, 0).toSecsSinceEpoch(), at(3, 17, 0).toSecsSinceEpoch()},
            {QStringLiteral("Last day"), at(3, 30, 0).toSecsSinceEpoch(), at(3, 31, 0).toSecsSinceEpoch()},
        };
        const QList<MeetEntity> meets = fetch();
        QVERIFY(std::all_of(meets.begin(), meets.end(), [](const MeetEntity& m) { return m.metIsAllDay; }));
        const std::set<Seen> read = seen(meets);
        QVERIFY2(read == expected,
            qPrintable(QStringLiteral("read:\n%1\nexpected:\n%2").arg(describe(read), describe(expected))));
    }

    void shouldReadEveryOccurrenceOfTheCorpusAsAnIndependentExpansionHasIt_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString& file : QDir(QStringLiteral(TOLVANE_MEET_DATA)).entryList({QStringLiteral("*.expected")}))
            QTest::newRow(qPrintable(file)) << file.chopped(int(qstrlen(".expected")));
    }

    // Calendars in the forms servers and desktop clients export, read over all of 2026 and
    // compared, occurrence by occurrence, with python-dateutil's expansion of the same files.
    void shouldReadEveryOccurrenceOfTheCorpusAsAnIndependentExpansionHasIt()
    {
        QFETCH(QString, file);
        const QString base = QStringLiteral(TOLVANE_MEET_DATA) + QLatin1Char('/') + file;
        QFile ics(base + QStringLiteral(".ics"));
        QVERIFY(ics.open(QIODevice::ReadOnly));
        const QByteArray text = ics.readAll();
        QVERIFY(offMainThread([&] { return m_store->importCalendarData(m_calendarId, text); }) > 0);

        m_clock->set(QDateTime(QDate(2026, 1, 1), QTime(12, 0), zone()));
        const QDateTime from(QDate(2026, 1, 1), QTime(0, 0), zone());
        const QDateTime to(QDate(2027, 1, 1), QTime(0, 0), zone());
        using Row = std::tuple<QString, QString, qint64, qint64, bool>;
        std::set<Row> expected;
        for (const Reference& r : readReference(base + QStringLiteral(".expected"))) {
            const bool inWindow = r.end <= r.start ? (from <= r.start && r.start < to) : (r.start < to && from < r.end);
            if (inWindow)
                expected.insert({r.uid, r.title, r.start.toSecsSinceEpoch(), r.end.toSecsSinceEpoch(), r.allDay});
        }
        QVERIFY(expected.size() > 10);

        std::set<Row> read;
        for (const MeetEntity& m : fetch(0, 365))
            read.insert({m.metOriginalIdentifier, m.metName, m.metDate.toSecsSinceEpoch(),
                m.endDate().toSecsSinceEpoch(), m.metIsAllDay});
        QStringList differences;
        for (const auto& [rows, other, label] :
            {std::tuple {&read, &expected, "read only"}, std::tuple {&expected, &read, "expected only"}}) {
            for (const Row& row : *rows) {
                if (!other->count(row))
                    differences.append(
                        QStringLiteral("%1: %2 \"%3\" %4..%5%6")
                            .arg(QLatin1String(label), std::get<0>(row).left(24), std::get<1>(row),
                                QDateTime::fromSecsSinceEpoch(std::get<2>(row), zone()).toString(Qt::ISODate),
                                QDateTime::fromSecsSinceEpoch(std::get<3>(row), zone()).toString(Qt::ISODate),
                                std::get<4>(row) ? QStringLiteral(" all day") : QString()));
            }
        }
        QVERIFY2(differences.isEmpty(), qPrintable(differences.join(QLatin1Char('\n'))));
    }
};

TOLVANE_TEST_MAIN(MeetTimeZonesTest)
#include "MeetTimeZonesTest.moc"
