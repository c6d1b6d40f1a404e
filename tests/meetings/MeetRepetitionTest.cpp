#include "meetings/domain/MeetRepetition.h"

#include "support/TestMain.h"

// The dates repeating meets fall on, in a zone with daylight saving.
namespace {

const QTimeZone madrid("Europe/Madrid");

MeetEntity meetAt(const QDateTime& start, double hours, MeetRecurrenceFrequency frequency, QSet<int> weekdays = {})
{
    MeetEntity meet;
    meet.metDate = start;
    meet.metDuration = hours * 3600;
    meet.metRecurrenceFrequency = frequency;
    meet.metRecurringWeekdays = std::move(weekdays);
    return meet;
}

QDateTime at(int year, int month, int day, int hour, int minute = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute), madrid);
}

QDateTime midnight(int year, int month, int day)
{
    return at(year, month, day, 0);
}

} // namespace

class MeetRepetitionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteTheRuleOfEachRepetition()
    {
        QCOMPARE(MeetRepetition::rule(MeetRecurrenceFrequency::none, {2}), QByteArray());
        QCOMPARE(MeetRepetition::rule(MeetRecurrenceFrequency::daily, {2}), "FREQ=DAILY");
        QCOMPARE(MeetRepetition::rule(MeetRecurrenceFrequency::monthly, {}), "FREQ=MONTHLY");
        QCOMPARE(MeetRepetition::rule(MeetRecurrenceFrequency::weekly, {}), "FREQ=WEEKLY");
        // In weekday order whatever order the set hands them out in, Sunday first.
        QCOMPARE(MeetRepetition::rule(MeetRecurrenceFrequency::weekly, {6, 1, 4, 2}), "FREQ=WEEKLY;BYDAY=SU,MO,WE,FR");
    }

    // Monday and Wednesday at 9:00 over two weeks that cross the spring change of the clocks: the
    // wall-clock time holds, the other weekdays stay empty.
    void shouldGiveAWeeklyMeetOnItsDaysAtItsWallClockTime()
    {
        const MeetEntity standup = meetAt(at(2026, 3, 16, 9), 0.5, MeetRecurrenceFrequency::weekly, {2, 4});
        const QList<QDateTime> starts
            = MeetRepetition::starts(standup, midnight(2026, 3, 22), midnight(2026, 4, 5), madrid);
        QCOMPARE(
            starts, (QList<QDateTime> {at(2026, 3, 23, 9), at(2026, 3, 25, 9), at(2026, 3, 30, 9), at(2026, 4, 1, 9)}));
        QCOMPARE(starts.at(1).secsTo(starts.at(2)), (5 * 24 - 1) * 3600);
        QVERIFY(MeetRepetition::starts(standup, midnight(2026, 3, 24), midnight(2026, 3, 25), madrid).isEmpty());
        QVERIFY(MeetRepetition::starts(standup, midnight(2026, 3, 1), midnight(2026, 3, 16), madrid).isEmpty());
    }

    // A start its rule would not give still happens, once; the rule's own days follow.
    void shouldKeepAStartOffTheRulesDays()
    {
        const MeetEntity offDay = meetAt(at(2026, 3, 17, 9), 1, MeetRecurrenceFrequency::weekly, {2, 4});
        QCOMPARE(MeetRepetition::starts(offDay, midnight(2026, 3, 16), midnight(2026, 3, 24), madrid),
            (QList<QDateTime> {at(2026, 3, 17, 9), at(2026, 3, 18, 9), at(2026, 3, 23, 9)}));
        QVERIFY(!MeetRepetition::ruleProducesStart(offDay, madrid));
        QVERIFY(MeetRepetition::ruleProducesStart(
            meetAt(at(2026, 3, 16, 9), 1, MeetRecurrenceFrequency::weekly, {2, 4}), madrid));
        QVERIFY(
            MeetRepetition::ruleProducesStart(meetAt(at(2026, 3, 17, 9), 1, MeetRecurrenceFrequency::weekly), madrid));
        QVERIFY(
            !MeetRepetition::ruleProducesStart(meetAt(at(2026, 3, 17, 9), 1, MeetRecurrenceFrequency::none), madrid));
    }

    // A night meet belongs to both days it spans; a meet of no length at midnight to the day it
    // starts only.
    void shouldCountOccurrencesThatReachIntoTheRange()
    {
        const MeetEntity night = meetAt(at(2026, 5, 1, 23, 30), 1, MeetRecurrenceFrequency::daily);
        QCOMPARE(MeetRepetition::starts(night, midnight(2026, 5, 10), midnight(2026, 5, 11), madrid),
            (QList<QDateTime> {at(2026, 5, 9, 23, 30), at(2026, 5, 10, 23, 30)}));
        const MeetEntity instant = meetAt(midnight(2026, 5, 1), 0, MeetRecurrenceFrequency::daily);
        QCOMPARE(MeetRepetition::starts(instant, midnight(2026, 5, 10), midnight(2026, 5, 11), madrid),
            QList<QDateTime> {midnight(2026, 5, 10)});
        const MeetEntity once = meetAt(at(2026, 5, 1, 23, 30), 1, MeetRecurrenceFrequency::none);
        QCOMPARE(MeetRepetition::starts(once, midnight(2026, 5, 2), midnight(2026, 5, 3), madrid),
            QList<QDateTime> {once.metDate});
        QVERIFY(MeetRepetition::starts(once, midnight(2026, 5, 3), midnight(2026, 5, 4), madrid).isEmpty());
    }

    // Monthly on the 31st skips the months without one, as calendars do.
    void shouldRepeatMonthlyOnTheStartsDayOfTheMonth()
    {
        const MeetEntity closing = meetAt(at(2026, 1, 31, 10), 1, MeetRecurrenceFrequency::monthly);
        QCOMPARE(MeetRepetition::starts(closing, midnight(2026, 1, 1), midnight(2026, 6, 1), madrid),
            (QList<QDateTime> {at(2026, 1, 31, 10), at(2026, 3, 31, 10), at(2026, 5, 31, 10)}));
    }

    // Years after the start, the range holds exactly its own days: skipping ahead loses none and
    // adds none, whatever the clocks did meanwhile.
    void shouldReadARangeLongAfterTheStart()
    {
        const MeetEntity daily = meetAt(at(2020, 2, 29, 8, 15), 2, MeetRecurrenceFrequency::daily);
        const QList<QDateTime> starts
            = MeetRepetition::starts(daily, midnight(2031, 10, 24), midnight(2031, 10, 31), madrid);
        QList<QDateTime> expected;
        for (QDate day(2031, 10, 24); day < QDate(2031, 10, 31); day = day.addDays(1))
            expected.append(QDateTime(day, QTime(8, 15), madrid));
        QCOMPARE(starts, expected);
        const MeetEntity weekly = meetAt(at(2020, 3, 2, 18), 1, MeetRecurrenceFrequency::weekly, {7});
        QCOMPARE(MeetRepetition::starts(weekly, midnight(2031, 10, 24), midnight(2031, 10, 31), madrid),
            QList<QDateTime> {at(2031, 10, 25, 18)});
    }
};

TOLVANE_TEST_MAIN(MeetRepetitionTest)
#include "MeetRepetitionTest.moc"
