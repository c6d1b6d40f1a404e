#include "AlarmStartupHook.h"
#include "ContentView.h"
#include "MainWindow.h"
#include "TaskRemindersTestSupport.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "platform/notifications/EspeakSpeechSynthesizer.h"
#include "screens/projects/ProjectsView.h"
#include "screens/projects/TasksDetailPaneView.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/AppFixture.h"
#include "tasks/reminders/TaskReminderNotificationDelegate.h"
#include "tasks/reminders/TaskReminderTime.h"
#include "undo/UndoHistory.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTranslator>

using namespace TaskRemindersTestSupport;

// Task reminders through the real pieces, for a local account: the encrypted stores, the JSON
// file of pending requests, a notification server on the session bus and espeak-ng.
class TaskRemindersTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<LiveUserNotificationCenter> m_center;
    std::unique_ptr<AppFixture> m_app;
    std::optional<TasksApplicationFactory::Applications> m_apps;
    TaskListEntity m_list;
    QTranslator m_english;

    const TasksApplicationFactory::Applications& apps() const { return *m_apps; }
    TaskReminderScheduler reminders() const { return m_app->services().taskReminderScheduler(); }

    // A scheduler on the test's clock, over another centre: a snooze counts from that clock.
    TaskReminderScheduler schedulerOver(const std::shared_ptr<UserNotificationCenter>& center) const
    {
        return TaskReminderScheduler(
            MeetAlarmScheduler({m_app->userDefaults(), center, std::make_shared<EspeakSpeechSynthesizer>(),
                AlarmSoundFiles(m_folder->filePath(QStringLiteral("sounds")), SystemSounds::themeDirectory), m_clock}));
    }

    TaskEntity created(const QString& title, const QDateTime& due, int minutesBefore)
    {
        const TaskEntity task = aTask(m_list, title, due, minutesBefore);
        const ResultEntity result = apps().tasks.create(task);
        if (!result.result)
            qFatal("cannot create a task: %s", qPrintable(result.firstMessage().value_or(QString())));
        return task;
    }

    void fireUntil(qint64 seconds)
    {
        m_clock->advance(seconds);
        m_center->checkDueRequests();
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&m_english);
    }

    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        // Whole seconds, as the stores keep them; one reading of the clock, or a second may turn
        // between two.
        const QDateTime now = QDateTime::currentDateTime();
        m_clock = std::make_shared<SettableClock>(now.addMSecs(-now.time().msec()));
        m_center = makeCenter(m_folder->path(), m_clock);
        m_app = std::make_unique<AppFixture>(nullptr, QUrl(), m_center);
        m_app->storeLocalUser();
        m_apps = applicationsOf(m_app->services().tasksApplications(false));
        const ProjectEntity project {.prjName = QStringLiteral("Home")};
        m_list = TaskListEntity {.prjId = project.prjId, .talName = QStringLiteral("Errands"), .talIsDefault = true};
        QVERIFY(apps().projects.create(project).result);
        QVERIFY(apps().taskLists.create(m_list).result);
    }

    void cleanup()
    {
        // The start-up hook's delegate holds the services, which hold the centre.
        m_center->setDelegate(nullptr);
        m_apps.reset();
        m_app.reset();
        m_center.reset();
    }

    void shouldPlaceTheReminderBeforeTheDueTime()
    {
        const QDateTime due(QDate(2026, 3, 10), QTime(15, 30), Qt::LocalTime);
        TaskEntity task = aTask(m_list, QStringLiteral("Call Ana"), due, 10);
        QCOMPARE(TaskReminderTime::of(task), due.addSecs(-600));
        task.tasReminderMinutesBefore = 0;
        QCOMPARE(TaskReminderTime::of(task), due);

        // A day without a time counts from nine in the morning of that day, wherever the user is.
        task.tasDueDate = TaskEntity::dueOnDay(QDate(2026, 3, 10));
        task.tasDueHasTime = false;
        task.tasReminderMinutesBefore = 24 * 60;
        QCOMPARE(TaskReminderTime::of(task), QDateTime(QDate(2026, 3, 9), QTime(9, 0), Qt::LocalTime));

        task.tasIsDone = true;
        QVERIFY(!TaskReminderTime::of(task));
        task.tasIsDone = false;
        task.tasReminderMinutesBefore.reset();
        QVERIFY(!TaskReminderTime::of(task));
        task.tasReminderMinutesBefore = 5;
        task.tasDueDate.reset();
        QVERIFY(!TaskReminderTime::of(task));
    }

    void shouldRingWithDoneAndSnoozeAtTheReminderTime()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        MeetAlarmVoiceLanguageStore(m_app->userDefaults()).save(MeetAlarmVoiceLanguageEnum::english);
        const TaskEntity task = created(QStringLiteral("Pay rent"), m_clock->now().addSecs(2 * 3600), 60);
        const std::optional<UserNotificationRequest> pending = pendingFor(reminders(), task.tasId);
        QVERIFY(pending);
        QCOMPARE(firesAt(pending), m_clock->now().addSecs(3600));
        // The user's alarm mode is the spoken one: the sentence is rendered into its own file.
        QCOMPARE(pending->content.soundName, AlarmSoundFiles::spokenFileName(pending->identifier));
        QVERIFY(QFile::exists(AlarmSoundFiles::live().filePath(pending->content.soundName)));

        fireUntil(3599);
        QVERIFY(!server.waitForNotifications(1, 200));
        fireUntil(1);
        QVERIFY(server.waitForNotifications(1));
        const RecordedNotification shown = server.notifications().constFirst();
        QCOMPARE(shown.summary, QStringLiteral("Pay rent"));
        QCOMPARE(shown.actions.size(), 6);
        QCOMPARE(shown.actions.value(0), QStringLiteral("default"));
        QCOMPARE(shown.actions.value(2), TaskReminderScheduler::doneAction);
        QCOMPARE(shown.actions.value(4), TaskReminderScheduler::snoozeAction);
        QVERIFY(reminders().pendingReminders().isEmpty());

        // Read again, the task does not ring a second time for a reminder that already rang.
        schedulerOver(m_center).reconcile({*findTask(apps(), task.tasId)}, QList<QUuid> {m_list.talId});
        QVERIFY(reminders().pendingReminders().isEmpty());
    }

    // Undo brings a list back in one write under the store; its tasks' reminders come back too.
    void shouldDropAndBringBackRemindersWithAListOnUndo()
    {
        const TaskEntity task = created(QStringLiteral("Pay rent"), m_clock->now().addSecs(2 * 3600), 60);
        QVERIFY(pendingFor(reminders(), task.tasId));
        UndoHistory& history = m_app->services().undoHistory();
        const int recorded = history.count();
        QVERIFY(apps().taskLists.delete_(m_list.talId).result);
        QTRY_VERIFY(history.count() > recorded && !history.isBusy());
        QVERIFY(!pendingFor(reminders(), task.tasId));

        QSignalSpy finished(&history, &UndoHistory::finished);
        history.undo();
        QVERIFY(!finished.isEmpty() || finished.wait(10000));
        QCOMPARE(finished.constFirst().at(1).toString(), QString());
        QCOMPARE(firesAt(pendingFor(reminders(), task.tasId)), m_clock->now().addSecs(3600));
    }

    void shouldMarkTheTaskDoneFromItsReminder()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        runAlarmStartupHook(m_app->services());
        QSignalSpy changed(&m_app->notificationCenter(), &NotificationCenter::posted);
        TaskEntity task = aTask(m_list, QStringLiteral("Water plants"), m_clock->now().addSecs(3600), 10);
        task.tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::daily};
        QVERIFY(apps().tasks.create(task).result);

        fireUntil(50 * 60);
        QVERIFY(server.waitForNotifications(1));
        server.invokeAction(server.notifications().constFirst().id, TaskReminderScheduler::doneAction);
        QTRY_VERIFY(findTask(apps(), task.tasId).value_or(TaskEntity()).tasIsDone);
        QTRY_VERIFY(std::any_of(changed.cbegin(), changed.cend(),
            [](const QList<QVariant>& args) { return args.value(0) == NotificationName::tasksDidChange; }));

        // The next occurrence reminds a day later.
        const ResultEntity listed = apps().tasks.list(m_list.talId);
        const QList<TaskEntity> tasks = *listed.dataAs<QList<TaskEntity>>();
        QCOMPARE(tasks.size(), 2);
        const TaskEntity next = tasks.constFirst().tasId == task.tasId ? tasks.constLast() : tasks.constFirst();
        const std::optional<UserNotificationRequest> pending = pendingFor(reminders(), next.tasId);
        QVERIFY(pending);
        QCOMPARE(firesAt(pending), task.tasDueDate->toLocalTime().addDays(1).addSecs(-600));
        QVERIFY(!pendingFor(reminders(), task.tasId));
    }

    void shouldOpenTheTaskWhereItLivesWhenTheBodyIsClicked()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        runAlarmStartupHook(m_app->services());
        const LoginResultEntity current = m_app->services().loginApplication().getCurrentUser();
        const auto* user = current.dataAs<UserEntity>();
        QVERIFY(user);
        const ProjectEntity project {.prjUserId = QUuid::fromString(user->usrId), .prjName = QStringLiteral("Flat")};
        const TaskListEntity first {.prjId = project.prjId, .talName = QStringLiteral("Repairs"), .talIsDefault = true};
        const TaskListEntity bills {.prjId = project.prjId, .talName = QStringLiteral("Bills")};
        QVERIFY(apps().projects.create(project).result);
        QVERIFY(apps().taskLists.create(first).result);
        QVERIFY(apps().taskLists.create(bills).result);
        for (int number = 1; number <= 30; ++number) {
            QVERIFY(apps()
                        .tasks
                        .create({.prjId = project.prjId,
                            .talId = bills.talId,
                            .tasTitle = QStringLiteral("Bill %1").arg(number)})
                        .result);
        }
        const TaskEntity task = created(QStringLiteral("Pay the water"), m_clock->now().addSecs(3600), 10);
        // Moved to another list after it was armed: it opens where it is now.
        TaskEntity moved = task;
        moved.prjId = project.prjId;
        moved.talId = bills.talId;
        QVERIFY(apps().tasks.taskRepository->update(moved).result);

        // The window was closed to the tray; the workspace shown was another.
        MainWindow window(m_app->services());
        window.resize(1000, 700);
        window.contentView()->select(SidebarItemEnum::bitacora);
        QVERIFY(!window.isVisible());
        fireUntil(50 * 60);
        QVERIFY(server.waitForNotifications(1));
        server.invokeAction(server.notifications().constFirst().id, UserNotificationResponse::defaultActionIdentifier);

        QTRY_VERIFY(window.isVisible());
        QTRY_COMPARE(window.contentView()->selectedSidebarItem(), SidebarItemEnum::projects);
        auto* projects = qobject_cast<ProjectsView*>(window.contentView()->screen(SidebarItemEnum::projects));
        QVERIFY(projects);
        QTRY_COMPARE_WITH_TIMEOUT(projects->detailPane()->highlightedTaskId(), task.tasId, 15000);
        QCOMPARE(projects->detailPane()->selection(), ProjectsDetailSelectionEnum::list);
        // Not done, not snoozed: still the one task, and nothing pending for it.
        QVERIFY(!findTask(apps(), task.tasId)->tasIsDone);
        QVERIFY(!pendingFor(reminders(), task.tasId));
    }

    void shouldSnoozeForTenMinutes()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const TaskReminderScheduler onTestClock = schedulerOver(m_center);
        m_center->setDelegate(std::make_shared<TaskReminderNotificationDelegate>(
            onTestClock, [](const QUuid&) { QFAIL("not done"); }, [](const QUuid&) {}));
        const TaskEntity task = created(QStringLiteral("Stretch"), m_clock->now().addSecs(3600), 0);
        fireUntil(3600);
        QVERIFY(server.waitForNotifications(1));

        server.invokeAction(server.notifications().constFirst().id, TaskReminderScheduler::snoozeAction);
        QTRY_VERIFY(pendingFor(onTestClock, task.tasId));
        const QDateTime snoozedUntil = m_clock->now().addSecs(600);
        QCOMPARE(firesAt(pendingFor(onTestClock, task.tasId)), snoozedUntil);
        // Reading the task again, after its due time, leaves the snooze alone.
        fireUntil(300);
        onTestClock.reconcile({*findTask(apps(), task.tasId)}, QList<QUuid> {m_list.talId});
        QVERIFY(apps().tasks.list(m_list.talId).result);
        QCOMPARE(firesAt(pendingFor(onTestClock, task.tasId)), snoozedUntil);

        fireUntil(299);
        QVERIFY(!server.waitForNotifications(2, 200));
        fireUntil(1);
        QVERIFY(server.waitForNotifications(2));
        QCOMPARE(server.notifications().constLast().summary, QStringLiteral("Stretch"));
        QCOMPARE(server.notifications().constLast().actions.value(2), TaskReminderScheduler::doneAction);
    }

    void shouldKeepRemindersAcrossARestart()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        // Centres of their own over one file, as two runs of the program.
        QTemporaryDir runs;
        auto first = makeCenter(runs.path(), m_clock);
        const TaskEntity task = aTask(m_list, QStringLiteral("Dentist"), m_clock->now().addSecs(3 * 3600), 60);
        QVERIFY(schedulerOver(first).update(task));
        const QList<UserNotificationRequest> armed = schedulerOver(first).pendingReminders();
        QCOMPARE(armed.size(), 1);
        first.reset();

        m_center = makeCenter(runs.path(), m_clock);
        const TaskReminderScheduler again = schedulerOver(m_center);
        QCOMPARE(again.pendingReminders(), armed);
        // The task read back unchanged keeps its request as it was.
        again.reconcile({task}, QList<QUuid> {m_list.talId});
        QCOMPARE(again.pendingReminders(), armed);

        fireUntil(2 * 3600);
        QVERIFY(server.waitForNotifications(1));
        QCOMPARE(server.notifications().constFirst().summary, QStringLiteral("Dentist"));
        QCOMPARE(server.notifications().constFirst().actions.value(4), TaskReminderScheduler::snoozeAction);
    }

    void shouldDropOrMoveTheReminderWithTheTask()
    {
        const QDateTime inAnHour = m_clock->now().addSecs(3600);
        const TaskEntity done = created(QStringLiteral("Done one"), inAnHour, 10);
        const TaskEntity deleted = created(QStringLiteral("Deleted one"), inAnHour, 10);
        TaskEntity moved = created(QStringLiteral("Moved one"), inAnHour, 10);
        QCOMPARE(reminders().pendingReminders().size(), 3);

        QVERIFY(apps().tasks.markDone(done.tasId).result);
        QVERIFY(!pendingFor(reminders(), done.tasId));
        QVERIFY(apps().tasks.markNotDone(done.tasId).result);
        QVERIFY(pendingFor(reminders(), done.tasId));

        QVERIFY(apps().tasks.delete_(deleted.tasId).result);
        QVERIFY(!pendingFor(reminders(), deleted.tasId));

        moved.tasDueDate = inAnHour.addDays(2).toUTC();
        QVERIFY(apps().tasks.schedule(moved).result);
        QCOMPARE(firesAt(pendingFor(reminders(), moved.tasId)), inAnHour.addDays(2).addSecs(-600));
        moved.tasReminderMinutesBefore.reset();
        QVERIFY(apps().tasks.schedule(moved).result);
        QVERIFY(!pendingFor(reminders(), moved.tasId));

        // A due time already past: nothing is left to remind of.
        moved.tasReminderMinutesBefore = 0;
        moved.tasDueDate = m_clock->now().addSecs(-60).toUTC();
        QVERIFY(apps().tasks.schedule(moved).result);
        QVERIFY(!pendingFor(reminders(), moved.tasId));

        QVERIFY(apps().taskLists.delete_(m_list.talId).result);
        QVERIFY(reminders().pendingReminders().isEmpty());
    }

    void shouldFollowChangesMadeBehindItsBack()
    {
        // The same stores without reminders, as another run or another device writes them.
        const auto elsewhere
            = applicationsOf(TasksApplicationFactory(m_app->services().storeConfigurations()).make(false, {}));
        const QDateTime inAnHour = m_clock->now().addSecs(3600);
        TaskEntity changed = aTask(m_list, QStringLiteral("Changed"), inAnHour, 10);
        const TaskEntity gone = aTask(m_list, QStringLiteral("Gone"), inAnHour, 10);
        const TaskEntity missed = aTask(m_list, QStringLiteral("Missed"), m_clock->now().addSecs(60), 10);
        for (const TaskEntity& task : {changed, gone, missed})
            QVERIFY(elsewhere.tasks.create(task).result);
        QVERIFY(reminders().pendingReminders().isEmpty());

        QVERIFY(apps().tasks.list(m_list.talId).result);
        QCOMPARE(firesAt(pendingFor(reminders(), changed.tasId)), inAnHour.addSecs(-600));
        QVERIFY(pendingFor(reminders(), gone.tasId));
        // Its time went by before it was seen: it may have rung in another run.
        QVERIFY(!pendingFor(reminders(), missed.tasId));

        changed.tasTitle = QStringLiteral("Changed again");
        changed.tasDueDate = inAnHour.addSecs(1800).toUTC();
        QVERIFY(elsewhere.tasks.schedule(changed).result);
        QVERIFY(elsewhere.tasks.rename(changed).result);
        QVERIFY(elsewhere.tasks.delete_(gone.tasId).result);
        QVERIFY(apps().tasks.listOfLists({m_list.talId}).result);
        const std::optional<UserNotificationRequest> moved = pendingFor(reminders(), changed.tasId);
        QCOMPARE(firesAt(moved), inAnHour.addSecs(1200));
        QCOMPARE(moved->content.title, QStringLiteral("Changed again"));
        QVERIFY(!pendingFor(reminders(), gone.tasId));
    }

    void shouldKeepRemindersWhenEveryMeetAlarmIsDeleted()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        const TaskEntity task = created(QStringLiteral("Pay rent"), m_clock->now().addSecs(3600), 10);
        MeetEntity meet;
        meet.metName = QStringLiteral("Team sync");
        meet.metDate = QDateTime::currentDateTime().addSecs(600);
        meet.metDuration = 1800;
        meet.metSource = MeetSource::backend;
        const MeetAlarmScheduler alarms = m_app->services().meetAlarmScheduler();
        QVERIFY(alarms.arm(meet));
        QCOMPARE(m_center->pendingRequests().size(), 2);

        alarms.deleteAllAlarms(TaskReminderScheduler::identifierPrefix);
        QCOMPARE(m_center->pendingRequests().size(), 1);
        QVERIFY(pendingFor(reminders(), task.tasId));
        QVERIFY(QFile::exists(
            AlarmSoundFiles::live().filePath(m_center->pendingRequests().constFirst().content.soundName)));
    }
};

TOLVANE_GUI_TEST_MAIN(TaskRemindersTest)
#include "TaskRemindersTest.moc"
