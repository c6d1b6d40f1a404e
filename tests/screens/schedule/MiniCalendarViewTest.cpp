#include "screens/schedule/MiniCalendarView.h"

#include "calendar_providers/stores/HiddenCalendarsStore.h"
#include "platform/NotificationCenter.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QImage>
#include <QPalette>
#include <QSignalSpy>
#include <QToolButton>

namespace {

const QDateTime april15(QDate(2026, 4, 15), QTime(9, 0));

// A store that refuses access and fails the test if it is read anyway.
class RefusingStore final : public MiniCalendarHolidaySource {
public:
    int authorizationStatus() const override { return CalendarAuthorizationStatus::denied; }
    QList<CalendarStoreCalendar> calendars() const override
    {
        ++reads;
        return {};
    }
    QSet<QString> hiddenCalendarIdentifiers() const override { return {}; }
    QList<CalendarStoreEvent> events(const QDateTime&, const QDateTime&, const QStringList&) const override
    {
        ++reads;
        return {};
    }
    mutable std::atomic<int> reads = 0;
};

QByteArray allDayEvents(const QDate& day, const QStringList& titles)
{
    QByteArray ics = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane tests//EN\r\n";
    for (const QString& title : titles) {
        ics += "BEGIN:VEVENT\r\nUID:" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
            + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART;VALUE=DATE:" + day.toString(u"yyyyMMdd").toLatin1()
            + "\r\nDTEND;VALUE=DATE:" + day.addDays(1).toString(u"yyyyMMdd").toLatin1()
            + "\r\nSUMMARY:" + title.toUtf8() + "\r\nEND:VEVENT\r\n";
    }
    return ics + "END:VCALENDAR\r\n";
}

} // namespace

// The month grid, and its holidays read from the session's real calendar store.
class MiniCalendarViewTest : public QObject {
    Q_OBJECT

    std::shared_ptr<SettableClock> clock = std::make_shared<SettableClock>(april15);
    NotificationCenter center;
    QStringList calendarsMade;

    QString addCalendar(const QString& title, const QString& color, const QDate& day, const QStringList& titles)
    {
        const QString identifier = QStringLiteral("tolvane-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        CalendarStore::shared().addLocalCalendar(identifier, title, color);
        calendarsMade.append(identifier);
        CalendarStore::shared().importCalendarData(identifier, allDayEvents(day, titles));
        return identifier;
    }

    std::unique_ptr<MiniCalendarView> shownWithMarks(std::shared_ptr<const MiniCalendarHolidaySource> source)
    {
        auto view = std::make_unique<MiniCalendarView>(std::move(source), clock);
        QSignalSpy loaded(view.get(), &MiniCalendarView::holidayMarksLoaded);
        view->show();
        if (loaded.isEmpty() && !loaded.wait(10000))
            qWarning("the holiday marks did not arrive");
        return view;
    }

private Q_SLOTS:
    void cleanup()
    {
        for (const QString& identifier : std::as_const(calendarsMade))
            CalendarStore::shared().disableCalendar(identifier);
        calendarsMade.clear();
        HiddenCalendarsStore::standard(center).save({});
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void shouldLayOutSixWeeksFromTheLocalesFirstWeekday()
    {
        MiniCalendarView view(std::make_shared<RefusingStore>(), clock);
        QList<MiniCalendarDayCellEntity> cells = view.dayCells();
        QCOMPARE(cells.size(), 42);
        // April 2026 starts on a Wednesday; weeks start on Sunday in the United States.
        QCOMPARE(cells.first().mcdId, QDate(2026, 3, 29));
        QVERIFY(!cells.first().mcdIsCurrentMonth);
        QCOMPARE(cells.at(3), (MiniCalendarDayCellEntity {QDate(2026, 4, 1), 1, true, false}));
        QCOMPARE(cells.at(17), (MiniCalendarDayCellEntity {QDate(2026, 4, 15), 15, true, true}));
        QCOMPARE(cells.last().mcdId, QDate(2026, 5, 9));

        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        QCOMPARE(view.dayCells().first().mcdId, QDate(2026, 3, 30));

        view.findChild<QToolButton*>(QStringLiteral("miniCalendarNextMonthButton"))->click();
        QCOMPARE(view.displayedMonth(), QDate(2026, 5, 1));
        QVERIFY(std::none_of(view.dayCells().cbegin(), view.dayCells().cend(),
            [](const MiniCalendarDayCellEntity& cell) { return cell.mcdIsToday; }));
        view.findChild<QToolButton*>(QStringLiteral("miniCalendarPreviousMonthButton"))->click();
        view.findChild<QToolButton*>(QStringLiteral("miniCalendarPreviousMonthButton"))->click();
        QCOMPARE(view.displayedMonth(), QDate(2026, 3, 1));

        view.show();
        QSignalSpy chosen(&view, &MiniCalendarView::onSelectDate);
        QTest::mouseClick(view.grid(), Qt::LeftButton, {}, view.cellRect(QDate(2026, 3, 12)).center());
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.at(0).at(0).toDate(), QDate(2026, 3, 12));
    }

    void shouldMarkOnlyVisibleHolidayCalendars()
    {
        const QDate easter(2026, 4, 5);
        addCalendar(QStringLiteral("FERIADOS de Colombia"), QStringLiteral("#ff0000"), QDate(2026, 4, 2),
            {QStringLiteral("Jueves Santo")});
        addCalendar(QStringLiteral("US Holidays"), QStringLiteral("#0000ff"), easter, {QStringLiteral("Easter")});
        const QString hidden = addCalendar(
            QStringLiteral("Holidays in Spain"), QStringLiteral("#00ff00"), easter, {QStringLiteral("Pascua")});
        addCalendar(QStringLiteral("Work"), QStringLiteral("#888888"), easter, {QStringLiteral("Standup")});
        HiddenCalendarsStore::standard(center).save({hidden});

        const auto view = shownWithMarks(MiniCalendarHolidaySource::live(center));
        const MiniCalendarHolidayMarks expected {
            {QDate(2026, 4, 2), {{QColor(QStringLiteral("#ff0000")), QStringLiteral("Jueves Santo")}}},
            {easter, {{QColor(QStringLiteral("#0000ff")), QStringLiteral("Easter")}}}};
        QCOMPARE(view->holidayMarks(), expected);
    }

    void shouldDrawAtMostFourQuarterWedgesFromTheTop()
    {
        const QDate day(2026, 4, 20);
        addCalendar(QStringLiteral("Festivos"), QStringLiteral("#aa5500"), day,
            {QStringLiteral("Uno"), QStringLiteral("Dos"), QStringLiteral("Tres"), QStringLiteral("Cuatro"),
                QStringLiteral("Cinco"), QStringLiteral("Seis")});
        const auto view = shownWithMarks(MiniCalendarHolidaySource::live(center));
        QCOMPARE(view->holidayMarks().value(day).size(), 6);
        const QList<HolidayWedgeShape> expected {{-90, 0}, {0, 90}, {90, 180}, {180, 270}};
        QCOMPARE(view->wedges(day), expected);
        QCOMPARE(MiniCalendarView::wedgesFor(2), (QList<HolidayWedgeShape> {{-90, 90}, {90, 270}}));

        // The first wedge covers the top right quarter of the cell.
        const QPainterPath first = expected.first().path(QRectF(0, 0, 26, 26));
        QVERIFY(first.contains(QPointF(18, 6)));
        QVERIFY(!first.contains(QPointF(8, 6)));
        QVERIFY(!first.contains(QPointF(18, 20)));

        QTest::mouseMove(view->grid(), view->cellRect(day).center());
        QTRY_COMPARE(view->hoveredHolidayDay(), std::optional(day));
        QCOMPARE(view->hoveredHolidayText().split(QLatin1Char('\n')).size(), 6);
        QTest::mouseMove(view->grid(), view->cellRect(day.addDays(1)).center());
        QTRY_COMPARE(view->hoveredHolidayDay(), std::nullopt);
    }

    // Dark palettes often give disabled text the colour of active text: other months' days must
    // still read as dimmed.
    void shouldDimTheDaysOfOtherMonthsInADarkPalette()
    {
        const auto view = shownWithMarks(std::make_shared<RefusingStore>());
        QPalette dark = view->palette();
        dark.setColor(QPalette::Window, QColor(0x2b, 0x2b, 0x2b));
        dark.setColor(QPalette::WindowText, Qt::white);
        view->setPalette(dark);
        const QImage picture = view->grid()->grab().toImage();
        const qreal ratio = picture.devicePixelRatio();
        const auto brightest = [&](const QDate& day) {
            const QRect cell = view->cellRect(day);
            int lightest = 0;
            for (int y = int(cell.top() * ratio); y < int(cell.bottom() * ratio); ++y) {
                for (int x = int(cell.left() * ratio); x < int(cell.right() * ratio); ++x)
                    lightest = std::max(lightest, picture.pixelColor(x, y).lightness());
            }
            return lightest;
        };
        const int march = brightest(QDate(2026, 3, 31));
        const int april = brightest(QDate(2026, 4, 8));
        QVERIFY2(april > 200, qPrintable(QString::number(april)));
        QVERIFY2(march < april * 0.7, qPrintable(QStringLiteral("%1 vs %2").arg(march).arg(april)));
    }

    void shouldShowNoMarksWithoutAccess()
    {
        auto store = std::make_shared<RefusingStore>();
        const auto view = shownWithMarks(store);
        QVERIFY(view->holidayMarks().isEmpty());
        QCOMPARE(store->reads.load(), 0);
    }
};

TOLVANE_GUI_TEST_MAIN(MiniCalendarViewTest)
#include "MiniCalendarViewTest.moc"
