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

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&m_english);
        m_clock = std::make_shared<SettableClock>(QDateTime::currentDateTime().addMSecs(-QTime::currentTime().msec()));
        m_center = makeCenter(m_folder.path(), m_clock);
        m_google = std::make_unique<GoogleAccountFixture>(m_center);
        QVERIFY(m_google->signIn().result);
    }
    void cleanupTestCase()
    {
        // The start-up hook's delegate holds the services, which hold the centre.
        m_center->setDelegate(nullptr);
        m_google.reset();
    }

    void shouldRemindAndMarkDoneOnTheServer()
    {
        TestNotificationServer server;
        QVERIFY(server.start());
        AppServices& services = m_google->app().services();
        runAlarmStartupHook(services);
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
};

TOLVANE_TEST_MAIN(TaskRemindersGoogleModeTest)
#include "TaskRemindersGoogleModeTest.moc"
