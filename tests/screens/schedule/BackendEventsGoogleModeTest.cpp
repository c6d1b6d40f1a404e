#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "screens/schedule/CreateEventView.h"
#include "screens/schedule/DailyEventsController.h"
#include "screens/schedule/DailyEventsView.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"
#include "support/ui/ModalAnswers.h"
#include "undo/UndoHistory.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTranslator>

#include <stdexcept>

using namespace ModalAnswers;

// The schedule of a Google account over the real server (on a throwaway PostgreSQL) and the
// desktop's calendar store: events made on the backend from the editor, and repeating ones shown
// on each of their days.
class BackendEventsGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    std::unique_ptr<DailyEventsView> view;
    QTranslator english;

    AppServices& services() { return google->app().services(); }
    UndoHistory& history() { return services().undoHistory(); }
    RemoteEventRepositoryImpl server() { return RemoteEventRepositoryImpl(*services().apiClient()); }

    // A Monday at least a week ahead: its occurrences may still have alarms, and a second week
    // follows.
    static QDate comingMonday()
    {
        QDate day = QDate::currentDate().addDays(7);
        while (day.dayOfWeek() != Qt::Monday)
            day = day.addDays(1);
        return day;
    }

    void showDay(const QDate& day)
    {
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day);
        if (loaded.isEmpty() && !loaded.wait(45000))
            throw std::runtime_error("the day never loaded");
    }

    std::optional<MeetEntity> shown(const QString& name) const
    {
        for (const MeetEntity& meet : view->events()) {
            if (meet.metName == name)
                return meet;
        }
        return std::nullopt;
    }

    // The backend's event of that title, as a client that reads every event sees it.
    std::optional<MeetEntity> stored(const QString& title)
    {
        for (const MeetEntity& meet : server().fetchMeets()) {
            if (meet.metName == title)
                return meet;
        }
        return std::nullopt;
    }

    QString undo()
    {
        QSignalSpy finished(&history(), &UndoHistory::finished);
        history().undo();
        if (finished.isEmpty() && !finished.wait(30000))
            return QStringLiteral("no outcome");
        return finished.constFirst().at(1).toString();
    }

    CreateEventView* waitForEditor()
    {
        if (!QTest::qWaitFor([this] { return view->editor() && view->editor()->isVisible(); }, 15000))
            throw std::runtime_error("the editor never opened");
        return view->editor();
    }

    bool waitForEditorToClose()
    {
        return QTest::qWaitFor([this] { return !view->editor() || !view->editor()->isVisible(); }, 30000);
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
        google = std::make_unique<GoogleAccountFixture>();
        QVERIFY(google->signIn().result);
        view = std::make_unique<DailyEventsView>(services(), DailyEventsView::Bindings {});
        view->resize(1100, 620);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        QVERIFY(!loaded.isEmpty() || loaded.wait(45000));
    }

    void cleanupTestCase()
    {
        view.reset();
        google.reset();
    }

    // The editor offers the backend's calendar after the desktop's, still preselecting the
    // desktop's default; chosen, the event is made on the backend, shows on each of its days, and
    // the undo takes it off the backend again.
    void shouldCreateARepeatingBackendEventFromTheEditorAndUndoIt()
    {
        const QDate monday = comingMonday();
        showDay(monday);
        view->createEvent(QDateTime(monday, QTime(9, 0)));
        CreateEventView* editor = waitForEditor();

        QComboBox* calendars = editor->calendarField();
        const int backend = calendars->findData(RemoteEventRepositoryImpl::calendarIdentifier);
        QCOMPARE(backend, calendars->count() - 1);
        QVERIFY(backend > 0);
        QCOMPARE(calendars->itemText(backend), u"Tolvane");
        QVERIFY(calendars->isEnabled());
        const std::optional<CalendarStoreCalendar> desktop = LiveEventKitStore::shared()->defaultCalendarForNewEvents();
        QVERIFY(desktop);
        QCOMPARE(calendars->currentData().toString(), desktop->identifier);

        // The backend keeps no all-day events, places or links: the editor stops offering them.
        QVERIFY(editor->allDayField()->isEnabled());
        editor->allDayField()->setChecked(true);
        calendars->setCurrentIndex(backend);
        QVERIFY(!editor->allDayField()->isChecked());
        QVERIFY(!editor->allDayField()->isEnabled());
        QVERIFY(!editor->locationField()->isEnabled());
        QVERIFY(!editor->linkField()->isEnabled());
        calendars->setCurrentIndex(0);
        QVERIFY(editor->allDayField()->isEnabled() && editor->locationField()->isEnabled());
        calendars->setCurrentIndex(backend);
        QTest::keyClicks(editor->titleField(), QStringLiteral("Standup"));
        editor->repeatField()->setCurrentIndex(editor->repeatField()->findData(int(RepeatOption::week)));
        editor->weekdayToggle(2)->click();
        editor->weekdayToggle(4)->click();
        QCOMPARE(editor->startField()->dateTime(), QDateTime(monday, QTime(9, 0)));
        QCOMPARE(editor->endField()->dateTime(), QDateTime(monday, QTime(10, 0)));
        editor->saveButton()->click();
        QVERIFY2(waitForEditorToClose(), qPrintable(editor->errorMessage().value_or(QString())));

        const std::optional<MeetEntity> made = stored(QStringLiteral("Standup"));
        QVERIFY(made);
        const std::optional<EventResponseDTO> event = server().event(made->metOriginalIdentifier);
        QVERIFY(event);
        QCOMPARE(event->evtSchedule, QDateTime(monday, QTime(9, 0)));
        QCOMPARE(event->evtDurationMinutes, 60);
        QCOMPARE(event->evtRepeat, u"every_week");
        QCOMPARE(event->evtCustomRepeat, u"mon|wed");
        QCOMPARE(history().undoText(), u"add event 'Standup'");
        QVERIFY(QTest::qWaitFor([this] { return shown(QStringLiteral("Standup")).has_value(); }, 15000));
        QCOMPARE(
            shown(QStringLiteral("Standup"))->metCalendarIdentifier, RemoteEventRepositoryImpl::calendarIdentifier);

        // The next week's Wednesday has it, at the same time; the Tuesday before does not.
        showDay(monday.addDays(9));
        QVERIFY(shown(QStringLiteral("Standup")));
        QCOMPARE(shown(QStringLiteral("Standup"))->metDate, QDateTime(monday.addDays(9), QTime(9, 0)));
        QCOMPARE(shown(QStringLiteral("Standup"))->metOriginalIdentifier, made->metOriginalIdentifier);
        showDay(monday.addDays(8));
        QVERIFY(!shown(QStringLiteral("Standup")));

        QCOMPARE(undo(), QString());
        QVERIFY(!server().event(made->metOriginalIdentifier));
        showDay(monday);
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Standup")), 15000);
    }

    // Opened from a later occurrence, the editor says the whole event changes, and it does: the
    // event keeps its first start. Deleting from an occurrence says it takes every one, and does.
    void shouldChangeAndDeleteARepeatingBackendEventWholeFromAnyOccurrence()
    {
        const QDate monday = comingMonday();
        MeetDraft draft {QStringLiteral("Review"), QStringLiteral("Room 4"), QDateTime(monday, QTime(15, 0)),
            QDateTime(monday, QTime(16, 0))};
        draft.calendarIdentifier = RemoteEventRepositoryImpl::calendarIdentifier;
        draft.recurrence = MeetRecurrenceFrequency::weekly;
        draft.weekdays = {2, 4};
        const MeetEntity made = DailyEventsController(services(), services().tasksSession().user).create(draft);
        QCOMPARE(made.metSource, MeetSource::backend);
        const QString id = made.metOriginalIdentifier;

        showDay(monday.addDays(7));
        const std::optional<MeetEntity> later = shown(QStringLiteral("Review"));
        QVERIFY(later);
        QCOMPARE(later->metDate, QDateTime(monday.addDays(7), QTime(15, 0)));
        QVERIFY(later->metId != made.metId);
        view->editMeet(*later);
        CreateEventView* editor = waitForEditor();
        QVERIFY(editor->wholeSeriesNote()->isVisibleTo(editor));
        QCOMPARE(editor->startField()->dateTime(), later->metDate);
        editor->titleField()->clear();
        QTest::keyClicks(editor->titleField(), QStringLiteral("Weekly review"));
        editor->saveButton()->click();
        QVERIFY(waitForEditorToClose());

        const std::optional<EventResponseDTO> changed = server().event(id);
        QVERIFY(changed);
        QCOMPARE(changed->evtTitle, u"Weekly review");
        QCOMPARE(changed->evtSchedule, draft.start);
        QCOMPARE(changed->evtCustomRepeat, u"mon|wed");
        QTRY_VERIFY_WITH_TIMEOUT(shown(QStringLiteral("Weekly review")), 15000);
        showDay(monday);
        QVERIFY(shown(QStringLiteral("Weekly review")));

        // The first occurrence, which is the event itself, says so too.
        view->editMeet(*shown(QStringLiteral("Weekly review")));
        QVERIFY(waitForEditor()->wholeSeriesNote()->isVisibleTo(view->editor()));
        view->editor()->cancelButton()->click();
        QVERIFY(waitForEditorToClose());

        showDay(monday.addDays(9));
        const std::optional<MeetEntity> wednesday = shown(QStringLiteral("Weekly review"));
        QVERIFY(wednesday);
        QString warned;
        whenModalAppears([&warned](QWidget* box) {
            warned = static_cast<QMessageBox*>(box)->informativeText();
            clickButtonNamed(box, QStringLiteral("Delete"));
        });
        view->deleteMeet(*wednesday);
        QVERIFY(warned.contains(u"Every occurrence of this repeating event is deleted."));
        QTRY_VERIFY_WITH_TIMEOUT(!server().event(id), 15000);
        QTRY_VERIFY_WITH_TIMEOUT(!shown(QStringLiteral("Weekly review")), 15000);
        showDay(monday);
        QVERIFY(!shown(QStringLiteral("Weekly review")));
    }
};

TOLVANE_GUI_TEST_MAIN(BackendEventsGoogleModeTest)
#include "BackendEventsGoogleModeTest.moc"
