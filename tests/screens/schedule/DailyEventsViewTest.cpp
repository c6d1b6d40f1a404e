#include "screens/schedule/DailyEventsView.h"

#include "ContentView.h"
#include "MainWindow.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "meetings/domain/MeetAlarmError.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/TaskRowView.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsDateNavigatorView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "screens/schedule/ElidedLabel.h"
#include "screens/schedule/MeetDetailView.h"
#include "screens/schedule/ScheduleFixture.h"
#include "screens/schedule/ScheduleProjectsPaneView.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/AppFixture.h"
#include "support/ui/ModalAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDateTimeEdit>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QScrollBar>
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
class DailyEventsViewTest : public QObject, ScheduleFixture {
    Q_OBJECT

    QString calendar;

    DailyEventsView* open(std::shared_ptr<const Clock> clock = nullptr)
    {
        return ScheduleFixture::open(QSize(1200, 900), std::move(clock));
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
        editor->saveButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->editor() == nullptr, 15000);
        // Saved, the day is read again at once; reads the calendar store's notifications start
        // may come first, so the one to wait for is the last.
        QTRY_VERIFY_WITH_TIMEOUT(!view->isLoading(), 15000);
    }

    MeetEntity shownMeet(const QString& name) const
    {
        if (const std::optional<MeetEntity> meet = shown(name))
            return *meet;
        throw std::runtime_error("no meet " + name.toStdString());
    }

private Q_SLOTS:
    void initTestCase() { loadEnglish(); }

    void init()
    {
        setUpSchedule();
        calendar = addCalendar(QStringLiteral("Tolvane tests"));
        app->userDefaults().setValue(QStringLiteral("defaultCalendarIdentifier"), calendar);
    }

    void cleanup() { tearDownSchedule(); }

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
        const MeetEntity planning = shownMeet(QStringLiteral("Planning"));
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
        QTRY_VERIFY_WITH_TIMEOUT(view->events().isEmpty(), 15000);
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
        QCOMPARE(shownMeet(QStringLiteral("Gym")).metRecurrenceFrequency, MeetRecurrenceFrequency::weekly);
        view->editMeet(shownMeet(QStringLiteral("Gym")));
        QCOMPARE(view->editor()->repetitionSummary(), QStringLiteral("Repeats every monday and wednesday"));
        saveEditor(QStringLiteral("Gym, legs"));
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Gym, legs")});
        showDay(monday.addDays(7));
        QCOMPARE(namesOf(view->events()), QStringList {QStringLiteral("Gym")});
    }

    void theEditorOffersCalendarAllDayPlaceAndLink()
    {
        const QString other = addCalendar(QStringLiteral("Tolvane other"));
        open();
        const QDate day = next(3);
        showDay(day);
        view->createEvent(QDateTime(day, QTime(9, 0)));
        QTRY_VERIFY(view->editor() != nullptr);
        QComboBox* calendars = view->editor()->calendarField();
        QCOMPARE(calendars->currentData().toString(), calendar);
        QVERIFY(calendars->findData(other) >= 0);
        calendars->setCurrentIndex(calendars->findData(other));
        saveEditor(QStringLiteral("Elsewhere"));
        QCOMPARE(shownMeet(QStringLiteral("Elsewhere")).metCalendarIdentifier, other);

        view->createEvent(QDateTime(day, QTime(9, 0)));
        QTRY_VERIFY(view->editor() != nullptr);
        CreateEventView* editor = view->editor();
        QTest::keyClicks(editor->titleField(), QStringLiteral("Offsite"));
        editor->endField()->setDate(day.addDays(1));
        editor->allDayField()->click();
        QTest::keyClicks(editor->locationField(), QStringLiteral("Room 4"));
        QTest::keyClicks(editor->linkField(), QStringLiteral("meet.example.org/offsite"));
        const MeetDraft draft = editor->draft();
        QVERIFY(draft.isAllDay);
        QCOMPARE(draft.start, QDateTime(day, QTime(0, 0)));
        QCOMPARE(draft.end, QDateTime(day.addDays(2), QTime(0, 0)));
        QCOMPARE(draft.location, QStringLiteral("Room 4"));
        QCOMPARE(draft.url, QUrl(QStringLiteral("http://meet.example.org/offsite")));
        QCOMPARE(draft.calendarIdentifier, calendar);
        editor->linkField()->setText(QStringLiteral("not a link"));
        editor->save();
        QCOMPARE(editor->errorMessage(), qtTrId("create-event-link-invalid-error"));

        // What the editor offers is what the calendar keeps.
        editor->linkField()->setText(QStringLiteral("meet.example.org/offsite"));
        editor->saveButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->editor() == nullptr, 15000);
        // Saved, the day is read again at once; reads the calendar store's notifications start
        // may come first, so the one to wait for is the last.
        QTRY_VERIFY_WITH_TIMEOUT(!view->isLoading(), 15000);
        const MeetEntity offsite = shownMeet(QStringLiteral("Offsite"));
        QVERIFY(offsite.metIsAllDay);
        QCOMPARE(offsite.metDate, QDateTime(day, QTime(0, 0)));
        QCOMPARE(offsite.endDate(), QDateTime(day.addDays(2), QTime(0, 0)));
        QCOMPARE(offsite.metLocation, QStringLiteral("Room 4"));
        QCOMPARE(offsite.metUrl, QUrl(QStringLiteral("http://meet.example.org/offsite")));

        // Every button of the sheet speaks the user's language.
        QTranslator spanish;
        QVERIFY(spanish.load(QStringLiteral(":/i18n/tolvane_es")));
        QCoreApplication::removeTranslator(&english);
        QCoreApplication::installTranslator(&spanish);
        const auto restore = qScopeGuard([&] {
            QCoreApplication::removeTranslator(&spanish);
            QCoreApplication::installTranslator(&english);
        });
        CreateEventView spanishEditor(QDateTime(day, QTime(9, 0)), [](const MeetDraft&, CreateEventView::Done) {});
        QCOMPARE(spanishEditor.cancelButton()->text(), QStringLiteral("Cancelar"));
        QCOMPARE(spanishEditor.allDayField()->text(), QStringLiteral("Todo el día"));
        for (const QAbstractButton* button : spanishEditor.findChildren<QAbstractButton*>()) {
            if (qobject_cast<const QToolButton*>(button))
                continue;
            QVERIFY2(button->text() != QStringLiteral("Cancel") && button->text() != QStringLiteral("Save"),
                qPrintable(button->text()));
        }
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
        DailyEventsController controller(app->services(), std::nullopt);
        // Later the same day, whatever the hour the test runs at.
        const QDateTime now = QDateTime::currentDateTime();
        const qint64 untilMidnight = now.secsTo(QDateTime(now.date().addDays(1), QTime(0, 0)));
        const QDateTime later = now.addSecs(std::min<qint64>(3 * 3600, untilMidnight / 2 + 60));
        controller.create({QStringLiteral("Later"), {}, later, later.addSecs(600)});
        open();
        // Made once the schedule is up, so that it has not started by the time it is armed: a
        // meet already begun cannot be.
        const QDateTime soon = QDateTime::currentDateTime().addSecs(30);
        controller.create({QStringLiteral("Soon"), {}, soon, soon.addSecs(600)});
        QSignalSpy reloaded(view.get(), &DailyEventsView::loaded);
        app->notificationCenter().post(NotificationName::alarmScheduleDidChange);
        QVERIFY(!reloaded.isEmpty() || reloaded.wait(15000));
        QCOMPARE(view->selectedDate(), soon.date());

        DailyEventCardView* card = nullptr;
        for (DailyEventCardView* candidate : view->timeline()->cards()) {
            if (candidate->meet().metName == QStringLiteral("Soon"))
                card = candidate;
        }
        QVERIFY(card);
        QVERIFY(!card->isAlarmSet());
        // The schedule also reads the day again whenever the calendar store changes: the outcome,
        // not the next read, is what to wait for.
        card->alarmButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(
            ArmedAlarmsStore(app->userDefaults()).contains(shownMeet("Soon").metId.toString(QUuid::WithoutBraces)),
            15000);
        QVERIFY(server.waitForNotifications(1, 60000));
        QVERIFY(server.notifications().first().body.contains(QStringLiteral("Soon"))
            || server.notifications().first().summary.contains(QStringLiteral("Soon")));

        QToolButton* dayButton = view->navigator()->dayAlarmButton();
        QVERIFY(dayButton->isEnabled());
        dayButton->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->navigator()->isDayAlarmSet(), 15000);
        QTRY_VERIFY(!view->navigator()->isTogglingDayAlarms());
        QVERIFY(dayButton->isEnabled());
        QVERIFY(
            ArmedAlarmsStore(app->userDefaults()).contains(shownMeet("Later").metId.toString(QUuid::WithoutBraces)));
    }

    // A click on a meet opens that meet alone; the timeline beneath must not take it as a click
    // on an empty point.
    void clickingAMeetOpensItsDetailOnly()
    {
        const QDate day = next(2);
        DailyEventsController controller(app->services(), std::nullopt);
        controller.create({QStringLiteral("Standup"), {}, QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 0))});
        open();
        showDay(day);
        QCOMPARE(view->timeline()->cards().size(), 1);
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        QTest::mouseClick(card, Qt::LeftButton, {}, card->rect().center());
        QVERIFY(view->meetDetail() != nullptr);
        QCOMPARE(view->meetDetail()->meet().metName, QStringLiteral("Standup"));
        QVERIFY(view->editor() == nullptr);
        view->meetDetail()->close();

        // The empty point just below still proposes a new meet.
        QTest::mouseClick(view->timeline(), Qt::LeftButton, {}, QPoint(card->x() + 10, card->geometry().bottom() + 20));
        QVERIFY(view->editor() != nullptr);
        QVERIFY(!view->editor()->isEditing());
    }

    // A switch that falls back to off must say why.
    void aRefusedAlarmSaysWhy()
    {
        // The world of a desktop without a notification daemon: nobody owns the name and nobody
        // could be started for it.
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        const QString notifications = QStringLiteral("org.freedesktop.Notifications");
        QVERIFY2(!bus->isServiceRegistered(notifications).value(), "a notification server is on the bus");
        QVERIFY2(!bus->activatableServiceNames().value().contains(notifications), "a notification server can start");

        DailyEventsController controller(app->services(), std::nullopt);
        const QDateTime later = QDateTime::currentDateTime().addSecs(2 * 3600);
        const QDateTime earlier = QDateTime::currentDateTime().addSecs(-600);
        const QDate today = QDate::currentDate();
        // Kept to today, so both meets are on the day the schedule opens with.
        controller.create({QStringLiteral("Later"), {}, later.date() == today ? later : QDateTime(today, QTime(23, 50)),
            QDateTime(today, QTime(23, 59))});
        controller.create({QStringLiteral("Started"), {},
            earlier.date() == today ? earlier : QDateTime(today, QTime(0, 0)), QDateTime(today, QTime(23, 59))});
        app->userDefaults().setValue(DailyEventsView::startHourKey, 0);
        app->userDefaults().setValue(DailyEventsView::endHourKey, 23);
        open();
        const auto card = [&](const QString& name) -> DailyEventCardView* {
            for (DailyEventCardView* candidate : view->timeline()->cards()) {
                if (candidate->meet().metName == name)
                    return candidate;
            }
            return nullptr;
        };
        const auto armedIds = [&] { return ArmedAlarmsStore(app->userDefaults()).load(); };

        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        card(QStringLiteral("Later"))->alarmButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->alarmAlert() != nullptr, 15000);
        QCOMPARE(view->alarmAlert()->text(), MeetAlarmError::noNotificationService().localizedDescription());
        QVERIFY(view->alarmAlert()->isVisible());
        QVERIFY(armedIds().isEmpty());
        // The switch comes back from the reload that follows every request, off.
        QTRY_VERIFY_WITH_TIMEOUT(loaded.count() > 0, 15000);
        QVERIFY(!card(QStringLiteral("Later"))->isAlarmSet());
        QVERIFY(card(QStringLiteral("Later"))->alarmButton()->isEnabled());
        view->alarmAlert()->close();
        QTRY_VERIFY(view->alarmAlert() == nullptr);

        // With a server, the meet that already began is still refused, for its own reason.
        TestNotificationServer server;
        QVERIFY(server.start());
        card(QStringLiteral("Started"))->alarmButton()->click();
        QTRY_VERIFY_WITH_TIMEOUT(view->alarmAlert() != nullptr, 15000);
        QCOMPARE(view->alarmAlert()->text(), MeetAlarmError::alreadyStarted().localizedDescription());
        QCOMPARE(*view->alarmErrorMessage(), MeetAlarmError::alreadyStarted().localizedDescription());
        QVERIFY(armedIds().isEmpty());
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

    // Projects, lists and tasks made in the projects workspace show in the schedule when the user
    // comes back to it, without a change of day.
    void theProjectsPaneFollowsChangesMadeElsewhere()
    {
        MainWindow window(app->services());
        window.show();
        ContentView* content = window.contentView();
        content->select(SidebarItemEnum::schedule);
        auto* schedule = qobject_cast<DailyEventsView*>(content->screen(SidebarItemEnum::schedule));
        QVERIFY(schedule);
        ScheduleProjectsPaneView* pane = schedule->projectsPane();
        QTRY_VERIFY_WITH_TIMEOUT(pane->findChild<QLabel*>(QStringLiteral("scheduleProjectsEmptyState")), 45000);

        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity garden {.prjUserId = userId, .prjName = "Home & Garden", .prjShowEveryDay = true};
        QVERIFY(apps.projects.create(garden).result);
        const TaskListEntity chores {.prjId = garden.prjId, .talName = "Chores", .talIsDefault = true};
        QVERIFY(apps.taskLists.create(chores).result);
        const auto backToTheSchedule = [&] {
            content->select(SidebarItemEnum::projects);
            content->select(SidebarItemEnum::schedule);
        };
        const auto sectionOf = [&](const QString& name) -> ScheduleProjectSectionView* {
            for (ScheduleProjectSectionView* section : pane->projectSections()) {
                if (section->item().project.prjName == name)
                    return section;
            }
            return nullptr;
        };
        backToTheSchedule();
        QTRY_VERIFY_WITH_TIMEOUT(sectionOf("Home & Garden") != nullptr, 15000);
        QVERIFY(!pane->findChild<QLabel*>(QStringLiteral("scheduleProjectsEmptyState")));
        ScheduleProjectSectionView* section = sectionOf("Home & Garden");
        QCOMPARE(section->item().list->talName, QStringLiteral("Chores"));
        QVERIFY(section->isExpanded());
        // The "&" is part of the name, not the mark of an Alt+G shortcut.
        const auto* header = section->findChild<QToolButton*>(QStringLiteral("scheduleProjectHeader"));
        QVERIFY(QKeySequence::mnemonic(header->text()).isEmpty());
        QCOMPARE(header->toolTip(), QStringLiteral("Home & Garden"));

        const TaskEntity weed {.prjId = garden.prjId, .talId = chores.talId, .tasTitle = "Weed the beds"};
        QVERIFY(apps.tasks.create(weed).result);
        backToTheSchedule();
        QTRY_COMPARE_WITH_TIMEOUT(sectionOf("Home & Garden")->taskRows().size(), 1, 15000);

        // Coming back with nothing changed keeps the very same rows.
        QSignalSpy loaded(pane, &ScheduleProjectsPaneView::loaded);
        section = sectionOf("Home & Garden");
        // A load whose work ends before its result is claimed reports at once, before any wait.
        backToTheSchedule();
        QTRY_VERIFY_WITH_TIMEOUT(!loaded.isEmpty(), 15000);
        QCOMPARE(sectionOf("Home & Garden"), section);
    }

    // A folded project makes no rows until the user unfolds it, so a big store stays cheap.
    void foldedProjectsBuildTheirRowsOnUnfold()
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity work {.prjUserId = userId, .prjName = "Work"};
        QVERIFY(apps.projects.create(work).result);
        const TaskListEntity inbox {.prjId = work.prjId, .talName = "Inbox", .talIsDefault = true};
        QVERIFY(apps.taskLists.create(inbox).result);
        for (const QString& title : {"Report", "Review"})
            QVERIFY(apps.tasks.create({.prjId = work.prjId, .talId = inbox.talId, .tasTitle = title}).result);
        open();
        ScheduleProjectsPaneView* pane = view->projectsPane();
        QSignalSpy loaded(pane, &ScheduleProjectsPaneView::loaded);
        pane->setSelectedDate(next(6));
        QVERIFY(!loaded.isEmpty() || loaded.wait(45000));
        QCOMPARE(pane->projectSections().size(), 1);
        ScheduleProjectSectionView* section = pane->projectSections().constFirst();
        QVERIFY(!section->isExpanded());
        QVERIFY(section->taskRows().isEmpty());
        QTest::mouseClick(section->findChild<QToolButton*>(QStringLiteral("scheduleProjectHeader")), Qt::LeftButton);
        QVERIFY(section->isExpanded());
        QCOMPARE(section->taskRows().size(), 2);
    }

    // The pane reads every project's lists and the default lists' tasks together: each project
    // still gets its own default list with only that list's tasks, in the order they were added.
    void eachProjectShowsItsOwnDefaultList()
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity work {.prjUserId = userId, .prjName = "Work", .prjShowEveryDay = true};
        const ProjectEntity home {.prjUserId = userId, .prjName = "Home", .prjShowEveryDay = true};
        const ProjectEntity ideas {.prjUserId = userId, .prjName = "Ideas", .prjShowEveryDay = true};
        for (const ProjectEntity& project : {work, home, ideas})
            QVERIFY(apps.projects.create(project).result);
        const TaskListEntity someday {.prjId = work.prjId, .talName = "Someday"};
        const TaskListEntity inbox {.prjId = work.prjId, .talName = "Inbox", .talIsDefault = true};
        const TaskListEntity chores {.prjId = home.prjId, .talName = "Chores", .talIsDefault = true};
        const TaskListEntity notes {.prjId = ideas.prjId, .talName = "Notes"};
        for (const TaskListEntity& list : {someday, inbox, chores, notes})
            QVERIFY(apps.taskLists.create(list).result);
        // Interleaved across lists, as tasks are added over a day.
        const QList<std::pair<TaskListEntity, QString>> added {{inbox, "Report"}, {chores, "Dishes"},
            {someday, "Learn Greek"}, {inbox, "Review"}, {notes, "Idea"}, {chores, "Laundry"}, {inbox, "Call Ana"}};
        for (const auto& [list, title] : added)
            QVERIFY(apps.tasks.create({.prjId = list.prjId, .talId = list.talId, .tasTitle = title}).result);

        open();
        ScheduleProjectsPaneView* pane = view->projectsPane();
        QTRY_VERIFY_WITH_TIMEOUT(pane->projectSections().size() == 3, 45000);
        const auto shown = [&](const QString& project) {
            for (const ScheduleProjectSectionView* section : pane->projectSections()) {
                if (section->item().project.prjName != project)
                    continue;
                QStringList titles {section->item().list ? section->item().list->talName : QStringLiteral("-")};
                for (const TaskEntity& task : section->item().tasks)
                    titles.append(task.tasTitle);
                return titles;
            }
            return QStringList();
        };
        QCOMPARE(shown("Work"), QStringList({"Inbox", "Report", "Review", "Call Ana"}));
        QCOMPARE(shown("Home"), QStringList({"Chores", "Dishes", "Laundry"}));
        // No default list: a header alone.
        QCOMPARE(shown("Ideas"), QStringList({"-"}));
    }

    // Tasks typed into a project's add row faster than they are stored all arrive, in order, and
    // the row stays open with the focus while the section takes in each new task.
    void tasksTypedQuicklyInTheScheduleAllArriveInOrder()
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const ProjectEntity home {.prjUserId = userId, .prjName = "Home", .prjShowEveryDay = true};
        QVERIFY(apps.projects.create(home).result);
        const TaskListEntity chores {.prjId = home.prjId, .talName = "Chores", .talIsDefault = true};
        QVERIFY(apps.taskLists.create(chores).result);
        open();
        ScheduleProjectsPaneView* pane = view->projectsPane();
        QTRY_VERIFY_WITH_TIMEOUT(pane->projectSections().size() == 1, 45000);
        ScheduleProjectSectionView* section = pane->projectSections().constFirst();
        if (!section->isExpanded())
            QTest::mouseClick(
                section->findChild<QToolButton*>(QStringLiteral("scheduleProjectHeader")), Qt::LeftButton);
        InlineAddRowView* row = section->addRow();
        QVERIFY(row);
        view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
        row->findChild<QPushButton*>()->click();
        QTRY_VERIFY(row->isAncestorOf(QApplication::focusWidget()));

        QStringList typed;
        for (int number = 1; number <= 30; ++number) {
            typed.append(QStringLiteral("Chore %1").arg(number));
            QTest::keyClicks(static_cast<QWidget*>(nullptr), typed.constLast());
            QTest::keyClick(static_cast<QWidget*>(nullptr), Qt::Key_Return);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!row->isAdding() && row->waitingCount() == 0, 120000);
        QStringList stored;
        const TaskResultEntity listed = apps.tasks.list(chores.talId);
        const auto* tasks = listed.dataAs<QList<TaskEntity>>();
        QVERIFY(tasks);
        for (const TaskEntity& task : *tasks)
            stored.append(task.tasTitle + (task.tasIsDone ? QStringLiteral(" ✓") : QString()));
        QCOMPARE(stored, typed);
        QTRY_COMPARE_WITH_TIMEOUT(section->taskRows().size(), 30, 15000);
        QCOMPARE(pane->projectSections().constFirst(), section);
        QCOMPARE(section->addRow(), row);
        QVERIFY(row->isEditing());
        QVERIFY(row->isAncestorOf(QApplication::focusWidget()));
    }

    // What is left of an 800x600 window beside the sidebar: everything still fits, long names
    // give way with the whole name in the tooltip, and the right pane never scrolls sideways.
    void theScheduleFitsASmallWindow()
    {
        const auto apps = *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        const QUuid userId
            = QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const QString longName = QStringLiteral("Renovation of the house by the lake, with the garden and the garage");
        const ProjectEntity renovation {.prjUserId = userId, .prjName = longName};
        QVERIFY(apps.projects.create(renovation).result);
        const TaskListEntity list {.prjId = renovation.prjId, .talName = "Steps", .talIsDefault = true};
        QVERIFY(apps.taskLists.create(list).result);
        QVERIFY(apps.tasks
                    .create({.prjId = renovation.prjId,
                        .talId = list.talId,
                        .tasTitle = "Ask three builders for a quote on the roof and the windows"})
                    .result);
        const QDate day = next(2);
        DailyEventsController(app->services(), std::nullopt)
            .create({longName, {}, QDateTime(day, QTime(10, 0)), QDateTime(day, QTime(11, 0))});
        open();
        QSignalSpy paneLoaded(view->projectsPane(), &ScheduleProjectsPaneView::loaded);
        showDay(day);
        QTRY_VERIFY_WITH_TIMEOUT(paneLoaded.count() > 0, 45000);
        view->resize(580, 560);
        QTRY_COMPARE(view->size(), QSize(580, 560));
        QVERIFY2(view->minimumSizeHint().width() <= 580, qPrintable(QString::number(view->minimumSizeHint().width())));

        DailyEventsDateNavigatorView* navigator = view->navigator();
        for (const QWidget* part : navigator->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (part->isVisible())
                QVERIFY2(navigator->rect().contains(part->geometry()), qPrintable(part->objectName()));
        }
        auto* scroll = view->projectsPane()->findChild<QScrollArea*>(QStringLiteral("scheduleProjectsScroll"));
        // Once the new width has reached the pane's rows, they fit it.
        QTRY_VERIFY(scroll->widget()->width() <= scroll->viewport()->width());
        QVERIFY(!scroll->horizontalScrollBar()->isVisible());
        ScheduleProjectSectionView* section = view->projectsPane()->projectSections().constFirst();
        const auto* header = section->findChild<QToolButton*>(QStringLiteral("scheduleProjectHeader"));
        QVERIFY(header->text().endsWith(QStringLiteral("…")));
        QCOMPARE(header->toolTip(), longName);
        QVERIFY(section->geometry().right() <= scroll->viewport()->width());
        // A long task title wraps onto as many lines as it needs instead of being cut.
        QTRY_VERIFY(!section->taskRows().isEmpty());
        const auto* title = section->taskRows().constFirst()->findChild<QLabel*>(QStringLiteral("editableText"));
        QTRY_VERIFY2(title->height() >= title->heightForWidth(title->width()),
            qPrintable(QStringLiteral("%1 < %2").arg(title->height()).arg(title->heightForWidth(title->width()))));

        // The date is whole; the day's buttons moved below it rather than squeeze it.
        QTRY_VERIFY(!navigator->findChild<ElidedLabel*>()->isElided());
        QVERIFY(navigator->todayButton()->isVisible());
        DailyEventCardView* card = view->timeline()->cards().constFirst();
        QVERIFY(card->toolTip().startsWith(longName));
        const auto* cardTitle = card->findChild<ElidedLabel*>();
        QTRY_VERIFY(cardTitle->isVisible() && cardTitle->width() > card->width() / 4);
        QVERIFY(cardTitle->isElided());
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
