#include "screens/bitacora/BitacoraView.h"

#include "login/UserDatabase.h"
#include "platform/SystemSecureRandom.h"
#include "rituals/DayReview.h"
#include "screens/bitacora/BitacoraProjectRowView.h"
#include "screens/bitacora/ManualScheduler.h"
#include "screens/common/AppServices.h"
#include "screens/schedule/MiniCalendarView.h"
#include "storage/FaultyVfs.h"
#include "support/FakeKeychain.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QToolButton>

#include <sqlite3.h>

using namespace std::chrono_literals;

namespace {

// The day picker needs holidays from somewhere; these tests are about the log, not holidays.
class NoCalendarAccess final : public MiniCalendarHolidaySource {
public:
    int authorizationStatus() const override { return CalendarAuthorizationStatus::denied; }
    QList<CalendarStoreCalendar> calendars() const override { return {}; }
    QSet<QString> hiddenCalendarIdentifiers() const override { return {}; }
    QList<CalendarStoreEvent> events(const QDateTime&, const QDateTime&, const QStringList&) const override
    {
        return {};
    }
};

const QDateTime march3(QDate(2026, 3, 3), QTime(10, 0));

} // namespace

// The logbook driven through its widgets over real encrypted store files of a local account,
// with time moved by hand.
class BitacoraViewTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<NotificationCenter> center;
    std::unique_ptr<ErrorConsoleStore> console;
    std::unique_ptr<AppServices> services;
    std::shared_ptr<SettableClock> clock;
    std::shared_ptr<ManualScheduler> scheduler;
    std::optional<TasksApplicationFactory::Applications> apps;
    QUuid user;
    std::unique_ptr<BitacoraView> view;

    UserDefaults defaults() const { return UserDefaults(folder->filePath(QStringLiteral("Tolvane.conf"))); }

    void signIn(const QUuid& id)
    {
        user = id;
        UserDatabase {defaults()}.save({.usrId = id.toString(QUuid::WithoutBraces),
            .usrFirstName = QStringLiteral("Ana"),
            .usrLastName = QStringLiteral("Ruiz"),
            .usrEmail = QStringLiteral("ana@example.org"),
            .usrIsGoogleAccount = false});
    }

    ProjectEntity addProject(const QString& name)
    {
        const ResultEntity created = apps->projects.create({.prjUserId = user, .prjName = name});
        if (!created.result)
            qFatal("project not created");
        return *created.dataAs<ProjectEntity>();
    }

    std::optional<QString> storedText(const ProjectEntity& project, const QDateTime& day) const
    {
        const auto entries
            = *apps->bitacora.entriesOn(day, {project.prjId}).dataAs<QHash<QUuid, BitacoraEntryEntity>>();
        return entries.contains(project.prjId) ? std::optional(entries.value(project.prjId).bteContent) : std::nullopt;
    }

    BitacoraProjectRowView* row(const ProjectEntity& project) const
    {
        return view->findChild<BitacoraProjectRowView*>(
            QStringLiteral("bitacoraRow:") + project.prjId.toString(QUuid::WithoutBraces));
    }
    QTextEdit* editor(const ProjectEntity& project) const
    {
        return row(project)->findChild<QTextEdit*>(QStringLiteral("bitacoraEditor"));
    }
    template <typename T> T* find(const QString& name) const { return view->findChild<T*>(name); }

    // Does what changes the day and waits until the new day is on screen.
    template <typename Action> bool reloadingAfter(Action&& action)
    {
        QSignalSpy loaded(view.get(), &BitacoraView::loaded);
        action();
        return !loaded.isEmpty() || loaded.wait(5000);
    }

    void openView()
    {
        view = std::make_unique<BitacoraView>(*services,
            BitacoraView::Environment {clock, scheduler, [] { return std::make_shared<NoCalendarAccess>(); }});
        view->resize(800, 600);
        QVERIFY(reloadingAfter([this] { view->show(); }));
        view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view.get()));
    }

    void focus(QWidget* widget)
    {
        widget->setFocus();
        QTRY_VERIFY(widget->hasFocus());
    }

private Q_SLOTS:
    // Every store opened from here on goes through a file system that can fail a chosen call.
    void initTestCase() { FaultyVfs::install(); }

    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        center = std::make_unique<NotificationCenter>();
        clock = std::make_shared<SettableClock>(march3);
        scheduler = std::make_shared<ManualScheduler>();
        UserDefaults settings = defaults();
        settings.setValue(ErrorConsoleStore::isEnabledKey, true);
        console = std::make_unique<ErrorConsoleStore>(settings, clock);
        RealmConfiguration stores;
        stores.fileURL = folder->filePath(QStringLiteral("default.realm"));
        services = std::make_unique<AppServices>(AppServices::Parts {.notificationCenter = center.get(),
            .console = console.get(),
            .userDefaults = settings,
            .keychain = std::make_shared<FakeKeychain>(),
            .random = std::make_shared<SystemSecureRandom>(),
            .storeDefaults = stores});
        apps = *services->tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
        signIn(QUuid::createUuid());
    }

    void cleanup() { view.reset(); }

    void shouldOfferTheDayTemplateAndDropItWhenLeftUnused()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        openView();
        QSignalSpy saves(row(garden), &BitacoraProjectRowView::saveStarted);
        QCOMPARE(editor(garden)->placeholderText(), qtTrId("bitacora-entry-placeholder"));

        focus(editor(garden));
        QCOMPARE(editor(garden)->toPlainText(), QStringLiteral("3:\n\n\u2022 "));
        QTest::keyClicks(editor(garden), QStringLiteral("  "));
        focus(find<QPushButton>(QStringLiteral("bitacoraTodayButton")));
        QCOMPARE(editor(garden)->toPlainText(), QString());

        scheduler->advance(5s);
        QTest::qWait(50);
        QCOMPARE(saves.count(), 0);
        QCOMPARE(storedText(garden, march3), std::nullopt);
    }

    void shouldSaveOnceASecondAfterTheLastChangeAndShowItBriefly()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        openView();
        QSignalSpy saves(row(garden), &BitacoraProjectRowView::saveStarted);
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Pruned"));
        for (int key = 0; key < 4; ++key) {
            scheduler->advance(900ms);
            QTest::keyClicks(editor(garden), QStringLiteral(" x"));
        }
        scheduler->advance(999ms);
        QCOMPARE(saves.count(), 0);

        scheduler->advance(1ms);
        const QString typed = QStringLiteral("3:\n\n\u2022 Pruned x x x x");
        QCOMPARE(saves.count(), 1);
        QCOMPARE(saves.at(0).at(0).toString(), typed);
        QTRY_VERIFY(row(garden)->saveSuccess());
        QVERIFY(!find<QLabel>(QStringLiteral("bitacoraSaveStatus"))->pixmap().isNull());
        QCOMPARE(storedText(garden, march3), std::optional(typed));

        scheduler->advance(1500ms);
        QVERIFY(!row(garden)->saveSuccess());
        QCOMPARE(saves.count(), 1);
    }

    void shouldFoldChangesMadeDuringASaveIntoExactlyOneMore()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        openView();
        QSignalSpy saves(row(garden), &BitacoraProjectRowView::saveStarted);
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("a"));
        scheduler->advance(1s);
        QVERIFY(row(garden)->isSaving());

        QTest::keyClicks(editor(garden), QStringLiteral("b"));
        QTest::keyClicks(editor(garden), QStringLiteral("c"));
        QTRY_COMPARE(saves.count(), 2);
        QTRY_VERIFY(!row(garden)->isBusy());
        scheduler->advance(3s);
        QTest::qWait(50);

        QCOMPARE(saves.count(), 2);
        QCOMPARE(saves.at(1).at(0).toString(), QStringLiteral("3:\n\n\u2022 abc"));
        QCOMPARE(storedText(garden, march3), std::optional(QStringLiteral("3:\n\n\u2022 abc")));
    }

    void shouldKeepEachDaysTextOnItsDayWhenStepping()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        const ProjectEntity house = addProject(QStringLiteral("House"));
        openView();
        QCOMPARE(find<QLabel>(QStringLiteral("bitacoraDateTitle"))->text(), QStringLiteral("Tuesday, March 3, 2026"));
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Day three"));

        // The step comes before the autosave's second: the text goes with its own day.
        QVERIFY(reloadingAfter([this] { find<QToolButton>(QStringLiteral("bitacoraNextDayButton"))->click(); }));
        QCOMPARE(find<QLabel>(QStringLiteral("bitacoraDateTitle"))->text(), QStringLiteral("Wednesday, March 4, 2026"));
        QCOMPARE(editor(garden)->toPlainText(), QString());
        focus(editor(house));
        QTest::keyClicks(editor(house), QStringLiteral("Day four"));

        QVERIFY(reloadingAfter([this] { find<QToolButton>(QStringLiteral("bitacoraPreviousDayButton"))->click(); }));
        QCOMPARE(editor(garden)->toPlainText(), QStringLiteral("3:\n\n\u2022 Day three"));
        QCOMPARE(editor(house)->toPlainText(), QString());
        QCOMPARE(storedText(house, march3.addDays(1)), std::optional(QStringLiteral("4:\n\n\u2022 Day four")));

        // The day picker in the header goes anywhere; "today" comes back.
        find<QToolButton>(QStringLiteral("bitacoraDayPickerButton"))->click();
        auto* calendar = view->findChild<MiniCalendarView*>();
        QTRY_VERIFY(calendar && calendar->isVisible());
        QVERIFY(reloadingAfter([calendar] {
            QTest::mouseClick(calendar->grid(), Qt::LeftButton, {}, calendar->cellRect(QDate(2026, 3, 4)).center());
        }));
        QCOMPARE(view->selectedDate().date(), QDate(2026, 3, 4));
        QCOMPARE(editor(house)->toPlainText(), QStringLiteral("4:\n\n\u2022 Day four"));
        QVERIFY(reloadingAfter([this] { find<QPushButton>(QStringLiteral("bitacoraTodayButton"))->click(); }));
        QCOMPARE(view->selectedDate(), march3);
    }

    void shouldSaveWhatWaitsWhenTheScreenGoesAway()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        const ProjectEntity house = addProject(QStringLiteral("House"));
        openView();
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Switched away"));
        view->hide();
        QTRY_COMPARE(storedText(garden, march3), std::optional(QStringLiteral("3:\n\n\u2022 Switched away")));

        // Quitting: the window goes with the autosave still waiting.
        openView();
        focus(editor(house));
        QTest::keyClicks(editor(house), QStringLiteral("Quit"));
        view.reset();
        QCOMPARE(storedText(house, march3), std::optional(QStringLiteral("3:\n\n\u2022 Quit")));
    }

    void shouldKeepTheTextOfAFailedSaveAndTryAgainUntilItIsStored()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        openView();
        QSignalSpy settled(row(garden), &BitacoraProjectRowView::settled);
        const auto answered = [&settled](qsizetype count) {
            return settled.count() >= count || (settled.wait(10000) && settled.count() >= count);
        };
        const QString typed = QStringLiteral("3:\n\n\u2022 Planted the beans");
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Planted the beans"));

        // The disk is full when the autosave comes: the text stays and says why it is not stored.
        FaultyVfs::arm(FaultyVfs::Operation::write, 1, SQLITE_FULL);
        scheduler->advance(1s);
        QVERIFY(answered(1));
        QVERIFY(FaultyVfs::disarm());
        QVERIFY(row(garden)->hasFailedSave());
        QVERIFY(!row(garden)->findChild<QLabel*>(QStringLiteral("bitacoraSaveError"))->text().isEmpty());
        QCOMPARE(editor(garden)->toPlainText(), typed);
        QCOMPARE(storedText(garden, march3), std::nullopt);

        // Leaving the day tries once more at once; failing again, the day and its text stay.
        FaultyVfs::arm(FaultyVfs::Operation::write, 1, SQLITE_IOERR_WRITE);
        find<QToolButton>(QStringLiteral("bitacoraNextDayButton"))->click();
        QVERIFY(answered(2));
        QVERIFY(FaultyVfs::disarm());
        QCOMPARE(view->selectedDate(), march3);
        QCOMPARE(find<QLabel>(QStringLiteral("bitacoraDateTitle"))->text(), QStringLiteral("Tuesday, March 3, 2026"));
        QCOMPARE(editor(garden)->toPlainText(), typed);
        QVERIFY(view->errorMessage().has_value());
        QVERIFY(find<QLabel>(QStringLiteral("bitacoraErrorMessage"))->isVisible());

        // Unattended, the tries come further apart: 5 s after the first failure, 10 s after the second.
        QSignalSpy saves(row(garden), &BitacoraProjectRowView::saveStarted);
        scheduler->advance(BitacoraProjectRowView::firstRetryDelay);
        QCOMPARE(saves.count(), 0);
        scheduler->advance(BitacoraProjectRowView::firstRetryDelay);
        QCOMPARE(saves.count(), 1);
        QVERIFY(answered(3));
        QCOMPARE(storedText(garden, march3), std::optional(typed));
        QVERIFY(!row(garden)->hasFailedSave());
        QCOMPARE(view->errorMessage(), std::nullopt);

        // Now the day can be left.
        QVERIFY(reloadingAfter([this] { find<QToolButton>(QStringLiteral("bitacoraNextDayButton"))->click(); }));
        QCOMPARE(view->selectedDate().date(), QDate(2026, 3, 4));
    }

    void shouldTryAgainASecondAfterTypingIntoAFailedEntry()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        openView();
        QSignalSpy settled(row(garden), &BitacoraProjectRowView::settled);
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Rain"));
        FaultyVfs::arm(FaultyVfs::Operation::sync, 1, SQLITE_IOERR_FSYNC);
        scheduler->advance(1s);
        QVERIFY(!settled.isEmpty() || settled.wait(10000));
        QVERIFY(FaultyVfs::disarm());
        QVERIFY(row(garden)->hasFailedSave());

        QTest::keyClicks(editor(garden), QStringLiteral(" all day"));
        scheduler->advance(1s);
        QTRY_COMPARE(storedText(garden, march3), std::optional(QStringLiteral("3:\n\n\u2022 Rain all day")));
        QTRY_VERIFY(!row(garden)->hasFailedSave());
    }

    void shouldAddTheDaysReviewToTextNotSavedYet()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        const ProjectEntity house = addProject(QStringLiteral("House"));
        QVERIFY(apps->bitacora.saveText(house.prjId, march3, QStringLiteral("3:\n\n\u2022 Painted"), user).result);
        openView();
        focus(editor(garden));
        QTest::keyClicks(editor(garden), QStringLiteral("Watered"));

        // The review writes both entries in the store, as its page does, and says so.
        const QString summary = QStringLiteral("Done: seeds");
        for (const ProjectEntity& project : {garden, house}) {
            QVERIFY(DayReview::writeToLogbook(apps->bitacora, project.prjId, user, march3.date(), summary,
                BitacoraProjectRowView::entryTemplate(march3.date()))
                        .result);
        }
        QVERIFY(reloadingAfter([&] {
            center->post(DayReview::logbookWritten,
                QVariant::fromValue(DayReview::Written {march3.date(), summary, {garden.prjId, house.prjId}}));
        }));

        const QString typedThenSummary = QStringLiteral("3:\n\n\u2022 Watered\n\nDone: seeds");
        QCOMPARE(storedText(garden, march3), std::optional(typedThenSummary));
        QCOMPARE(editor(garden)->toPlainText(), typedThenSummary);
        QCOMPARE(editor(house)->toPlainText(), QStringLiteral("3:\n\n\u2022 Painted\n\nDone: seeds"));
    }

    void shouldDeleteAStoredEntryOnlyOnceConfirmed()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        const ProjectEntity house = addProject(QStringLiteral("House"));
        QVERIFY(apps->bitacora.saveText(garden.prjId, march3, QStringLiteral("3:\n\n\u2022 Seeds"), user).result);
        openView();
        QVERIFY(!row(house)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->isVisible());
        auto* confirmation = find<QWidget>(QStringLiteral("bitacoraDeleteConfirmation"));

        row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->click();
        QVERIFY(confirmation->isVisible());
        find<QPushButton>(QStringLiteral("bitacoraDeleteCancelButton"))->click();
        QVERIFY(!confirmation->isVisible());
        QVERIFY(storedText(garden, march3));

        row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->click();
        find<QPushButton>(QStringLiteral("bitacoraDeleteConfirmButton"))->click();
        QTRY_COMPARE(editor(garden)->toPlainText(), QString());
        QCOMPARE(storedText(garden, march3), std::nullopt);
        QVERIFY(!row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->isVisible());
        QVERIFY(!view->entries().contains(garden.prjId));
    }

    void shouldTellWhyAnEntryCannotBeDeleted()
    {
        const ProjectEntity garden = addProject(QStringLiteral("Garden"));
        QVERIFY(apps->bitacora.saveText(garden.prjId, march3, QStringLiteral("3:\n\n\u2022 Seeds"), user).result);
        const auto stored
            = *apps->bitacora.entriesOn(march3, {garden.prjId}).dataAs<QHash<QUuid, BitacoraEntryEntity>>();
        openView();
        const auto confirmDeletion = [this, &garden] {
            row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->click();
            find<QPushButton>(QStringLiteral("bitacoraDeleteConfirmButton"))->click();
        };

        // Removed elsewhere meanwhile: the store's answer is shown and logged.
        QVERIFY(apps->bitacora.delete_(stored.value(garden.prjId).bteId, user).result);
        confirmDeletion();
        QTRY_COMPARE(view->errorMessage(), std::optional(QStringLiteral("The bitacora entry does not exist")));
        QVERIFY(console->consoleText().endsWith(
            QStringLiteral("BitacoraController.delete failed: The bitacora entry does not exist")));

        // The question stays open while another user signs in, whose day has no such entry.
        QVERIFY(apps->bitacora.saveText(garden.prjId, march3, QStringLiteral("again"), user).result);
        QVERIFY(reloadingAfter([this] { center->post(NotificationName::userAccountDidChange); }));
        row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->click();
        const QUuid firstUser = user;
        QVERIFY(reloadingAfter([this] {
            signIn(QUuid::createUuid());
            center->post(NotificationName::userAccountDidChange);
        }));
        find<QPushButton>(QStringLiteral("bitacoraDeleteConfirmButton"))->click();
        QCOMPARE(
            view->errorMessage(), std::optional(QStringLiteral("No se encontró la entrada guardada para eliminar")));
        QCOMPARE(find<QLabel>(QStringLiteral("bitacoraErrorMessage"))->text(), *view->errorMessage());
        user = firstUser;
        QCOMPARE(storedText(garden, march3), std::optional(QStringLiteral("again")));
        QVERIFY(view->projects().isEmpty());

        // Signed out with the question open: there is nothing to delete through.
        QVERIFY(reloadingAfter([this, firstUser] {
            signIn(firstUser);
            center->post(NotificationName::userAccountDidChange);
        }));
        row(garden)->findChild<QToolButton*>(QStringLiteral("bitacoraDeleteButton"))->click();
        QVERIFY(reloadingAfter([this] {
            UserDatabase {defaults()}.delete_();
            center->post(NotificationName::userAccountDidChange);
        }));
        QVERIFY(find<QLabel>(QStringLiteral("QuorvelLogo"))->isVisible());
        QVERIFY(!view->isLoggedIn());
        find<QPushButton>(QStringLiteral("bitacoraDeleteConfirmButton"))->click();
        QCOMPARE(view->errorMessage(),
            std::optional(QStringLiteral("No hay conexión configurada para eliminar la bitácora")));
        QCOMPARE(storedText(garden, march3), std::optional(QStringLiteral("again")));
    }
};

TOLVANE_GUI_TEST_MAIN(BitacoraViewTest)
#include "BitacoraViewTest.moc"
