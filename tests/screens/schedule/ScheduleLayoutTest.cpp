#include "screens/schedule/DailyScheduleLayout.h"
#include "screens/schedule/RepeatOption.h"
#include "support/TestMain.h"

#include <QRandomGenerator>
#include <QTranslator>

#include <numeric>

namespace {

const QDate day(2026, 3, 10);

MeetEntity meet(const QString& name, QTime start, int minutes)
{
    MeetEntity made;
    made.metId = QUuid::createUuid();
    made.metName = name;
    made.metDate = QDateTime(day, start);
    made.metDuration = minutes * 60.0;
    return made;
}

QList<std::pair<int, int>> placements(const QList<LayoutedMeet>& laid, const QStringList& order)
{
    QList<std::pair<int, int>> result;
    for (const QString& name : order) {
        for (const LayoutedMeet& placed : laid) {
            if (placed.meet.metName == name)
                result.append({placed.column, placed.columnCount});
        }
    }
    return result;
}

// The rule read another way: two meets share a cluster when, directly or through others, one
// starts before the other (earlier in start order) ends; inside a cluster a meet takes the
// lowest column none of whose earlier meets is still running at its start.
QHash<QUuid, std::pair<int, int>> expectedPlacements(QList<MeetEntity> meets)
{
    std::stable_sort(meets.begin(), meets.end(), [](const auto& a, const auto& b) { return a.metDate < b.metDate; });
    const qsizetype n = meets.size();
    QList<qsizetype> parent(n);
    std::iota(parent.begin(), parent.end(), 0);
    const std::function<qsizetype(qsizetype)> root
        = [&](qsizetype i) { return parent[i] == i ? i : parent[i] = root(parent[i]); };
    for (qsizetype i = 0; i < n; ++i) {
        for (qsizetype j = i + 1; j < n; ++j) {
            if (meets[j].metDate < meets[i].endDate())
                parent[root(j)] = root(i);
        }
    }
    QList<int> column(n, 0);
    QHash<qsizetype, int> columnCount;
    for (qsizetype j = 0; j < n; ++j) {
        for (int c = 0;; ++c) {
            bool free = true;
            for (qsizetype i = 0; i < j && free; ++i)
                free = !(root(i) == root(j) && column[i] == c && meets[i].endDate() > meets[j].metDate);
            if (free) {
                column[j] = c;
                break;
            }
        }
        columnCount[root(j)] = std::max(columnCount.value(root(j)), column[j] + 1);
    }
    QHash<QUuid, std::pair<int, int>> expected;
    for (qsizetype j = 0; j < n; ++j)
        expected.insert(meets[j].metId, {column[j], columnCount[root(j)]});
    return expected;
}

} // namespace

class ScheduleLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void overlappingAndTouchingMeets()
    {
        const QList<LayoutedMeet> chained = DailyScheduleLayout::layout(
            {meet("c", QTime(10, 0), 60), meet("a", QTime(9, 0), 60), meet("b", QTime(9, 30), 60)});
        QCOMPARE(placements(chained, {"a", "b", "c"}), (QList<std::pair<int, int>> {{0, 2}, {1, 2}, {0, 2}}));
        QCOMPARE(chained.first().meet.metName, QStringLiteral("a"));

        const QList<LayoutedMeet> touching
            = DailyScheduleLayout::layout({meet("a", QTime(9, 0), 60), meet("b", QTime(10, 0), 60)});
        QCOMPARE(placements(touching, {"a", "b"}), (QList<std::pair<int, int>> {{0, 1}, {0, 1}}));

        const QList<LayoutedMeet> instant = DailyScheduleLayout::layout(
            {meet("a", QTime(9, 0), 60), meet("z", QTime(9, 20), 0), meet("after", QTime(10, 0), 30)});
        QCOMPARE(placements(instant, {"a", "z", "after"}), (QList<std::pair<int, int>> {{0, 2}, {1, 2}, {0, 1}}));
        QVERIFY(DailyScheduleLayout::layout({}).isEmpty());
    }

    void busyRandomDayFollowsTheRule()
    {
        QRandomGenerator random(20260310);
        for (int round = 0; round < 20; ++round) {
            QList<MeetEntity> meets;
            for (int i = 0; i < 150; ++i) {
                // Quarter-hour starts and lengths give many equal starts and touching ends.
                const QTime start(0, 0);
                MeetEntity made = meet(QString::number(i), start.addSecs(random.bounded(0, 96) * 900), 0);
                made.metDuration = random.bounded(0, 9) * 900.0;
                meets.append(made);
            }
            const QHash<QUuid, std::pair<int, int>> expected = expectedPlacements(meets);
            const QList<LayoutedMeet> laid = DailyScheduleLayout::layout(meets);
            QCOMPARE(laid.size(), meets.size());
            for (qsizetype i = 1; i < laid.size(); ++i)
                QVERIFY(laid[i - 1].meet.metDate <= laid[i].meet.metDate);
            for (const LayoutedMeet& placed : laid) {
                const std::pair<int, int> got {placed.column, placed.columnCount};
                QCOMPARE(got, expected.value(placed.meet.metId));
            }
        }
    }

    void repetitionSummaries_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<int>("frequency");
        QTest::addColumn<QList<int>>("weekdays");
        QTest::addColumn<QString>("summary");
        const int weekly = int(MeetRecurrenceFrequency::weekly);
        QTest::newRow("en two days") << "en" << weekly << QList<int> {4, 2} << "Repeats every monday and wednesday";
        QTest::newRow("en three days, Sunday last")
            << "en" << weekly << QList<int> {1, 6, 2} << "Repeats every monday, friday and sunday";
        QTest::newRow("en one day") << "en" << weekly << QList<int> {7} << "Repeats every saturday";
        QTest::newRow("en weekend") << "en" << weekly << QList<int> {7, 1} << "Repeats on weekends";
        QTest::newRow("en weekdays") << "en" << weekly << QList<int> {2, 3, 4, 5, 6} << "Repeats on weekdays";
        QTest::newRow("en all days") << "en" << weekly << QList<int> {1, 2, 3, 4, 5, 6, 7} << "Repeats every day";
        QTest::newRow("en daily") << "en" << int(MeetRecurrenceFrequency::daily) << QList<int> {}
                                  << "Repeats every day";
        QTest::newRow("en monthly") << "en" << int(MeetRecurrenceFrequency::monthly) << QList<int> {3}
                                    << "Repeats every month";
        QTest::newRow("es plural s") << "es" << weekly << QList<int> {2, 7, 1}
                                     << "Se repite todos los lunes, sábados y domingos";
        QTest::newRow("es weekend") << "es" << weekly << QList<int> {1, 7} << "Se repite los fines de semana";
    }

    void repetitionSummaries()
    {
        QFETCH(QString, language);
        QFETCH(int, frequency);
        QFETCH(QList<int>, weekdays);
        QFETCH(QString, summary);
        QTranslator translator;
        QVERIFY(translator.load(QStringLiteral(":/i18n/tolvane_") + language));
        QCoreApplication::installTranslator(&translator);
        const QLocale locale(language == QStringLiteral("es") ? QLocale::Spanish : QLocale::English);
        const std::optional<QString> got
            = Repeat::summary(MeetRecurrenceFrequency(frequency), QSet<int>(weekdays.begin(), weekdays.end()), locale);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(got.value_or(QStringLiteral("<none>")), summary);
    }

    // The keyboard's time block: the first half hour, from the next quarter, that no meet takes,
    // squeezed between meets where it fits and never past the end.
    void theFirstFreeSlotSkipsWhatIsTaken()
    {
        const auto at = [](int hour, int minute) { return QDateTime(day, QTime(hour, minute)); };
        const QList<MeetEntity> meets {meet(QStringLiteral("b"), QTime(10, 0), 50),
            meet(QStringLiteral("a"), QTime(9, 0), 60), meet(QStringLiteral("c"), QTime(11, 15), 30),
            meet(QStringLiteral("d"), QTime(11, 30), 60)};
        QCOMPARE(DailyScheduleLayout::firstFreeSlot(meets, at(8, 0), at(21, 0), 1800), at(8, 0));
        QCOMPARE(DailyScheduleLayout::firstFreeSlot(meets, at(8, 40), at(21, 0), 1800), at(12, 30));
        QCOMPARE(DailyScheduleLayout::firstFreeSlot(meets, at(8, 31), at(21, 0), 1800), at(12, 30));
        // 10:50 to 11:15 is too short; from 8:01 the next quarter is 8:15 and 8:15-8:45 is free.
        QCOMPARE(DailyScheduleLayout::firstFreeSlot(meets, at(8, 1), at(21, 0), 1800), at(8, 15));
        QCOMPARE(DailyScheduleLayout::firstFreeSlot(meets, at(10, 5), at(21, 0), 1500), at(10, 50));
        QVERIFY(!DailyScheduleLayout::firstFreeSlot(meets, at(12, 10), at(12, 40), 1800));
        MeetEntity allDay = meet(QStringLiteral("trip"), QTime(0, 0), 24 * 60);
        allDay.metIsAllDay = true;
        QCOMPARE(DailyScheduleLayout::firstFreeSlot({allDay}, at(7, 0), at(21, 0), 1800), at(7, 0));
    }

    void noSummaryWithoutRepetitionOrDays()
    {
        QVERIFY(!Repeat::summary(MeetRecurrenceFrequency::none, {2}));
        QVERIFY(!Repeat::summary(MeetRecurrenceFrequency::weekly, {}));
    }
};

TOLVANE_TEST_MAIN(ScheduleLayoutTest)
#include "ScheduleLayoutTest.moc"
