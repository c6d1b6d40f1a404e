#include "calendar_providers/stores/AlarmEnabledCalendarsStore.h"
#include "meetings/DirectCalendar.h"
#include "meetings/OffMainThread.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/domain/MeetIdentity.h"
#include "meetings/domain/MeetValidationError.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "platform/calendar_store/CalendarStore.h"
#include "platform/calendar_store/CalendarWatcher.h"
#include "screens/projects/TaskRowView.h"
#include "screens/schedule/AllDayEventsSectionView.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "screens/schedule/DailyTaskController.h"
#include "screens/schedule/DailyTaskSectionView.h"
#include "screens/schedule/MeetDetailView.h"
#include "screens/schedule/ScheduleFixture.h"
#include "screens/schedule/ScheduleProjectsPaneView.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/server/ServerBackend.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/ModalAnswers.h"
#include "undo/UndoHistory.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDragEnterEvent>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopeGuard>
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

    // The task link as the event carries it, read as any program reads an X- property.
    QString taskLinkOf(const QString& uid)
    {
        QString link;
        offMainThread([&] {
            ICalComponent* event = m_calendar->master(uid);
            if (!event)
                throw std::runtime_error("no such event");
            gchar* value = e_cal_util_component_dup_x_property(event, "X-TOLVANE-TASK");
            link = QString::fromUtf8(value);
            g_free(value);
            g_object_unref(event);
        });
        return link;
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
class LiveScheduleTest : public QObject, ScheduleFixture {
    Q_OBJECT

    void open(const QDate& day)
    {
        ScheduleFixture::open(QSize(1100, 520));
        showDay(day);
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

    // The day's one meet; an empty one while the day shows none or several (a read of the day
    // may be under way), so that the checks that wait on it go on waiting.
    MeetEntity only() const { return view->events().size() == 1 ? view->events().constFirst() : MeetEntity {}; }

    // Presses at from on the card, moves by in two steps, releases. The moves are given on the
    // timeline, as the card moves under the pointer; the card has the mouse until the release.
    // False when the card was replaced on the way (a read of the day came in before the drag
    // took hold), so that nothing reached it after.
    bool drag(QWidget* card, const QPoint& from, const QPoint& by)
    {
        QWidget* timeline = view->timeline();
        const QPointer<QWidget> alive(card);
        const QPoint start = card->mapTo(timeline, from);
        QTest::mousePress(card, Qt::LeftButton, {}, from);
        for (const QPoint& to : {start + by / 2, start + by}) {
            if (!alive)
                return false;
            QTest::mouseMove(card, card->mapFrom(timeline, to));
        }
        if (!alive)
            return false;
        QTest::mouseRelease(card, Qt::LeftButton, {}, card->mapFrom(timeline, start + by));
        return true;
    }

    // Drags the card of the meet named so, up or down to y on the timeline, from its centre.
    bool dragTo(const QString& name, int y)
    {
        DailyEventCardView* card = cardOf(name);
        if (!card)
            return false;
        const QPoint centre = card->mapTo(view->timeline(), card->rect().center());
        return drag(card, card->rect().center(), QPoint(0, y - centre.y()));
    }

    // dragTo again while a read of the day replaces the card under it, as a user would.
    bool dragOnceTo(const QString& name, int y)
    {
        for (int attempt = 0; attempt < 100; ++attempt) {
            if (dragTo(name, y))
                return true;
            QTest::qWait(50);
        }
        return false;
    }

    // Drags data of format over the empty timeline at the given time and drops it there, as the
    // drag of a row or an all-day meet delivers it. False when the timeline refused it.
    bool dropOnTimeline(const QString& format, const QByteArray& data, const QDateTime& at)
    {
        DailyScheduleTimelineView* timeline = view->timeline();
        const QPoint point(timeline->width() - 20, int(timeline->yForTime(at)) + 2);
        QMimeData mime;
        mime.setData(format, data);
        QDragEnterEvent enter(point, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(timeline, &enter);
        QDragMoveEvent move(point, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(timeline, &move);
        if (!move.isAccepted())
            return false;
        if (timeline->dropTime() != timeline->timeAt(point.y()))
            return false;
        QDropEvent drop(QPointF(point), Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(timeline, &drop);
        return drop.isAccepted() && !timeline->dropTime();
    }

    TasksApplicationFactory::Applications tasks() const
    {
        return *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
    }

    static bool isDone(const TasksApplicationFactory::Applications& apps, const QUuid& taskId)
    {
        const ResultEntity found = apps.tasks.find(taskId);
        return found.dataAs<TaskEntity>() && found.dataAs<TaskEntity>()->tasIsDone;
    }

    DailyEventCardView* cardOf(const QString& name) const
    {
        for (DailyEventCardView* card : view->timeline()->cards()) {
            if (card->meet().metName == name)
                return card;
        }
        return nullptr;
    }

    // The task box of the card of the meet named so; null while the card, or its box, is not
    // there (a read of the day replaces the cards).
    QCheckBox* boxOf(const QString& name) const
    {
        DailyEventCardView* card = cardOf(name);
        return card ? card->taskCheckBox() : nullptr;
    }

    bool isTicked(const QString& name) const { return boxOf(name) && boxOf(name)->isChecked(); }
    bool isUnticked(const QString& name) const { return boxOf(name) && !boxOf(name)->isChecked(); }

    bool isArmed(const MeetEntity& meet) const
    {
        return ArmedAlarmsStore(app->userDefaults()).contains(meet.metId.toString(QUuid::WithoutBraces));
    }

private Q_SLOTS:
    void initTestCase() { loadEnglish(); }
    void init() { setUpSchedule(); }
    void cleanup() { tearDownSchedule(); }

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
        // Read again in the background after the last change, however late its news came.
        QTRY_VERIFY_WITH_TIMEOUT(view->isDayCached(day), 15000);
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

    // An alarm armed on a day far from the one shown still follows its event: moved, it rings at
    // the new time with the new name; deleted, it is gone.
    void anAlarmOnADayNotShownFollowsItsEvent()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const QString work = addCalendar(QStringLiteral("Work"));
        AlarmEnabledCalendarsStore(app->userDefaults()).save({work});
        const QDate far = QDate::currentDate().addDays(40);
        OtherProgram other(work);
        const QString uid
            = other.add(QStringLiteral("Dentist"), QDateTime(far, QTime(9, 0)), QDateTime(far, QTime(10, 0)));
        open(far);
        QCOMPARE(view->timeline()->cards().size(), 1);
        const MeetEntity armed = only();
        view->timeline()->cards().constFirst()->alarmButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(isArmed(armed), 15000);

        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(QDate::currentDate().addDays(2));
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QTRY_VERIFY_WITH_TIMEOUT(!view->calendarWatcher()->scope().covers(far), 15000);
        auto* alarms = qobject_cast<CalendarStoreWatcher*>(view->alarmWatcher());
        QVERIFY(alarms);
        QTRY_VERIFY_WITH_TIMEOUT(alarms->scope().covers(far), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(alarms->watchedCalendars().contains(work), 15000);

        other.change(uid, QStringLiteral("Dentist, later"), QDateTime(far, QTime(11, 0)), QDateTime(far, QTime(12, 0)));
        MeetEntity moved = armed;
        moved.metId = MeetIdentity::forOccurrence(uid, QDateTime(far, QTime(11, 0)));
        QTRY_VERIFY_WITH_TIMEOUT(isArmed(moved), 10000);
        QVERIFY(!isArmed(armed));
        const QList<MeetEntity> pending = app->services().meetAlarmScheduler().armedMeets();
        QCOMPARE(pending.size(), 1);
        QCOMPARE(pending.constFirst().metName, QStringLiteral("Dentist, later"));
        QCOMPARE(pending.constFirst().metDate, QDateTime(far, QTime(11, 0)));

        other.remove(uid);
        QTRY_VERIFY_WITH_TIMEOUT(!isArmed(moved), 10000);
        QVERIFY(app->services().meetAlarmScheduler().armedMeets().isEmpty());
    }

    // A task dropped on the timeline gets an event of its own, linked to it: the card ticks the
    // task, follows it, and outlives it.
    void aTaskDroppedOnTheTimelineBlocksTimeForIt()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const QDate day = QDate::currentDate().addDays(3);
        const TasksApplicationFactory::Applications apps = tasks();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity garden {.prjUserId = userId, .prjName = QStringLiteral("Garden")};
        QVERIFY(apps.projects.create(garden).result);
        const TaskListEntity chores {.prjId = garden.prjId, .talName = QStringLiteral("Chores"), .talIsDefault = true};
        QVERIFY(apps.taskLists.create(chores).result);
        const TaskEntity prune {.prjId = garden.prjId, .talId = chores.talId, .tasTitle = QStringLiteral("Prune")};
        QVERIFY(apps.tasks.create(prune).result);
        open(day);
        waitUntilWatching({work});
        OtherProgram other(work);

        // Dropped a little after 10:15: half an hour from the quarter, in the default calendar.
        QVERIFY(dropOnTimeline(TaskRowView::dragMimeType, prune.tasId.toByteArray(), QDateTime(day, QTime(10, 20))));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Prune")).has_value(), 15000);
        MeetEntity block = *shown(QStringLiteral("Prune"));
        QCOMPARE(block.metDate, QDateTime(day, QTime(10, 15)));
        QCOMPARE(block.metDuration, 1800.0);
        QCOMPARE(block.metCalendarIdentifier, work);
        QCOMPARE(block.metTaskLink, (MeetTaskLink {MeetTaskLink::Kind::task, prune.tasId}));
        QTRY_COMPARE(view->noticeText()->text(), qtTrId("schedule-notice-time-blocked"));
        QCOMPARE(other.taskLinkOf(block.metOriginalIdentifier),
            QStringLiteral("task:") + prune.tasId.toString(QUuid::WithoutBraces));

        // Ticked on the card: done in the task store, and the pane says so.
        QTRY_VERIFY(boxOf(QStringLiteral("Prune")));
        QCheckBox* box = boxOf(QStringLiteral("Prune"));
        QVERIFY(!box->isChecked());
        box->click();
        QTRY_VERIFY_WITH_TIMEOUT(isDone(apps, prune.tasId), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(isTicked(QStringLiteral("Prune")), 15000);

        // Opened again elsewhere in the program, as the projects workspace does: the card follows.
        QVERIFY(apps.tasks.markNotDone(prune.tasId).result);
        QTRY_VERIFY_WITH_TIMEOUT(isUnticked(QStringLiteral("Prune")), 15000);

        // Resized like any meet, it keeps its link.
        DailyEventCardView* card = cardOf(QStringLiteral("Prune"));
        card->setFocus();
        QTest::keyClick(card, Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier);
        QTRY_COMPARE_WITH_TIMEOUT(shown(QStringLiteral("Prune")).value_or(MeetEntity {}).metDuration, 2700.0, 15000);
        QCOMPARE(shown(QStringLiteral("Prune"))->metTaskLink, block.metTaskLink);

        // The task deleted: the event stays, without its link or its box.
        QVERIFY(apps.tasks.delete_(prune.tasId).result);
        view->projectsPane()->reload();
        QTRY_VERIFY_WITH_TIMEOUT(cardOf(QStringLiteral("Prune")) && !boxOf(QStringLiteral("Prune"))
                && shown(QStringLiteral("Prune")) && !shown(QStringLiteral("Prune"))->metTaskLink,
            15000);
        QTRY_COMPARE_WITH_TIMEOUT(other.taskLinkOf(block.metOriginalIdentifier), QString(), 15000);

        // From the daily checklist by the keyboard: the first free half hour of the shown hours.
        const DailyTaskEntity call {
            .dtaUserId = userId, .dtaDate = DailyTaskController::dateOf(day), .dtaTitle = QStringLiteral("Call")};
        QVERIFY(apps.dailyTasks.create(call).result);
        view->projectsPane()->reload();
        QTRY_COMPARE_WITH_TIMEOUT(view->projectsPane()->dailyTaskSection()->rows().size(), 1, 15000);
        auto* action = view->projectsPane()->dailyTaskSection()->rows().constFirst()->findChild<QAction*>(
            QStringLiteral("blockTimeAction"));
        QVERIFY(action);
        QCOMPARE(action->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_B));
        action->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Call")).has_value(), 15000);
        const MeetEntity callBlock = *shown(QStringLiteral("Call"));
        QCOMPARE(callBlock.metDate, QDateTime(day, QTime(view->startHour(), 0)));
        QCOMPARE(callBlock.metTaskLink, (MeetTaskLink {MeetTaskLink::Kind::dailyTask, call.dtaId}));
        QTRY_VERIFY(boxOf(QStringLiteral("Call")));
        boxOf(QStringLiteral("Call"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(apps.dailyTasks.find(call.dtaId).dataAs<DailyTaskEntity>()->dtaIsDone, 15000);

        // The event deleted elsewhere: the task stays.
        other.remove(callBlock.metOriginalIdentifier);
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Call")), 15000);
        QVERIFY(apps.dailyTasks.find(call.dtaId).result);

        // Undo takes a block back.
        QVERIFY(dropOnTimeline(DailyTaskRowView::dragMimeType, call.dtaId.toByteArray(), QDateTime(day, QTime(16, 0))));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Call")).has_value(), 15000);
        QTRY_VERIFY(view->notice()->isVisible());
        view->undoButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Call")), 15000);

        // Nothing a program of ours did not drag is taken.
        QVERIFY(!dropOnTimeline(QStringLiteral("text/plain"), "Prune", QDateTime(day, QTime(12, 0))));
    }

    // In a Google account the tasks live on the backend: the block links to one of them, and its
    // card ticks it there.
    void timeBlockingInAGoogleAccount()
    {
        GoogleAccountFixture google;
        QVERIFY(google.signIn().result);
        const QString work = addCalendar(QStringLiteral("Work"));
        google.app().userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const TasksApplicationFactory::Applications apps
            = *google.app().services().tasksApplications(true).dataAs<TasksApplicationFactory::Applications>();
        // The backend names what it stores.
        const ResultEntity madeGarden
            = apps.projects.create({.prjUserId = google.backendUser(), .prjName = QStringLiteral("Garden")});
        QVERIFY(madeGarden.dataAs<ProjectEntity>());
        const QUuid garden = madeGarden.dataAs<ProjectEntity>()->prjId;
        const ResultEntity madeChores
            = apps.taskLists.create({.prjId = garden, .talName = QStringLiteral("Chores"), .talIsDefault = true});
        QVERIFY(madeChores.dataAs<TaskListEntity>());
        const ResultEntity madeSow = apps.tasks.create(
            {.prjId = garden, .talId = madeChores.dataAs<TaskListEntity>()->talId, .tasTitle = QStringLiteral("Sow")});
        QVERIFY(madeSow.dataAs<TaskEntity>());
        const TaskEntity sow = *madeSow.dataAs<TaskEntity>();

        const QDate day = QDate::currentDate().addDays(3);
        // Gone before the account it shows.
        const auto closeFirst = qScopeGuard([this] { view.reset(); });
        view = std::make_unique<DailyEventsView>(google.app().services(), DailyEventsView::Bindings {});
        view->resize(1100, 520);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        QVERIFY(!loaded.isEmpty() || loaded.wait(45000));
        showDay(day);

        QVERIFY(dropOnTimeline(TaskRowView::dragMimeType, sow.tasId.toByteArray(), QDateTime(day, QTime(9, 0))));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Sow")).has_value(), 15000);
        const MeetEntity block = *shown(QStringLiteral("Sow"));
        QCOMPARE(block.metCalendarIdentifier, work);
        QCOMPARE(block.metTaskLink, (MeetTaskLink {MeetTaskLink::Kind::task, sow.tasId}));
        // The block lives in the calendar store, not among the backend's events.
        QVERIFY(RemoteEventRepositoryImpl(google.server().client(google.backendSubject())).fetchMeets().isEmpty());

        QTRY_VERIFY(boxOf(QStringLiteral("Sow")));
        boxOf(QStringLiteral("Sow"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(isDone(apps, sow.tasId), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(isTicked(QStringLiteral("Sow")), 15000);
    }

    // An all-day meet dropped on the timeline takes the time it was dropped at, an hour long; a
    // card dragged up onto the all-day meets becomes one of them.
    void dragBetweenTheAllDayRowAndTheTimeline()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        const QDate day = QDate::currentDate().addDays(3);
        {
            OtherProgram other(work);
            other.add(
                QStringLiteral("Trip"), QDateTime(day, QTime(0, 0)), QDateTime(day.addDays(1), QTime(0, 0)), true);
        }
        open(day);
        QCOMPARE(allDayNames(view->allDaySection()), QStringList {QStringLiteral("Trip")});
        const MeetEntity trip = *shown(QStringLiteral("Trip"));
        QVERIFY(
            dropOnTimeline(AllDayEventRowView::dragMimeType, trip.metId.toByteArray(), QDateTime(day, QTime(14, 0))));
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Trip")) && !shown(QStringLiteral("Trip"))->metIsAllDay, 15000);
        QCOMPARE(shown(QStringLiteral("Trip"))->metDate, QDateTime(day, QTime(14, 0)));
        QCOMPARE(shown(QStringLiteral("Trip"))->metDuration, 3600.0);
        QTRY_VERIFY(allDayNames(view->allDaySection()).isEmpty());

        // Up out of the grid past the all-day meets: dragged too far, the card goes back and
        // nothing is asked of the store.
        AllDayEventsSectionView* allDay = view->allDaySection();
        // Siblings: mapped through the screen.
        const QRect rowOnTimeline(view->timeline()->mapFromGlobal(allDay->mapToGlobal(QPoint(0, 0))), allDay->size());
        QSignalSpy madeAllDay(view->timeline(), &DailyScheduleTimelineView::allDayRequested);
        QSignalSpy changed(view->timeline(), &DailyScheduleTimelineView::changeRequested);
        QVERIFY(dragOnceTo(QStringLiteral("Trip"), rowOnTimeline.top() - 20));
        QVERIFY(madeAllDay.isEmpty());
        QVERIFY(changed.isEmpty());

        // Up out of the grid, onto the all-day meets.
        QVERIFY(dragOnceTo(QStringLiteral("Trip"), rowOnTimeline.center().y()));
        QCOMPARE(madeAllDay.size(), 1);
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Trip")) && shown(QStringLiteral("Trip"))->metIsAllDay, 15000);
        QCOMPARE(shown(QStringLiteral("Trip"))->metDate, QDateTime(day, QTime(0, 0)));
        QCOMPARE(shown(QStringLiteral("Trip"))->endDate(), QDateTime(day.addDays(1), QTime(0, 0)));
        QTRY_COMPARE(allDayNames(view->allDaySection()), QStringList {QStringLiteral("Trip")});
        QVERIFY(view->timeline()->cards().isEmpty());
    }

    // A time block made an all-day meet keeps its task's box on the all-day row, and ticking it
    // there marks the task done.
    void aLinkedAllDayMeetShowsItsTasksBox()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const QDate day = QDate::currentDate().addDays(3);
        const TasksApplicationFactory::Applications apps = tasks();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity trip {.prjUserId = userId, .prjName = QStringLiteral("Trip")};
        QVERIFY(apps.projects.create(trip).result);
        const TaskListEntity packing {.prjId = trip.prjId, .talName = QStringLiteral("Packing"), .talIsDefault = true};
        QVERIFY(apps.taskLists.create(packing).result);
        const TaskEntity pack {.prjId = trip.prjId, .talId = packing.talId, .tasTitle = QStringLiteral("Pack")};
        QVERIFY(apps.tasks.create(pack).result);
        open(day);
        waitUntilWatching({work});
        QVERIFY(dropOnTimeline(TaskRowView::dragMimeType, pack.tasId.toByteArray(), QDateTime(day, QTime(10, 0))));
        QTRY_VERIFY_WITH_TIMEOUT(cardOf(QStringLiteral("Pack")), 15000);

        AllDayEventsSectionView* allDay = view->allDaySection();
        QVERIFY(dragOnceTo(
            QStringLiteral("Pack"), view->timeline()->mapFromGlobal(allDay->mapToGlobal(allDay->rect().center())).y()));
        QTRY_VERIFY_WITH_TIMEOUT(allDay->rows().size() == 1 && allDay->rows().constFirst()->taskCheckBox(), 15000);
        QCOMPARE(shown(QStringLiteral("Pack"))->metTaskLink, (MeetTaskLink {MeetTaskLink::Kind::task, pack.tasId}));
        QVERIFY(!allDay->rows().constFirst()->taskCheckBox()->isChecked());

        allDay->rows().constFirst()->taskCheckBox()->click();
        QTRY_VERIFY_WITH_TIMEOUT(isDone(apps, pack.tasId), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(allDay->rows().size() == 1 && allDay->rows().constFirst()->taskCheckBox()
                && allDay->rows().constFirst()->taskCheckBox()->isChecked(),
            15000);
    }

    // The span watched moves only when the shown day nears its edge, and follows the calendars.
    // The days around the shown one are read ahead together; one changed elsewhere shows as the
    // store has it when it is opened.
    void theDaysAroundAreReadAheadAndKeptCurrent()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        const QDate day = QDate::currentDate().addDays(2);
        OtherProgram other(work);
        const QString standup = other.add(QStringLiteral("Stand-up"), QDateTime(day.addDays(6), QTime(9, 0)),
            QDateTime(day.addDays(6), QTime(9, 15)));
        open(day);
        waitUntilWatching({work});
        const CalendarWatchScope scope = view->calendarWatcher()->scope();
        QVERIFY(scope.covers(day.addDays(6)));
        for (QDate one = scope.start.date(); scope.covers(one); one = one.addDays(1))
            QTRY_VERIFY2_WITH_TIMEOUT(view->isDayCached(one), qPrintable(one.toString(Qt::ISODate)), 15000);

        other.change(standup, QStringLiteral("Stand-up, moved"), QDateTime(day.addDays(5), QTime(9, 0)),
            QDateTime(day.addDays(5), QTime(9, 15)));
        QTRY_VERIFY_WITH_TIMEOUT(!view->isDayCached(day.addDays(6)), 15000);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day.addDays(6));
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QVERIFY(!shown(QStringLiteral("Stand-up")) && !shown(QStringLiteral("Stand-up, moved")));
        QTRY_VERIFY_WITH_TIMEOUT(view->isDayCached(day.addDays(5)), 15000);
        loaded.clear();
        view->setSelectedDate(day.addDays(5));
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QVERIFY(shown(QStringLiteral("Stand-up, moved")).has_value());
    }

    // Changes to events join the one history: Ctrl+Z in any workspace takes them back, the
    // notice after a move or a delete too, and one changed elsewhere since is left alone.
    void changesToEventsAreUndoneAndRedone()
    {
        const QString work = addCalendar(QStringLiteral("Work"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), work);
        const QDate day = QDate::currentDate().addDays(4);
        UndoHistory& history = app->services().undoHistory();
        const auto step = [&](bool backwards) {
            QSignalSpy finished(&history, &UndoHistory::finished);
            backwards ? history.undo() : history.redo();
            return (!finished.isEmpty() || finished.wait(15000)) ? finished.constFirst().at(1).toString()
                                                                 : QStringLiteral("no outcome");
        };
        DailyEventsController controller(app->services(), std::nullopt);
        controller.create({QStringLiteral("Review"), {}, QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 0))});
        QTRY_COMPARE(history.undoText(), QStringLiteral("add event 'Review'"));
        open(day);
        waitUntilWatching({work});

        // Moved with the keyboard: undone from the notice, then redone and undone again.
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        card->setFocus();
        QTest::keyClick(card, Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY_WITH_TIMEOUT(view->notice()->isVisible() && view->undoButton()->isVisible(), 15000);
        QCOMPARE(history.undoText(), QStringLiteral("move event 'Review'"));
        {
            QSignalSpy finished(&history, &UndoHistory::finished);
            view->undoButton()->click();
            QVERIFY(!finished.isEmpty() || finished.wait(15000));
            QCOMPARE(finished.constFirst().at(1).toString(), QString());
        }
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(10, 0)), 15000);
        QCOMPARE(step(false), QString());
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(10, 15)), 15000);
        QCOMPARE(step(true), QString());
        QTRY_COMPARE_WITH_TIMEOUT(only().metDate, QDateTime(day, QTime(10, 0)), 15000);

        // Deleted after confirming: the notice brings it back whole.
        ModalAnswers::whenModalAppears(
            [](QWidget* box) { ModalAnswers::clickButtonNamed(box, qtTrId("meet-delete-confirm-button")); });
        view->deleteMeet(only());
        QTRY_COMPARE_WITH_TIMEOUT(view->noticeText()->text(), qtTrId("schedule-notice-deleted"), 15000);
        QCOMPARE(history.undoText(), QStringLiteral("delete event 'Review'"));
        QVERIFY(controller.loadDay(day).meets.isEmpty());
        view->undoButton()->click();
        QTRY_COMPARE_WITH_TIMEOUT(
            namesOf(controller.loadDay(day).meets), QStringList {QStringLiteral("Review")}, 15000);
        QTRY_COMPARE_WITH_TIMEOUT(namesOf(view->events()), QStringList {QStringLiteral("Review")}, 15000);
        QCOMPARE(only().metDate, QDateTime(day, QTime(10, 0)));

        // One occurrence of a series taken out, then put back with the rest as it was.
        MeetDraft series {QStringLiteral("Stand-up"), {}, QDateTime(day, QTime(9, 0)), QDateTime(day, QTime(9, 15))};
        series.recurrence = MeetRecurrenceFrequency::daily;
        controller.create(series);
        const auto standUpOn = [&](const QDate& one) {
            const QList<MeetEntity> meets = controller.loadDay(one).meets;
            return std::count_if(meets.cbegin(), meets.cend(),
                [](const MeetEntity& meet) { return meet.metName == QStringLiteral("Stand-up"); });
        };
        const MeetEntity second = controller.loadDay(day.addDays(1)).meets.constFirst();
        QCOMPARE(second.metName, QStringLiteral("Stand-up"));
        controller.remove(second);
        QTRY_COMPARE(history.undoText(), QStringLiteral("delete event 'Stand-up'"));
        QCOMPARE(standUpOn(day.addDays(1)), 0);
        QCOMPARE(step(true), QString());
        QCOMPARE(standUpOn(day.addDays(1)), 1);
        QCOMPARE(standUpOn(day.addDays(2)), 1);

        // Renamed by another program since: redoing the delete says so and deletes nothing.
        OtherProgram other(work);
        other.change(second.metOriginalIdentifier, QStringLiteral("Stand-up, renamed"), QDateTime(day, QTime(9, 0)),
            QDateTime(day, QTime(9, 15)));
        QCOMPARE(step(false), UndoText::changedElsewhereRedo(QStringLiteral("delete event 'Stand-up'")));
        QVERIFY(history.canRedo());
    }

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

        // The alarms' span reaches a week past the last alarm, and stays while it covers it.
        QVERIFY(CalendarWatchScope::untilAlarms(day, std::nullopt, calendars, {}).isEmpty());
        const CalendarWatchScope alarms
            = CalendarWatchScope::untilAlarms(day, QDateTime(day.addDays(40), QTime(9, 0)), calendars, {});
        QVERIFY(alarms.covers(day) && alarms.covers(day.addDays(47)) && !alarms.covers(day.addDays(-1)));
        QCOMPARE(
            CalendarWatchScope::untilAlarms(day.addDays(2), QDateTime(day.addDays(45), QTime(9, 0)), calendars, alarms),
            alarms);
        QVERIFY(CalendarWatchScope::untilAlarms(day, QDateTime(day.addDays(50), QTime(9, 0)), calendars, alarms)
                    .covers(day.addDays(50)));
    }
};

TOLVANE_GUI_TEST_MAIN(LiveScheduleTest)
#include "LiveScheduleTest.moc"
