#include "screens/schedule/DailyEventsView.h"

#include "ContentView.h"
#include "MainWindow.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsDateNavigatorView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "screens/schedule/MeetDetailView.h"
#include "screens/schedule/ScheduleProjectsPaneView.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

#include <stdexcept>

using ModalAnswers::clickButtonNamed;
using ModalAnswers::whenModalAppears;

namespace {

QStringList namesOf(const QList<MeetEntity>& meets)
{
    QStringList names;
    for (const MeetEntity& meet : meets)
        names.append(meet.metName);
    return names;
}

// The next weekday `weekday` (1 = Monday) after today.
QDate next(int weekday)
{
    QDate day = QDate::currentDate().addDays(1);
    while (day.dayOfWeek() != weekday)
        day = day.addDays(1);
    return day;
}

} // namespace

// The schedule driven through its widgets over the session's real calendar store, real encrypted
// task stores and, for alarms, a notification server of the test's own.
class DailyEventsViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    std::unique_ptr<DailyEventsView> view;
    QString calendar;
    QStringList calendarsMade;

    QString addCalendar(const QString& title)
    {
        const QString identifier = QStringLiteral("tolvane-test-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
        CalendarStore::shared().addLocalCalendar(identifier, title, QStringLiteral("#3E8BFF"));
        calendarsMade.append(identifier);
        return identifier;
    }

    DailyEventsView* open(std::shared_ptr<const Clock> clock = nullptr)
    {
        view = std::make_unique<DailyEventsView>(app->services(), DailyEventsView::Bindings {}, nullptr, clock);
        view->resize(1200, 900);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
        return view.get();
    }

    void showDay(const QDate& day)
    {
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day);
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
    }

    // Fills the editor that is open and saves; waits for the day to load again.
    void saveEditor(const QString& title, std::function<void(CreateEventView*)> more = {})
    {
        QTRY_VERIFY_WITH_TIMEOUT(view->editor() != nullptr, 5000);
        CreateEventView* editor = view->editor();
        editor->titleField()->clear();
        QTest::keyClicks(editor->titleField(), title);
        if (more)
            more(editor);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        editor->saveButton()->click();
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QTRY_VERIFY(view->editor() == nullptr);
    }

    MeetEntity shown(const QString& name)
    {
        for (const MeetEntity& meet : view->events()) {
            if (meet.metName == name)
                return meet;
        }
        throw std::runtime_error("no meet " + name.toStdString());
    }

    QTranslator english;

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
        calendar = addCalendar(QStringLiteral("Tolvane tests"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), calendar);
    }

    void cleanup()
    {
        view.reset();
        app.reset();
        for (const QString& identifier : std::as_const(calendarsMade))
            CalendarStore::shared().removeCalendar(identifier);
        calendarsMade.clear();
    }

    void createEditAndDeleteAMeetInTheCalendarStore()
    {
        open();
        const QDate day = next(2);
        showDay(day);
        // An empty point at 10:00 proposes a meet starting then.
        const int y = (10 - view->startHour()) * DailyScheduleTimelineView::slotHeight + 5;
        QTest::mouseClick(view->timeline(), Qt::LeftButton, {}, QPoint(200, y));
        QTRY_VERIFY(view->editor() != nullptr);
        QCOMPARE(view->editor()->startField()->dateTime(), QDateTime(day, QTime(10, 0)));

        // An end before the start stays in the sheet, with nothing written.
        QTest::keyClicks(view->editor()->titleField(), QStringLiteral("Backwards"));
        view->editor()->endField()->setDateTime(QDateTime(day, QTime(9, 0)));
        view->editor()->save();
        QVERIFY(view->editor()->errorMessage().has_value());
        QVERIFY(view->editor()->isVisible());
        view->editor()->endField()->setDateTime(QDateTime(day, QTime(11, 0)));
        saveEditor(QStringLiteral("Planning"));
        const MeetEntity planning = shown(QStringLiteral("Planning"));
        QCOMPARE(planning.metDate, QDateTime(day, QTime(10, 0)));
        QCOMPARE(planning.metCalendarIdentifier, calendar);
        QVERIFY(AppCreatedEventIdentifiersStore(app->userDefaults()).load().contains(planning.metOriginalIdentifier));
        QCOMPARE(view->timeline()->cards().size(), 1);

        view->editMeet(planning);
        QVERIFY(view->editor()->isEditing());
        saveEditor(QStringLiteral("Planning, moved"), [&](CreateEventView* editor) {
            editor->startField()->setDateTime(QDateTime(day, QTime(14, 0)));
            editor->endField()->setDateTime(QDateTime(day, QTime(15, 30)));
        });
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Planning, moved")});
        QCOMPARE(view->events().first().metDuration, 5400.0);

        // A fresh read of the store, not the view's copy.
        const DailyEventsDay stored = DailyEventsController(app->services(), std::nullopt).loadDay(day);
        QCOMPARE(namesOf(stored.meets), QStringList {QStringLiteral("Planning, moved")});

        whenModalAppears([](QWidget* box) { clickButtonNamed(box, qtTrId("meet-delete-cancel-button")); });
        view->deleteMeet(view->events().first());
        QCOMPARE(view->events().size(), 1);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        whenModalAppears([](QWidget* box) { clickButtonNamed(box, qtTrId("meet-delete-confirm-button")); });
        view->deleteMeet(view->events().first());
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QVERIFY(view->events().isEmpty());
        QVERIFY(!view->deleteErrorMessage());
    }

    void editOneOccurrenceOfASeries()
    {
        open();
        const QDate monday = next(1);
        showDay(monday);
        view->createEvent(QDateTime(monday, QTime(8, 30)));
        saveEditor(QStringLiteral("Gym"), [](CreateEventView* editor) {
            editor->repeatField()->setCurrentIndex(editor->repeatField()->findData(int(RepeatOption::week)));
            editor->weekdayToggle(2)->click();
            editor->weekdayToggle(4)->click();
            QCOMPARE(editor->repetitionSummary(), QStringLiteral("Repeats every monday and wednesday"));
        });
        const QDate wednesday = monday.addDays(2);
        showDay(wednesday);
        QCOMPARE(shown(QStringLiteral("Gym")).metRecurrenceFrequency, MeetRecurrenceFrequency::weekly);
        view->editMeet(shown(QStringLiteral("Gym")));
        QCOMPARE(view->editor()->repetitionSummary(), QStringLiteral("Repeats every monday and wednesday"));
        saveEditor(QStringLiteral("Gym, legs"));
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Gym, legs")});
        showDay(monday.addDays(7));
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Gym")});
    }

    void hourRangeAndDateBounds()
    {
        app->userDefaults().setValue(DailyEventsView::startHourKey, 0);
        app->userDefaults().setValue(DailyEventsView::endHourKey, 23);
        const auto clock = std::make_shared<const SettableClock>(QDateTime(QDate(2026, 5, 20), QTime(9, 0)));
        open(clock);
        QSpinBox* start = view->timeRangeControl()->startStepper();
        QSpinBox* end = view->timeRangeControl()->endStepper();
        QCOMPARE(start->minimum(), 0);
        QCOMPARE(end->maximum(), 23);
        start->stepDown();
        end->stepUp();
        QCOMPARE(view->startHour(), 0);
        QCOMPARE(view->endHour(), 23);
        end->setValue(3);
        start->setValue(9);
        QCOMPARE(start->value(), 2);
        QCOMPARE(end->minimum(), 3);
        QCOMPARE(app->userDefaults().value(DailyEventsView::startHourKey).toInt(), 2);
        QCOMPARE(app->userDefaults().value(DailyEventsView::endHourKey).toInt(), 3);
        QCOMPARE(view->timeline()->height(), 2 * DailyScheduleTimelineView::slotHeight + 1);

        // Hours changed in the settings show the next time the schedule does.
        app->userDefaults().setValue(DailyEventsView::startHourKey, 7);
        app->userDefaults().setValue(DailyEventsView::endHourKey, 19);
        view->hide();
        view->show();
        QCOMPARE(view->startHour(), 7);
        QCOMPARE(view->endHour(), 19);
        QCOMPARE(start->value(), 7);
        QCOMPARE(end->value(), 19);

        DailyEventsDateNavigatorView* navigator = view->navigator();
        showDay(QDate(2026, 8, 19));
        QVERIFY(navigator->nextButton()->isEnabled());
        showDay(QDate(2026, 8, 20));
        QVERIFY(!navigator->nextButton()->isEnabled());
        navigator->nextButton()->click();
        QCOMPARE(view->selectedDate(), QDate(2026, 8, 20));
        view->setSelectedDate(QDate(2027, 1, 1));
        QCOMPARE(view->selectedDate(), QDate(2026, 8, 20));
        view->setSelectedDate(QDate(2025, 1, 1));
        QCOMPARE(view->selectedDate(), QDate(2026, 2, 20));
        QVERIFY(!navigator->previousButton()->isEnabled());
        navigator->todayButton()->click();
        QCOMPARE(view->selectedDate(), QDate(2026, 5, 20));
    }

    void armAMeetAndTheWholeDay()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const QDateTime soon = QDateTime::currentDateTime().addSecs(4);
        DailyEventsController controller(app->services(), std::nullopt);
        controller.create({QStringLiteral("Soon"), {}, soon, soon.addSecs(600)});
        const QDateTime later = QDateTime::currentDateTime().addSecs(3 * 3600);
        controller.create({QStringLiteral("Later"), {}, later, later.addSecs(600)});
        open();
        QCOMPARE(view->selectedDate(), soon.date());

        DailyEventCardView* card = nullptr;
        for (DailyEventCardView* candidate : view->timeline()->cards()) {
            if (candidate->meet().metName == QStringLiteral("Soon"))
                card = candidate;
        }
        QVERIFY(card);
        QVERIFY(!card->isAlarmSet());
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        card->alarmButton()->click();
        QVERIFY(!loaded.isEmpty() || loaded.wait(15000));
        QVERIFY(ArmedAlarmsStore(app->userDefaults()).contains(shown("Soon").metId.toString(QUuid::WithoutBraces)));
        QVERIFY(server.waitForNotifications(1, 15000));
        QVERIFY(server.notifications().first().body.contains(QStringLiteral("Soon"))
            || server.notifications().first().summary.contains(QStringLiteral("Soon")));

        QToolButton* dayButton = view->navigator()->dayAlarmButton();
        QVERIFY(dayButton->isEnabled());
        dayButton->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->navigator()->isDayAlarmSet(), 15000);
        QTRY_VERIFY(!view->navigator()->isTogglingDayAlarms());
        QVERIFY(dayButton->isEnabled());
        QVERIFY(ArmedAlarmsStore(app->userDefaults()).contains(shown("Later").metId.toString(QUuid::WithoutBraces)));
    }

    void anOpenedAlarmShowsItsMeet()
    {
        const QDate day = next(4);
        const QDateTime start(day, QTime(16, 0));
        DailyEventsController(app->services(), std::nullopt)
            .create({QStringLiteral("Review"), QStringLiteral("Quarterly"), start, start.addSecs(1800)});
        MainWindow window(app->services());
        window.show();
        app->notificationCenter().post(
            NotificationName::openMeetFromAlarm, QVariant::fromValue(MeetAlarmNavigationPayload {"Review", start}));
        auto* schedule = qobject_cast<DailyEventsView*>(window.contentView()->screen(SidebarItemEnum::schedule));
        QVERIFY(schedule);
        QTRY_VERIFY_WITH_TIMEOUT(schedule->meetDetail() != nullptr, 15000);
        QCOMPARE(schedule->selectedDate(), day);
        QCOMPARE(schedule->meetOpenedFromAlarm()->metName, QStringLiteral("Review"));
        QCOMPARE(schedule->meetDetail()->meet().metDate, start);
        QVERIFY(!window.contentView()->pendingMeetNavigation);
        QVERIFY(!window.contentView()->pendingDateSelection);
    }

    void projectsUnfoldOnWorkingDaysOnly()
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const UserEntity user = *app->services().loginApplication().getCurrentUser().dataAs<UserEntity>();
        const QUuid userId = QUuid::fromString(user.usrId);
        const ProjectEntity everyDay {.prjUserId = userId, .prjName = "Health", .prjShowEveryDay = true};
        const ProjectEntity work {.prjUserId = userId, .prjName = "Work"};
        QVERIFY(apps.projects.create(everyDay).result);
        QVERIFY(apps.projects.create(work).result);
        const QDate holiday = next(3);
        const QString holidays = addCalendar(QStringLiteral("Festivos de prueba"));
        CalendarStore::shared().importCalendarData(holidays,
            "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane tests//EN\r\nBEGIN:VEVENT\r\nUID:"
                + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
                + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART;VALUE=DATE:" + holiday.toString(u"yyyyMMdd").toLatin1()
                + "\r\nDTEND;VALUE=DATE:" + holiday.addDays(1).toString(u"yyyyMMdd").toLatin1()
                + "\r\nSUMMARY:Fiesta\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
        open();
        ScheduleProjectsPaneView* pane = view->projectsPane();
        const auto expandedOn = [&](const QDate& day) {
            QSignalSpy loaded(pane, &ScheduleProjectsPaneView::loaded);
            pane->setSelectedDate(day);
            // Generous: on a loaded machine the calendar store answers slowly.
            if (loaded.isEmpty() && !loaded.wait(45000))
                throw std::runtime_error("the pane never loaded");
            QStringList names;
            for (ScheduleProjectSectionView* section : pane->projectSections()) {
                if (section->isExpanded())
                    names.append(section->item().project.prjName);
            }
            names.sort();
            return names;
        };
        QCOMPARE(expandedOn(next(2)), (QStringList {"Health", "Work"}));
        QCOMPARE(expandedOn(next(6)), QStringList {"Health"});
        QCOMPARE(expandedOn(holiday), QStringList {"Health"});
        QVERIFY(pane->isHolidaySelectedDate());
    }
};

TOLVANE_GUI_TEST_MAIN(DailyEventsViewTest)
#include "DailyEventsViewTest.moc"
