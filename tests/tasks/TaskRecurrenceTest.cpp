#include "tasks/domain/TaskRecurrence.h"

#include "support/TestMain.h"
#include "support/ZoneScope.h"
#include "tasks/entities/TaskRecurrenceCodec.h"

#include <ctime>

namespace {

using Frequency = RecurrenceFrequencyEnum;

TaskRecurrenceEntity rule(Frequency frequency, int interval = 1)
{
    TaskRecurrenceEntity made;
    made.frequency = frequency;
    made.interval = interval;
    return made;
}

TaskEntity dueOn(QDate day, const TaskRecurrenceEntity& repeat)
{
    TaskEntity task;
    task.tasTitle = QStringLiteral("Repeating");
    task.tasDueDate = TaskEntity::dueOnDay(day);
    task.tasRecurrence = repeat;
    return task;
}

// The due days of the first `count` occurrences after the task, each completed on its due day.
QList<QDate> series(TaskEntity task, int count)
{
    QList<QDate> days;
    for (int i = 0; i < count; ++i) {
        const std::optional<TaskEntity> next
            = TaskRecurrence::nextOccurrence(task, QDateTime(*task.dueDay(), QTime(18, 0)));
        if (!next)
            break;
        days.append(*next->dueDay());
        task = *next;
    }
    return days;
}

} // namespace

Q_DECLARE_METATYPE(TaskRecurrenceEntity)

class TaskRecurrenceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nextDays_data()
    {
        QTest::addColumn<TaskRecurrenceEntity>("repeat");
        QTest::addColumn<QDate>("due");
        QTest::addColumn<QList<QDate>>("expected");

        QTest::newRow("every 3 days across a month end") << rule(Frequency::daily,
            3) << QDate(2027, 1, 30) << QList<QDate> {QDate(2027, 2, 2), QDate(2027, 2, 5), QDate(2027, 2, 8)};

        auto weekdays = rule(Frequency::weekly);
        weekdays.weekdays = {Qt::Monday, Qt::Wednesday, Qt::Friday};
        QTest::newRow("Monday, Wednesday and Friday")
            << weekdays << QDate(2026, 11, 20) // a Friday
            << QList<QDate> {QDate(2026, 11, 23), QDate(2026, 11, 25), QDate(2026, 11, 27), QDate(2026, 11, 30)};

        auto fortnightly = rule(Frequency::weekly, 2);
        fortnightly.weekdays = {Qt::Tuesday, Qt::Thursday};
        QTest::newRow("Tuesday and Thursday every other week")
            << fortnightly << QDate(2026, 11, 24) // a Tuesday
            << QList<QDate> {QDate(2026, 11, 26), QDate(2026, 12, 8), QDate(2026, 12, 10), QDate(2026, 12, 22)};

        QTest::newRow("every 2 weeks on the due date's weekday") << rule(
            Frequency::weekly, 2) << QDate(2026, 12, 23) << QList<QDate> {QDate(2027, 1, 6), QDate(2027, 1, 20)};

        QTest::newRow("the 31st falls back in short months and returns")
            << rule(Frequency::monthly) << QDate(2027, 1, 31)
            << QList<QDate> {QDate(2027, 2, 28), QDate(2027, 3, 31), QDate(2027, 4, 30), QDate(2027, 5, 31)};

        auto thirtieth = rule(Frequency::monthly);
        thirtieth.monthDay = 30;
        QTest::newRow("the 30th in a leap February")
            << thirtieth << QDate(2028, 1, 30) << QList<QDate> {QDate(2028, 2, 29), QDate(2028, 3, 30)};

        auto lastDay = rule(Frequency::monthly);
        lastDay.monthDay = -1;
        QTest::newRow("the last day of the month")
            << lastDay << QDate(2027, 1, 31)
            << QList<QDate> {QDate(2027, 2, 28), QDate(2027, 3, 31), QDate(2027, 4, 30)};

        auto lastFriday = rule(Frequency::monthly);
        lastFriday.weekdayOrdinal = -1;
        lastFriday.ordinalWeekday = Qt::Friday;
        QTest::newRow("the last Friday") << lastFriday << QDate(2026, 11, 27)
                                         << QList<QDate> {QDate(2026, 12, 25), QDate(2027, 1, 29), QDate(2027, 2, 26)};

        auto fifthMonday = rule(Frequency::monthly);
        fifthMonday.weekdayOrdinal = 5;
        fifthMonday.ordinalWeekday = Qt::Monday;
        QTest::newRow("a fifth Monday skips the months without one")
            << fifthMonday << QDate(2026, 11, 30) << QList<QDate> {QDate(2027, 3, 29), QDate(2027, 5, 31)};

        auto secondTuesdayQuarterly = rule(Frequency::monthly, 3);
        secondTuesdayQuarterly.weekdayOrdinal = 2;
        secondTuesdayQuarterly.ordinalWeekday = Qt::Tuesday;
        QTest::newRow("the second Tuesday every 3 months")
            << secondTuesdayQuarterly << QDate(2026, 11, 10) << QList<QDate> {QDate(2027, 2, 9), QDate(2027, 5, 11)};

        QTest::newRow("29 February yearly")
            << rule(Frequency::yearly) << QDate(2028, 2, 29)
            << QList<QDate> {QDate(2029, 2, 28), QDate(2030, 2, 28), QDate(2031, 2, 28), QDate(2032, 2, 29)};

        QTest::newRow("every 2 years") << rule(Frequency::yearly, 2) << QDate(2026, 12, 31)
                                       << QList<QDate> {QDate(2028, 12, 31), QDate(2030, 12, 31)};
    }

    void nextDays()
    {
        QFETCH(TaskRecurrenceEntity, repeat);
        QFETCH(QDate, due);
        QFETCH(QList<QDate>, expected);

        QCOMPARE(series(dueOn(due, repeat), int(expected.size())), expected);
    }

    void theSeriesEndsAfterACountOrOnADate()
    {
        auto fiveTimes = rule(Frequency::daily);
        fiveTimes.endAfterCount = 3;
        QCOMPARE(
            series(dueOn(QDate(2026, 11, 1), fiveTimes), 10), (QList<QDate> {QDate(2026, 11, 2), QDate(2026, 11, 3)}));

        auto untilDate = rule(Frequency::weekly);
        untilDate.endOnDate = QDate(2026, 11, 15);
        QCOMPARE(
            series(dueOn(QDate(2026, 11, 1), untilDate), 10), (QList<QDate> {QDate(2026, 11, 8), QDate(2026, 11, 15)}));

        // The occurrence number carries on, so a count survives every step.
        const TaskEntity first = dueOn(QDate(2026, 11, 1), fiveTimes);
        QCOMPARE(TaskRecurrence::nextOccurrence(first, QDateTime::currentDateTime())->tasOccurrence, 2);
    }

    void fromTheCompletionCountsFromTheDayItWasDone()
    {
        auto watering = rule(Frequency::weekly, 2);
        watering.anchor = RecurrenceAnchorEnum::completion;
        const TaskEntity task = dueOn(QDate(2026, 11, 2), watering);

        // Done four days late: two weeks from then, not from the due date.
        const auto late = TaskRecurrence::nextOccurrence(task, QDateTime(QDate(2026, 11, 6), QTime(20, 0)));
        QCOMPARE(late->dueDay(), QDate(2026, 11, 20));

        auto monthly = rule(Frequency::monthly);
        monthly.anchor = RecurrenceAnchorEnum::completion;
        const auto early = TaskRecurrence::nextOccurrence(
            dueOn(QDate(2026, 11, 30), monthly), QDateTime(QDate(2026, 11, 12), QTime(8, 0)));
        QCOMPARE(early->dueDay(), QDate(2026, 12, 12));
    }

    void theNextOneIsOpenAndKeepsEverythingElse()
    {
        TaskEntity task = dueOn(QDate(2026, 11, 20), rule(Frequency::daily));
        task.tasIsDone = true;
        task.tasCompletedAt = QDateTime(QDate(2026, 11, 20), QTime(10, 0));
        task.tasEisenhowerTag = EisenhowerTagEnum::planning;
        task.tasReminderMinutesBefore = 30;

        const TaskEntity next = *TaskRecurrence::nextOccurrence(task, *task.tasCompletedAt);
        QVERIFY(next.tasId != task.tasId);
        QVERIFY(!next.tasIsDone);
        QCOMPARE(next.tasCompletedAt, std::nullopt);
        QCOMPARE(next.tasTitle, task.tasTitle);
        QCOMPARE(next.talId, task.talId);
        QCOMPARE(next.tasEisenhowerTag, task.tasEisenhowerTag);
        QCOMPARE(next.tasReminderMinutesBefore, 30);
        QVERIFY(!next.tasDueHasTime);
        QCOMPARE(next.tasDueDate, TaskEntity::dueOnDay(QDate(2026, 11, 21)));

        TaskEntity once = task;
        once.tasRecurrence.reset();
        QCOMPARE(TaskRecurrence::nextOccurrence(once, *task.tasCompletedAt), std::nullopt);
    }

    // 09:00 in Madrid is 08:00 UTC in winter and 07:00 UTC in summer: the task stays at 09:00.
    void aTimedTaskKeepsItsLocalTimeAcrossDaylightSaving()
    {
        const ZoneScope madrid("Europe/Madrid");
        TaskEntity task = dueOn(QDate(2027, 3, 27), rule(Frequency::daily));
        task.tasDueDate = QDateTime(QDate(2027, 3, 27), QTime(9, 0));
        task.tasDueHasTime = true;
        QCOMPARE(task.tasDueDate->toUTC().time(), QTime(8, 0));

        const TaskEntity sunday = *TaskRecurrence::nextOccurrence(task, *task.tasDueDate);
        QCOMPARE(sunday.tasDueDate->toLocalTime(), QDateTime(QDate(2027, 3, 28), QTime(9, 0)));
        QCOMPARE(sunday.tasDueDate->toUTC().time(), QTime(7, 0));
        QVERIFY(sunday.tasDueHasTime);

        // And back in October.
        task.tasDueDate = QDateTime(QDate(2027, 10, 30), QTime(9, 0));
        const TaskEntity autumn = *TaskRecurrence::nextOccurrence(task, *task.tasDueDate);
        QCOMPARE(autumn.tasDueDate->toLocalTime(), QDateTime(QDate(2027, 10, 31), QTime(9, 0)));
        QCOMPARE(autumn.tasDueDate->toUTC().time(), QTime(8, 0));
    }

    // A whole-day task is the same calendar day in every zone: a late-evening completion in a
    // zone behind UTC must not move it a day.
    void aWholeDayStaysTheSameDayInAnyZone()
    {
        const ZoneScope honolulu("Pacific/Honolulu");
        const TaskEntity task = dueOn(QDate(2026, 11, 20), rule(Frequency::daily));
        const TaskEntity next = *TaskRecurrence::nextOccurrence(task, QDateTime(QDate(2026, 11, 20), QTime(23, 30)));
        QCOMPARE(next.dueDay(), QDate(2026, 11, 21));
        QCOMPARE(next.tasDueDate->toUTC(), QDateTime(QDate(2026, 11, 21), QTime(0, 0), Qt::UTC));
    }

    void rulesSurviveTheirTextForm()
    {
        auto full = rule(Frequency::monthly, 2);
        full.weekdayOrdinal = -1;
        full.ordinalWeekday = Qt::Friday;
        full.anchor = RecurrenceAnchorEnum::completion;
        full.endAfterCount = 7;
        full.endOnDate = QDate(2027, 12, 31);
        auto weekly = rule(Frequency::weekly, 3);
        weekly.weekdays = {Qt::Monday, Qt::Sunday};
        weekly.monthDay = -1;
        for (const TaskRecurrenceEntity& original : {full, weekly, rule(Frequency::yearly)})
            QCOMPARE(TaskRecurrenceCodec::fromText(TaskRecurrenceCodec::toText(original)), original);

        // What this version cannot follow is no rule rather than a wrong one.
        for (const char* text : {R"({"frequency":"hourly","interval":1})", R"({"frequency":"daily","interval":0})",
                 R"({"frequency":"weekly","weekdays":[8]})", R"({"frequency":"daily","anchor":"moon"})", "[]", "{"})
            QCOMPARE(TaskRecurrenceCodec::fromText(QString::fromLatin1(text)), std::nullopt);
    }
};

TOLVANE_TEST_MAIN(TaskRecurrenceTest)
#include "TaskRecurrenceTest.moc"
