#include "AlarmStartupHook.h"
#include "TaskRemindersTestSupport.h"
#include "support/TestMain.h"
#include "support/notifications/TestNotificationServer.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QTemporaryDir>
#include <QTranslator>

using namespace TaskRemindersTestSupport;

// Reminders of a Google account's tasks, which live on the real server (over a throwaway
// PostgreSQL): armed from what the server answers, and "Done" marks the task done there.
class TaskRemindersGoogleModeTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::shared_ptr<SettableClock> m_clock;
    std::shared_ptr<LiveUserNotificationCenter> m_center;
    std::unique_ptr<GoogleAccountFixture> m_google;
    QTranslator m_english;
    // One for the whole run: the centre keeps talking to the server it first found.
    std::unique_ptr<TestNotificationServer> m_server;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&m_english);
        m_server = std::make_unique<TestNotificationServer>();
        QVERIFY(m_server->start());
        // Whole seconds, as the stores keep them; one reading of the clock, or a second may turn
        // between two.
        const QDateTime now = QDateTime::currentDateTime();
        m_clock = std::make_shared<SettableClock>(now.addMSecs(-now.time().msec()));
        m_center = makeCenter(m_folder.path(), m_clock);
        m_google = std::make_unique<GoogleAccountFixture>(m_center);
        QVERIFY(m_google->signIn().result);
        runAlarmStartupHook(m_google->app().services());
    }
    void cleanupTestCase()
    {
        // The start-up hook's delegate holds the services, which hold the centre.
        m_center->setDelegate(nullptr);
        m_google.reset();
        m_server.reset();
    }

    void shouldRemindAndMarkDoneOnTheServer()
    {
        TestNotificationServer& server = *m_server;
        AppServices& services = m_google->app().services();
        const auto apps = applicationsOf(services.tasksApplications(true));
        const ProjectEntity project {.prjUserId = m_google->backendUser(), .prjName = QStringLiteral("Work")};
        const TaskListEntity list {.prjId = project.prjId, .talName = QStringLiteral("Calls"), .talIsDefault = true};
        QVERIFY(apps.projects.create(project).result);
        QVERIFY(apps.taskLists.create(list).result);
        // Whole seconds, as the backend keeps times.
        QDateTime due = m_clock->now().addSecs(2 * 3600);
        due = due.addMSecs(-due.time().msec());
        TaskEntity task = aTask(list, QStringLiteral("Call the bank"), due, 60);
        QVERIFY(apps.tasks.create(task).result);
        const TaskReminderScheduler reminders = services.taskReminderScheduler();
        QCOMPARE(firesAt(pendingFor(reminders, task.tasId)), due.addSecs(-3600));

        // Moved on the server: the reminder moves with it.
        task.tasDueDate = due.addSecs(1800).toUTC();
        QVERIFY(apps.tasks.schedule(task).result);
        QCOMPARE(firesAt(pendingFor(reminders, task.tasId)), due.addSecs(-1800));

        m_clock->advance(90 * 60);
        m_center->checkDueRequests();
        QVERIFY(server.waitForNotifications(1));
        QCOMPARE(server.notifications().constFirst().summary, QStringLiteral("Call the bank"));
        server.invokeAction(server.notifications().constFirst().id, TaskReminderScheduler::doneAction);
        QTRY_VERIFY_WITH_TIMEOUT(findTask(apps, task.tasId).value_or(TaskEntity()).tasIsDone, 20000);
    }

    void shouldRemindOnlyOfTheAccountSignedIn()
    {
        TestNotificationServer& server = *m_server;
        AppServices& services = m_google->app().services();
        const TaskReminderScheduler reminders = services.taskReminderScheduler();
        // Whole seconds, as the backend keeps times; hours apart, so that each rings alone.
        QDateTime due = m_clock->now().addSecs(3 * 3600);
        due = due.addMSecs(-due.time().msec());
        const auto google = applicationsOf(services.tasksApplications(true));
        const ProjectEntity googleProject {.prjUserId = m_google->backendUser(), .prjName = QStringLiteral("Office")};
        const TaskListEntity googleList {.prjId = googleProject.prjId, .talName = QStringLiteral("Mail")};
        QVERIFY(google.projects.create(googleProject).result);
        QVERIFY(google.taskLists.create(googleList).result);
        const TaskEntity onServer = aTask(googleList, QStringLiteral("Answer the auditors"), due, 60);
        QVERIFY(google.tasks.create(onServer).result);
        QVERIFY(pendingFor(reminders, onServer.tasId));

        // Signed out and set up as a local account, whose store already holds a task to remind of
        // (written by an earlier run, which armed nothing in this centre).
        QVERIFY(services.loginApplication().signOut().result);
        m_google->app().storeLocalUser();
        const QUuid localUser
            = QUuid::fromString(services.loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
        const auto local = applicationsOf(TasksApplicationFactory(services.storeConfigurations()).make(false, {}));
        const ProjectEntity localProject {.prjUserId = localUser, .prjName = QStringLiteral("Home")};
        const TaskListEntity localList {.prjId = localProject.prjId, .talName = QStringLiteral("Chores")};
        QVERIFY(local.projects.create(localProject).result);
        QVERIFY(local.taskLists.create(localList).result);
        const TaskEntity onDisk = aTask(localList, QStringLiteral("Feed the cat"), due.addSecs(1800), 60);
        QVERIFY(local.tasks.create(onDisk).result);
        QVERIFY(!pendingFor(reminders, onDisk.tasId));

        m_google->app().notificationCenter().post(NotificationName::userAccountDidChange);
        QTRY_VERIFY(pendingFor(reminders, onDisk.tasId) && !pendingFor(reminders, onServer.tasId));
        QCOMPARE(firesAt(pendingFor(reminders, onDisk.tasId)), due.addSecs(-1800));
        QCOMPARE(reminders.pendingReminders().size(), 1);

        // Back to Google: the server's task rings again, the local one no more.
        QVERIFY(m_google->signIn().result);
        m_google->app().notificationCenter().post(NotificationName::userAccountDidChange);
        QTRY_VERIFY_WITH_TIMEOUT(pendingFor(reminders, onServer.tasId) && !pendingFor(reminders, onDisk.tasId), 20000);
        QCOMPARE(reminders.pendingReminders().size(), 1);
        const int shownBefore = int(server.notifications().size());
        // To the server task's reminder, half an hour before the local one would have rung.
        m_clock->advance(m_clock->now().secsTo(due.addSecs(-3600)));
        m_center->checkDueRequests();
        QVERIFY(server.waitForNotifications(shownBefore + 1));
        QVERIFY(!server.waitForNotifications(shownBefore + 2, 500));
        QCOMPARE(server.notifications().constLast().summary, QStringLiteral("Answer the auditors"));
    }
};

TOLVANE_TEST_MAIN(TaskRemindersGoogleModeTest)
#include "TaskRemindersGoogleModeTest.moc"
