#include "meetings/applications/MeetingsApplication.h"
#include "meetings/domain/MeetDomain.h"
#include "meetings/domain/MeetIdentity.h"
#include "meetings/domain/MeetTexts.h"
#include "meetings/domain/MeetValidationError.h"
#include "meetings/repositories/CompositeMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryError.h"
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

// The rules of meets, the composite and the use cases, and the calendar-store repository over a
// store kept in memory.
namespace {

const QDateTime nineUtc(QDate(2026, 1, 1), QTime(9, 0), Qt::UTC);

// A calendar store in memory: calendars, stored occurrences, and what was saved or removed.
class InMemoryEventKitStore final : public EventKitStoring {
public:
    int status = CalendarAuthorizationStatus::fullAccess;
    bool grants = false;
    int requests = 0;
    QList<CalendarStoreCalendar> all;
    std::optional<QString> defaultIdentifier;
    QList<CalendarStoreEvent> stored;
    std::optional<QString> refuseWith;
    QList<EventKitEventPredicate> asked;
    QList<std::pair<CalendarStoreEvent, CalendarStoreSpan>> removed;

    int authorizationStatus() const override { return status; }
    bool requestFullAccessToEvents() override
    {
        ++requests;
        return grants;
    }
    QList<CalendarStoreCalendar> calendars() const override { return all; }
    std::optional<CalendarStoreCalendar> calendar(const QString& identifier) const override
    {
        for (const CalendarStoreCalendar& c : all) {
            if (c.identifier == identifier)
                return c;
        }
        return std::nullopt;
    }
    std::optional<CalendarStoreCalendar> defaultCalendarForNewEvents() const override
    {
        return defaultIdentifier ? calendar(*defaultIdentifier) : std::nullopt;
    }
    QList<CalendarStoreEvent> events(const EventKitEventPredicate& predicate) const override
    {
        const_cast<InMemoryEventKitStore*>(this)->asked.append(predicate);
        QList<CalendarStoreEvent> found;
        for (const CalendarStoreEvent& e : stored) {
            if (predicate.calendarIdentifiers.contains(e.calendarIdentifier) && e.startDate < predicate.endDate
                && predicate.startDate < e.endDate
                && (!predicate.eventIdentifier || *predicate.eventIdentifier == e.eventIdentifier))
                found.append(e);
        }
        return found;
    }
    std::optional<CalendarStoreEvent> event(const QString& identifier) const override
    {
        for (const CalendarStoreEvent& e : stored) {
            if (e.eventIdentifier == identifier)
                return e;
        }
        return std::nullopt;
    }
    void save(CalendarStoreEvent& event, CalendarStoreSpan) override
    {
        if (refuseWith)
            throw CalendarStoreError(*refuseWith);
        if (event.eventIdentifier.isEmpty())
            event.eventIdentifier = QStringLiteral("new-%1").arg(stored.size());
        stored.append(event);
    }
    void remove(const CalendarStoreEvent& event, CalendarStoreSpan span) override
    {
        if (refuseWith)
            throw CalendarStoreError(*refuseWith);
        removed.append({event, span});
    }
};

CalendarStoreCalendar aCalendar(const QString& id, const QString& account = QStringLiteral("local-stub"))
{
    return {id, id + QStringLiteral(" title"), QStringLiteral("#1a2b3c"), QStringLiteral("local"), true,
        {account, account + QStringLiteral(" title"), QStringLiteral("local")}};
}

// A repository that records what reached it.
class RecordingRepository final : public MeetRepository {
public:
    QList<MeetEntity> meets;
    bool fails = false;
    int calls = 0;

    QList<MeetEntity> fetchMeets() override
    {
        ++calls;
        if (fails)
            throw EventKitMeetRepositoryError::accessDenied();
        return meets;
    }
    MeetEntity createMeet(const MeetDraft& draft) override
    {
        ++calls;
        if (fails)
            throw EventKitMeetRepositoryError::saveFailed(QStringLiteral("disk full"));
        MeetEntity meet;
        meet.metName = draft.title;
        return meet;
    }
    MeetEntity updateMeet(const MeetEntity& meet, const MeetDraft&) override
    {
        ++calls;
        return meet;
    }
    void deleteMeet(const MeetEntity&) override { ++calls; }
};

MeetEntity meetAt(const QString& name, const QDateTime& start)
{
    MeetEntity meet;
    meet.metName = name;
    meet.metDate = start;
    meet.metDuration = 60;
    return meet;
}

MeetDraft aDraft(const QString& title, int minutes, MeetRecurrenceFrequency recurrence = MeetRecurrenceFrequency::none,
    QSet<int> weekdays = {})
{
    return {title, QString(), nineUtc, nineUtc.addSecs(minutes * 60), recurrence, weekdays};
}

} // namespace

class MeetModelTest : public QObject {
    Q_OBJECT

    std::shared_ptr<InMemoryEventKitStore> m_store;

    std::shared_ptr<EventKitMeetRepositoryImpl> repository(
        QSet<QString> hidden = {}, std::optional<QString> defaultCalendar = std::nullopt) const
    {
        return std::make_shared<EventKitMeetRepositoryImpl>(m_store, QTimeZone::systemTimeZone(), 1, 14, hidden,
            defaultCalendar, std::make_shared<SettableClock>(QDateTime(QDate(2026, 1, 7), QTime(15, 30))));
    }

private Q_SLOTS:
    void init()
    {
        m_store = std::make_shared<InMemoryEventKitStore>();
        m_store->all = {aCalendar(QStringLiteral("work")), aCalendar(QStringLiteral("home"))};
        m_store->defaultIdentifier = QStringLiteral("home");
    }

    void shouldValidateTheTitleBeforeTheTimeRange()
    {
        const auto kindOf = [](const MeetDraft& draft) {
            try {
                MeetDomain::validate(draft);
            } catch (const MeetValidationError& error) {
                return std::optional(error.kind());
            }
            return std::optional<MeetValidationError::Case>();
        };
        QCOMPARE(kindOf(aDraft(QStringLiteral(" \n\t\u2003"), 0)), MeetValidationError::Case::invalidTitle);
        QCOMPARE(kindOf(aDraft(QStringLiteral("Plan"), 0)), MeetValidationError::Case::invalidTimeRange);
        QCOMPARE(kindOf(aDraft(QStringLiteral("Plan"), -5)), MeetValidationError::Case::invalidTimeRange);
        QCOMPARE(kindOf(aDraft(QStringLiteral("Plan"), 1)), std::nullopt);
    }

    void shouldDeriveIdentitiesFromTheMd5OfIdentifierAndStart()
    {
        QCOMPARE(MeetIdentity::forOccurrence(QStringLiteral("evt-1"), nineUtc),
            QUuid::fromString(QStringLiteral("74fba878-cdb4-8796-f113-b9b6d05749fd")));
        QCOMPARE(MeetIdentity::forOccurrence(QStringLiteral("evt-1"), nineUtc.addMSecs(500)),
            QUuid::fromString(QStringLiteral("45bf7cd0-a650-ac39-34fd-70e3d53eb053")));
        QCOMPARE(MeetIdentity::forBackendEvent(QStringLiteral("ABC")),
            QUuid::fromString(QStringLiteral("902fbdd2-b1df-0c4f-70b4-a5d23525e932")));
        QCOMPARE(MeetColor::fromCalendarColor(QStringLiteral("#abc")).hexValue, QStringLiteral("#AABBCC"));
        QCOMPARE(MeetColor::fromCalendarColor(QStringLiteral("#12ff34ff56ff")).hexValue, QStringLiteral("#123456"));
        QCOMPARE(MeetColor::fromCalendarColor(QStringLiteral("blue")).hexValue, QStringLiteral("#8E8E93"));
    }

    void shouldCheckAccessBeforeEveryOperation()
    {
        m_store->status = CalendarAuthorizationStatus::notDetermined;
        m_store->grants = true;
        QVERIFY(repository()->fetchMeets().isEmpty());
        QCOMPARE(m_store->requests, 1);

        for (int refused : {CalendarAuthorizationStatus::notDetermined, CalendarAuthorizationStatus::restricted,
                 CalendarAuthorizationStatus::denied, CalendarAuthorizationStatus::writeOnly}) {
            m_store->status = refused;
            m_store->grants = false;
            try {
                repository()->createMeet(aDraft(QStringLiteral("x"), 5));
                QFAIL("created without access");
            } catch (const EventKitMeetRepositoryError& error) {
                QCOMPARE(error.kind(), EventKitMeetRepositoryError::Case::accessDenied);
            }
        }
        QVERIFY(m_store->stored.isEmpty());
    }

    void shouldFetchTheWindowOfTheVisibleCalendars()
    {
        m_store->stored = {{QStringLiteral("e1"), QStringLiteral("e1"), {}, QStringLiteral("work"), {}, {}, {}, {},
            QDateTime(QDate(2026, 1, 7), QTime(8, 0)), QDateTime(QDate(2026, 1, 7), QTime(9, 0)), false,
            {{CalendarStoreFrequency::yearly, 1, {}, {}}}}};
        const QList<MeetEntity> meets = repository({QStringLiteral("home")})->fetchMeets();
        QCOMPARE(m_store->asked.size(), 1);
        QCOMPARE(m_store->asked.front().startDate, QDateTime(QDate(2026, 1, 6), QTime(0, 0)));
        QCOMPARE(m_store->asked.front().endDate, QDateTime(QDate(2026, 1, 21), QTime(0, 0)));
        QCOMPARE(m_store->asked.front().calendarIdentifiers, QStringList {QStringLiteral("work")});
        QCOMPARE(meets.size(), 1);
        QCOMPARE(meets.front().metName, MeetTexts::untitled());
        QCOMPARE(meets.front().metRecurrenceFrequency, MeetRecurrenceFrequency::none);
        QCOMPARE(meets.front().metCalendarName, QStringLiteral("work title"));

        m_store->asked.clear();
        QVERIFY(repository({QStringLiteral("home"), QStringLiteral("work")})->fetchMeets().isEmpty());
        QVERIFY(m_store->asked.isEmpty());
    }

    void shouldWriteRulesAndChooseTheCalendarForNewMeets()
    {
        // 1 January 2026 was a Thursday.
        const MeetEntity weekly = repository({}, QStringLiteral("work"))
                                      ->createMeet(aDraft(QStringLiteral("W"), 30, MeetRecurrenceFrequency::weekly));
        QCOMPARE(weekly.metCalendarIdentifier, QStringLiteral("work"));
        QCOMPARE(weekly.metRecurringWeekdays, QSet<int>({5}));
        QCOMPARE(m_store->stored.last().recurrenceRules,
            (QList<CalendarStoreRecurrenceRule> {{CalendarStoreFrequency::weekly, 1, {5}, {}}}));

        const MeetEntity monthly = repository({}, QStringLiteral("gone"))
                                       ->createMeet(aDraft(QStringLiteral("M"), 30, MeetRecurrenceFrequency::monthly));
        QCOMPARE(monthly.metCalendarIdentifier, QStringLiteral("home"));
        QCOMPARE(m_store->stored.last().recurrenceRules,
            (QList<CalendarStoreRecurrenceRule> {{CalendarStoreFrequency::monthly, 1, {}, {1}}}));

        m_store->defaultIdentifier.reset();
        try {
            repository()->createMeet(aDraft(QStringLiteral("N"), 30));
            QFAIL("created without a calendar");
        } catch (const EventKitMeetRepositoryError& error) {
            QCOMPARE(error, EventKitMeetRepositoryError::saveFailed(MeetTexts::noDefaultCalendar()));
        }
        m_store->refuseWith = QStringLiteral("Permission denied");
        try {
            repository({}, QStringLiteral("work"))->createMeet(aDraft(QStringLiteral("N"), 30));
            QFAIL("the store's refusal was lost");
        } catch (const EventKitMeetRepositoryError& error) {
            QCOMPARE(error, EventKitMeetRepositoryError::saveFailed(QStringLiteral("Permission denied")));
        }
    }

    // The link of a time block is written as text into the event and read back from it; text
    // another program left there, or a mangled id, links to nothing.
    void shouldCarryATaskLinkOnlyInTheFormItWrites()
    {
        const MeetTaskLink daily {MeetTaskLink::Kind::dailyTask, QUuid::createUuid()};
        MeetDraft draft = aDraft(QStringLiteral("Call"), 30);
        draft.taskLink = daily;
        const MeetEntity made = repository({}, QStringLiteral("work"))->createMeet(draft);
        QCOMPARE(
            m_store->stored.last().taskLink, QStringLiteral("daily-task:") + daily.id.toString(QUuid::WithoutBraces));
        QCOMPARE(made.metTaskLink, daily);

        const MeetTaskLink task {MeetTaskLink::Kind::task, QUuid::createUuid()};
        QCOMPARE(MeetTaskLink::fromRawValue(task.rawValue()), task);
        for (const QString& foreign : {QString(), QStringLiteral("task:"), QStringLiteral("task:not-a-uuid"),
                 QStringLiteral("project:") + task.id.toString(QUuid::WithoutBraces),
                 QStringLiteral("TASK:") + task.id.toString(QUuid::WithoutBraces)})
            QVERIFY2(!MeetTaskLink::fromRawValue(foreign), qPrintable(foreign));
    }

    void shouldRemoveTheSeriesFromItsOwnRecordAndASingleEventAlone()
    {
        CalendarStoreEvent series {QStringLiteral("s"), QStringLiteral("s"), {}, QStringLiteral("work"),
            QStringLiteral("S"), {}, {}, {}, nineUtc, nineUtc.addSecs(600), false,
            {{CalendarStoreFrequency::daily, 1, {}, {}}}};
        CalendarStoreEvent occurrence = series;
        occurrence.occurrenceIdentifier = QStringLiteral("20260102T090000Z");
        occurrence.startDate = nineUtc.addDays(1);
        occurrence.endDate = occurrence.startDate.addSecs(600);
        m_store->stored = {series, occurrence};
        const auto meets = repository();
        meets->deleteMeet(EventKitMeetRepositoryImpl::meet(occurrence, m_store->all.front()));
        QCOMPARE(m_store->removed.size(), 1);
        QCOMPARE(m_store->removed.front().first.occurrenceIdentifier, QString());
        QCOMPARE(m_store->removed.front().second, CalendarStoreSpan::futureEvents);

        MeetEntity missing = EventKitMeetRepositoryImpl::meet(occurrence, m_store->all.front());
        missing.metDate = missing.metDate.addSecs(3600);
        QVERIFY_THROWS_EXCEPTION(EventKitMeetRepositoryError, meets->deleteMeet(missing));
    }

    void shouldSortFetchedMeetsAndValidateBeforeAnyCall()
    {
        auto recording = std::make_shared<RecordingRepository>();
        recording->meets = {meetAt(QStringLiteral("late"), nineUtc.addSecs(60)),
            meetAt(QStringLiteral("early"), nineUtc), meetAt(QStringLiteral("late too"), nineUtc.addSecs(60))};
        const MeetingsApplication application(recording);
        QStringList names;
        for (const MeetEntity& meet : application.fetchMeets())
            names.append(meet.metName);
        QCOMPARE(names, (QStringList {QStringLiteral("early"), QStringLiteral("late"), QStringLiteral("late too")}));

        QVERIFY_THROWS_EXCEPTION(MeetValidationError, application.createMeet(aDraft(QStringLiteral(""), 30)));
        QVERIFY_THROWS_EXCEPTION(
            MeetValidationError, application.updateMeet(recording->meets.front(), aDraft(QStringLiteral("x"), 0)));
        QCOMPARE(recording->calls, 1);
    }

    void shouldMergeReadsAndSendWritesToTheFirstRepository()
    {
        auto failing = std::make_shared<RecordingRepository>();
        failing->fails = true;
        auto working = std::make_shared<RecordingRepository>();
        working->meets = {meetAt(QStringLiteral("kept"), nineUtc)};
        CompositeMeetRepositoryImpl composite({failing, working, working});
        QCOMPARE(composite.fetchMeets().size(), 2);

        try {
            composite.createMeet(aDraft(QStringLiteral("x"), 5));
            QFAIL("the first repository's failure was swallowed");
        } catch (const EventKitMeetRepositoryError& error) {
            QCOMPARE(error.localizedDescription(), QStringLiteral("disk full"));
        }
        QCOMPARE(working->calls, 2);

        CompositeMeetRepositoryImpl empty({});
        QVERIFY(empty.fetchMeets().isEmpty());
        QVERIFY_THROWS_EXCEPTION(CompositeMeetRepositoryError, empty.createMeet(aDraft(QStringLiteral("x"), 5)));
        QVERIFY_THROWS_EXCEPTION(CompositeMeetRepositoryError, empty.deleteMeet(working->meets.front()));
    }
};

TOLVANE_TEST_MAIN(MeetModelTest)
#include "MeetModelTest.moc"
