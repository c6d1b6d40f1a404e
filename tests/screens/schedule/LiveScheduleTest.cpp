#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "meetings/DirectCalendar.h"
#include "meetings/OffMainThread.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/domain/MeetValidationError.h"
#include "platform/calendar_store/CalendarStore.h"
#include "platform/calendar_store/CalendarWatcher.h"
#include "screens/schedule/AllDayEventsSectionView.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "screens/schedule/MeetDetailView.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/AppFixture.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>
#include <QTranslator>

#include <libedataserver/libedataserver.h>
#include <stdexcept>

namespace {

// Another calendar program: its own registry and connection, writing with libecal alone.
class OtherProgram {
public:
    explicit OtherProgram(const QString& calendarIdentifier)
        : m_calendarIdentifier(calendarIdentifier)
    {
        offMainThread([this] { m_calendar = std::make_unique<DirectCalendar>(m_calendarIdentifier); });
        if (!m_calendar->client())
            throw std::runtime_error("the other program cannot open the calendar");
    }
    ~OtherProgram()
    {
        offMainThread([this] { m_calendar.reset(); });
    }

    QString add(const QString& summary, const QDateTime& start, const QDateTime& end, bool allDay = false)
    {
        const QString uid = QUuid::createUuid().toString(QUuid::WithoutBraces);
        offMainThread([&] {
            ICalComponent* event = i_cal_component_new_vevent();
            i_cal_component_set_uid(event, uid.toUtf8().constData());
            write(event, summary, start, end, allDay);
            GError* error = nullptr;
            if (!e_cal_client_create_object_sync(
                    m_calendar->client(), event, E_CAL_OPERATION_FLAG_NONE, nullptr, nullptr, &error))
                fail(error);
            g_object_unref(event);
        });
        return uid;
    }

    void change(const QString& uid, const QString& summary, const QDateTime& start, const QDateTime& end)
    {
        offMainThread([&] {
            ICalComponent* event = m_calendar->master(uid);
            if (!event)
                throw std::runtime_error("no such event");
            write(event, summary, start, end, false);
            GError* error = nullptr;
            if (!e_cal_client_modify_object_sync(
                    m_calendar->client(), event, E_CAL_OBJ_MOD_ALL, E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
                fail(error);
            g_object_unref(event);
        });
    }

    void remove(const QString& uid)
    {
        offMainThread([&] {
            GError* error = nullptr;
            if (!e_cal_client_remove_object_sync(m_calendar->client(), uid.toUtf8().constData(), nullptr,
                    E_CAL_OBJ_MOD_ALL, E_CAL_OPERATION_FLAG_NONE, nullptr, &error))
                fail(error);
        });
    }

    // Switched off in the desktop's calendar settings, as another program would.
    void disableCalendar()
    {
        offMainThread([&] {
            ESourceRegistry* registry = e_source_registry_new_sync(nullptr, nullptr);
            ESource* source = e_source_registry_ref_source(registry, m_calendarIdentifier.toUtf8().constData());
            e_source_set_enabled(source, FALSE);
            GError* error = nullptr;
            const bool written = e_source_write_sync(source, nullptr, &error);
            g_object_unref(source);
            g_object_unref(registry);
            if (!written)
                fail(error);
        });
    }

private:
    [[noreturn]] static void fail(GError* error)
    {
        const std::string message = error ? error->message : "refused";
        g_clear_error(&error);
        throw std::runtime_error(message);
    }

    static ICalTime* timeOf(const QDateTime& instant, bool allDay)
    {
        if (allDay) {
            const QDate day = instant.date();
            ICalTime* date = i_cal_time_new_null_time();
            i_cal_time_set_date(date, day.year(), day.month(), day.day());
            i_cal_time_set_is_date(date, TRUE);
            return date;
        }
        return i_cal_time_new_from_timet_with_zone(
            instant.toSecsSinceEpoch(), FALSE, i_cal_timezone_get_utc_timezone());
    }

    static void write(
        ICalComponent* event, const QString& summary, const QDateTime& start, const QDateTime& end, bool allDay)
    {
        i_cal_component_set_summary(event, summary.toUtf8().constData());
        ICalTime* from = timeOf(start, allDay);
        ICalTime* to = timeOf(end, allDay);
        i_cal_component_set_dtstart(event, from);
        i_cal_component_set_dtend(event, to);
        g_object_unref(from);
        g_object_unref(to);
    }

    QString m_calendarIdentifier;
    std::unique_ptr<DirectCalendar> m_calendar;
};

QStringList namesOf(const QList<MeetEntity>& meets)
{
    QStringList names;
    for (const MeetEntity& meet : meets)
        names.append(meet.metName);
    names.sort();
    return names;
}

QStringList allDayNames(AllDayEventsSectionView* section)
{
    QStringList names;
    for (AllDayEventRowView* row : section->rows())
        names.append(row->meet().metName);
    return names;
}

} // namespace

// The schedule while another program writes to the same calendars, over the session's real
// calendar store.
class LiveScheduleTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<DailyEventsView> view;
    QStringList calendarsMade;
    QTranslator english;

    QString addCalendar(const QString& title)
    {
        const QString identifier = QStringLiteral("tolvane-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        CalendarStore::shared().addLocalCalendar(identifier, title, QStringLiteral("#3E8BFF"));
        calendarsMade.append(identifier);
        return identifier;
    }

    void open(const QDate& day)
    {
        view = std::make_unique<DailyEventsView>(app->services(), DailyEventsView::Bindings {});
        view->resize(1100, 520);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
        QSignalSpy again(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day);
        if (again.isEmpty() && !again.wait(45000))
            throw std::runtime_error("the day never loaded");
    }

    // The scope covers the shown day once every calendar's view runs; changes made before then
    // are read by the load itself.
    void waitUntilWatching(const QStringList& calendars)
    {
        auto* watcher = qobject_cast<CalendarStoreWatcher*>(view->calendarWatcher());
        QVERIFY(watcher);
        QTRY_VERIFY_WITH_TIMEOUT(watcher->scope().covers(view->selectedDate()), 15000);
        for (const QString& calendar : calendars)
            QTRY_VERIFY_WITH_TIMEOUT(watcher->watchedCalendars().contains(calendar), 15000);
    }

    std::optional<MeetEntity> shown(const QString& name) const
    {
        for (const MeetEntity& meet : view->events()) {
            if (meet.metName == name)
                return meet;
        }
        return std::nullopt;
    }

    MeetEntity only() const
    {
        if (view->events().size() != 1)
            throw std::runtime_error("not one meet on the day");
        return view->events().constFirst();
    }

    // Presses at from on the card, moves by in two steps, releases. The moves are given on the
    // timeline, as the card moves under the pointer; the card has the mouse until the release.
    void drag(QWidget* card, const QPoint& from, const QPoint& by)
    {
        QWidget* timeline = view->timeline();
        const QPoint start = card->mapTo(timeline, from);
        QTest::mousePress(card, Qt::LeftButton, {}, from);
        QTest::mouseMove(card, card->mapFrom(timeline, start + by / 2));
        QTest::mouseMove(card, card->mapFrom(timeline, start + by));
        QTest::mouseRelease(card, Qt::LeftButton, {}, card->mapFrom(timeline, start + by));
    }

    bool isArmed(const MeetEntity& meet) const
    {
        return ArmedAlarmsStore(app->userDefaults()).contains(meet.metId.toString(QUuid::WithoutBraces));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void init()
    {
        app = std::make_unique<AppFixture>();
        app->storeLocalUser();
    }

    void cleanup()
    {
        view.reset();
        app.reset();
        for (const QString& identifier : std::as_const(calendarsMade))
            CalendarStore::shared().disableCalendar(identifier);
        calendarsMade.clear();
    }

    void theScheduleFollowsAnotherProgram()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const QString work = addCalendar(QStringLiteral("Work"));
        const QString family = addCalendar(QStringLiteral("Family"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        // Meets made elsewhere ring only from the calendars chosen for alarms.
        AlarmEnabledCalendarsStore(app->userDefaults()).save({work});
        const QDate day = QDate::currentDate().addDays(2);
        open(day);
        waitUntilWatching({work, family});
        OtherProgram other(work);

        auto* scroll = view->findChild<QScrollArea*>(QStringLiteral("dailyEventsScroll"));
        QVERIFY(scroll->verticalScrollBar()->maximum() > 100);
        scroll->verticalScrollBar()->setValue(100);

        // Added elsewhere: a timed meet on the timeline and an all-day one above it.
        const QString review
            = other.add(QStringLiteral("Review"), QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 0)));
        other.add(QStringLiteral("Trip"), QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(0, 0)), true);
        QTRY_COMPARE_WITH_TIMEOUT(namesOf(view->events()), (QStringList {"Review", "Trip"}), 10000);
        QTRY_COMPARE(allDayNames(view->allDaySection()), QStringList {QStringLiteral("Trip")});
        QCOMPARE(view->timeline()->cards().size(), 1);
        QCOMPARE(scroll->verticalScrollBar()->value(), 100);

        // Armed here, then moved and renamed elsewhere: the alarm follows, the detail stays open.
        const MeetEntity before = *shown(QStringLiteral("Review"));
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        card->alarmButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(isArmed(before), 15000);
        view->showDetail(before);
        QPointer<MeetDetailView> detail = view->meetDetail();
        other.change(
            review, QStringLiteral("Review, later"), QDateTime(day, QTime(14, 0)), QDateTime(day, QTime(15, 0)));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Review, later")).has_value(), 10000);
        const MeetEntity moved = *shown(QStringLiteral("Review, later"));
        QCOMPARE(moved.metDate, QDateTime(day, QTime(14, 0)));
        QTRY_VERIFY_WITH_TIMEOUT(isArmed(moved), 10000);
        QVERIFY(!isArmed(before));
        QTRY_VERIFY(view->timeline()->cards().constFirst()->isAlarmSet());
        QVERIFY(detail && detail->isVisible());
        detail->close();
        QCOMPARE(scroll->verticalScrollBar()->value(), 100);

        // Open in the editor and deleted elsewhere: the editor says so and keeps what was typed.
        view->editMeet(moved);
        QTRY_VERIFY(view->editor() != nullptr);
        CreateEventView* editor = view->editor();
        editor->titleField()->setText(QStringLiteral("Review, my notes"));
        other.remove(review);
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Review, later")), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(
            editor->errorMessage().value_or(QString()), qtTrId("create-event-deleted-elsewhere"), 10000);
        QVERIFY(editor->isVisible());
        QCOMPARE(editor->titleField()->text(), QStringLiteral("Review, my notes"));
        QTRY_VERIFY_WITH_TIMEOUT(!isArmed(moved), 10000);
        QVERIFY(view->timeline()->cards().isEmpty());
        editor->close();

        // A loaded day shows at once, as the store has it now.
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day.addDays(1));
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QVERIFY(view->isDayCached(day));
        view->setSelectedDate(day);
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Trip")});

        // A calendar switched off elsewhere takes its meets off the screen.
        OtherProgram familyProgram(family);
        familyProgram.add(QStringLiteral("Dinner"), QDateTime(day, QTime(19, 0)), QDateTime(day, QTime(20, 0)));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Dinner")).has_value(), 10000);
        familyProgram.disableCalendar();
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Dinner")), 10000);
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Trip")});
        QTRY_VERIFY_WITH_TIMEOUT(!view->calendarWatcher()->scope().calendarIdentifiers.contains(family), 10000);
    }

    void dragACardToMoveAndResizeItsMeet()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const QDate day = QDate::currentDate().addDays(3);
        DailyEventsController controller(app->services(), std::nullopt);
        controller.create({QStringLiteral("Focus"), {}, QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 0))});
        open(day);
        const int slot = DailyScheduleTimelineView::slotHeight;

        // Two hours down, a little off the quarter: it lands on the quarter.
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        drag(card, card->rect().center(), QPoint(0, 2 * slot + 3));
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(12, 0)), 15000);
        QCOMPARE(only().metDuration, 3600.0);
        QTRY_VERIFY(view->notice()->isVisible());
        QCOMPARE(view->noticeText()->text(), qtTrId("schedule-notice-moved"));

        // The bottom edge an hour and a quarter lower: longer, same start.
        card = view->timeline()->cards().constFirst();
        drag(card, QPoint(card->width() / 2, card->height() - 2), QPoint(0, slot + slot / 4));
        QTRY_COMPARE_WITH_TIMEOUT(only().metDuration, 2.25 * 3600, 15000);
        QCOMPARE(only().metDate, QDateTime(day, QTime(12, 0)));

        // Escape during the drag: back where it was, nothing saved.
        card = view->timeline()->cards().constFirst();
        const QRect placed = card->geometry();
        QSignalSpy requested(view->timeline(), &DailyScheduleTimelineView::changeRequested);
        const QPoint pressed = card->mapTo(view->timeline(), card->rect().center());
        QTest::mousePress(card, Qt::LeftButton, {}, card->rect().center());
        QTest::mouseMove(card, card->mapFrom(view->timeline(), pressed + QPoint(0, 20)));
        QTest::mouseMove(card, card->mapFrom(view->timeline(), pressed + QPoint(0, 3 * slot)));
        QVERIFY(view->timeline()->isDragging());
        QVERIFY(card->geometry() != placed);
        QTest::keyClick(card, Qt::Key_Escape);
        QCOMPARE(card->geometry(), placed);
        QTest::mouseRelease(card, Qt::LeftButton, {}, card->mapFrom(view->timeline(), pressed + QPoint(0, 3 * slot)));
        QVERIFY(requested.isEmpty());
        QVERIFY(!view->timeline()->isDragging());
        QVERIFY(view->meetDetail() == nullptr);

        // From the keyboard: a quarter later, then a quarter shorter.
        card->setFocus();
        QTest::keyClick(card, Qt::Key_Down, Qt::AltModifier);
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(12, 15)), 15000);
        card = view->timeline()->cards().constFirst();
        QTest::keyClick(card, Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier);
        QTRY_COMPARE_WITH_TIMEOUT(only().metDuration, 2 * 3600.0, 15000);
        QCOMPARE(only().metDate, QDateTime(day, QTime(12, 15)));

        QTRY_COMPARE(view->noticeText()->text(), qtTrId("schedule-notice-resized"));

        // Undo puts the last change back, and is itself not undone by another notice.
        QVERIFY(view->notice()->isVisible());
        view->undoButton()->click();
        QVERIFY(!view->notice()->isVisible());
        QTRY_COMPARE_WITH_TIMEOUT(only().metDuration, 2.25 * 3600, 15000);
        QVERIFY(!view->notice()->isVisible());

        // A fresh read of the store, not the screen's copy.
        const DailyEventsDay stored = controller.loadDay(day);
        QCOMPARE(stored.meets.size(), 1);
        QCOMPARE(stored.meets.first().metDate, QDateTime(day, QTime(12, 15)));
        QCOMPARE(stored.meets.first().endDate(), QDateTime(day, QTime(14, 30)));

        // With Alt held, by the minute: 41 pixels are 72 minutes and some seconds.
        card = view->timeline()->cards().constFirst();
        const QPoint from = card->rect().center();
        const QPoint onTimeline = card->mapTo(view->timeline(), from);
        QTest::mousePress(card, Qt::LeftButton, {}, from);
        for (const int by : {20, 41}) {
            const QPoint to = card->mapFrom(view->timeline(), onTimeline + QPoint(0, by));
            QMouseEvent move(
                QEvent::MouseMove, to, card->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::AltModifier);
            QApplication::sendEvent(card, &move);
        }
        QTest::mouseRelease(card, Qt::LeftButton, {}, card->mapFrom(view->timeline(), onTimeline + QPoint(0, 41)));
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(13, 27)), 15000);
    }

    // A moved occurrence of a series moves alone, as an edit in the editor does.
    void dragOneOccurrenceOfASeries()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const QDate day = QDate::currentDate().addDays(3);
        DailyEventsController controller(app->services(), std::nullopt);
        MeetDraft series {QStringLiteral("Standup"), {}, QDateTime(day, QTime(9, 0)), QDateTime(day, QTime(9, 30))};
        series.recurrence = MeetRecurrenceFrequency::daily;
        controller.create(series);
        open(day.addDays(1));
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        drag(card, card->rect().center(), QPoint(0, DailyScheduleTimelineView::slotHeight));
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day.addDays(1), QTime(10, 0)), 15000);
        QCOMPARE(controller.loadDay(day).meets.first().metDate, QDateTime(day, QTime(9, 0)));
        QCOMPARE(controller.loadDay(day.addDays(2)).meets.first().metDate, QDateTime(day.addDays(2), QTime(9, 0)));
    }

    // A meet of no length, written by another program, is refused as the editor refuses it.
    void aMoveThatCannotBeSavedPutsTheCardBackAndSaysWhy()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        const QDate day = QDate::currentDate().addDays(3);
        {
            OtherProgram other(work);
            other.add(QStringLiteral("Reminder"), QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(10, 0)));
        }
        open(day);
        QCOMPARE(view->timeline()->cards().size(), 1);
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        const QRect placed = card->geometry();
        drag(card, card->rect().center(), QPoint(0, 2 * DailyScheduleTimelineView::slotHeight));
        QTRY_VERIFY_WITH_TIMEOUT(view->moveAlert() != nullptr, 15000);
        QCOMPARE(view->moveErrorMessage().value_or(QString()),
            MeetValidationError::invalidTimeRange().localizedDescription());
        QCOMPARE(view->moveAlert()->text(), *view->moveErrorMessage());
        QTRY_COMPARE_WITH_TIMEOUT(view->timeline()->cards().constFirst()->geometry(), placed, 15000);
        QCOMPARE(only().metDate, QDateTime(day, QTime(10, 0)));
    }

    // The span watched moves only when the shown day nears its edge, and follows the calendars.
    void theWatchedSpanFollowsTheDay()
    {
        const QDate day(2026, 3, 10);
        const QStringList calendars {QStringLiteral("a"), QStringLiteral("b")};
        const CalendarWatchScope first = CalendarWatchScope::around(day, calendars, {});
        QVERIFY(first.covers(day.addDays(-5)) && first.covers(day.addDays(5)));
        QCOMPARE(CalendarWatchScope::around(day.addDays(6), calendars, first), first);
        const CalendarWatchScope moved = CalendarWatchScope::around(day.addDays(10), calendars, first);
        QVERIFY(!(moved == first));
        QVERIFY(moved.covers(day.addDays(11)));
        const CalendarWatchScope fewer = CalendarWatchScope::around(day, {QStringLiteral("a")}, first);
        QCOMPARE(fewer.calendarIdentifiers, QStringList {QStringLiteral("a")});
        QVERIFY(CalendarWatchScope::around(day, {}, first).isEmpty());
    }
};

TOLVANE_GUI_TEST_MAIN(LiveScheduleTest)
#include "LiveScheduleTest.moc"
