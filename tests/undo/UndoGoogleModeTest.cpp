#include "UndoTestSupport.h"
#include "support/TestMain.h"
#include "support/ui/GoogleAccountFixture.h"

#include <QTranslator>

#include <algorithm>

using namespace UndoTestSupport;

// Undo and redo for a Google account: the data lives on the real server (over a throwaway
// PostgreSQL), and what a delete took away comes back under the same identifiers.
class UndoGoogleModeTest : public QObject {
    Q_OBJECT

    std::unique_ptr<GoogleAccountFixture> google;
    QTranslator english;

    TasksApplicationFactory::Applications applications()
    {
        const TaskResultEntity made = google->app().services().tasksApplications(true);
        if (!made.result)
            qFatal("no applications: %s", qPrintable(made.firstMessage().value_or(QString())));
        return *made.dataAs<TasksApplicationFactory::Applications>();
    }
    UndoHistory& history() { return google->app().services().undoHistory(); }

    static QList<TaskEntity> byId(QList<TaskEntity> tasks)
    {
        std::sort(
            tasks.begin(), tasks.end(), [](const TaskEntity& a, const TaskEntity& b) { return a.tasId < b.tasId; });
        return tasks;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
        google = std::make_unique<GoogleAccountFixture>();
        QVERIFY(google->signIn().result);
    }
    void cleanupTestCase() { google.reset(); }

    void shouldBringBackADeletedListAndItsTasksUnderTheirIds()
    {
        const auto apps = applications();
        const QUuid user = google->backendUser();
        const ProjectEntity trip {.prjUserId = user, .prjName = QStringLiteral("Trip")};
        const TaskListEntity packing {.prjId = trip.prjId, .talName = QStringLiteral("Packing"), .talIsDefault = true};
        QVERIFY(apps.projects.create(trip).result);
        QVERIFY(apps.taskLists.create(packing).result);
        QList<QUuid> ids;
        for (const QString& title :
            {QStringLiteral("Passport"), QStringLiteral("Tickets"), QStringLiteral("Charger")}) {
            const TaskEntity task {.prjId = trip.prjId, .talId = packing.talId, .tasTitle = title};
            QVERIFY(apps.tasks.create(task).result);
            ids.append(task.tasId);
        }
        QVERIFY(apps.tasks.markDone(ids.at(1)).result);
        QVERIFY(apps.tasks.setTag(ids.at(2), EisenhowerTagEnum::planning).result);
        QVERIFY(waitForText(history(), QStringLiteral("change quadrant of task 'Charger'")));

        // The client's identifiers are the server's.
        const auto list = found<TaskListEntity>(apps.taskLists.find(packing.talId));
        QVERIFY(list);
        const QList<TaskEntity> tasks = byId(listed<TaskEntity>(apps.tasks.list(packing.talId)));
        QCOMPARE(tasks.size(), 3);
        QVERIFY(ids.contains(tasks.at(0).tasId) && ids.contains(tasks.at(1).tasId) && ids.contains(tasks.at(2).tasId));

        QVERIFY(apps.taskLists.delete_(packing.talId).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete list 'Packing'")));
        QVERIFY(!apps.taskLists.find(packing.talId).result);
        // Brought back in a later second than the one it was completed in (the server keeps whole
        // seconds), so that a completion stamped anew would show.
        const auto tickets = std::find_if(
            tasks.cbegin(), tasks.cend(), [&](const TaskEntity& task) { return task.tasId == ids.at(1); });
        QVERIFY(tickets->tasIsDone && tickets->tasCompletedAt);
        const qint64 completedAt = tickets->tasCompletedAt->toSecsSinceEpoch();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > completedAt);

        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<TaskListEntity>(apps.taskLists.find(packing.talId)), list);
        QCOMPARE(byId(listed<TaskEntity>(apps.tasks.list(packing.talId))), tasks);

        QCOMPARE(step(history(), false), QString());
        QVERIFY(!apps.taskLists.find(packing.talId).result);
        QVERIFY(listed<TaskEntity>(apps.tasks.list(packing.talId)).isEmpty());
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(byId(listed<TaskEntity>(apps.tasks.list(packing.talId))), tasks);
    }

    void shouldUndoDailyTasksAndTheLogbookOnTheServer()
    {
        const auto apps = applications();
        const QUuid user = google->backendUser();
        const DailyTaskEntity stretch {
            .dtaUserId = user, .dtaDate = QDateTime::currentDateTimeUtc(), .dtaTitle = QStringLiteral("Stretch")};
        QVERIFY(apps.dailyTasks.create(stretch).result);
        QVERIFY(apps.dailyTasks.setDone(stretch.dtaId, true).result);
        const auto done = found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId));
        QVERIFY(done && done->dtaIsDone);
        QVERIFY(apps.dailyTasks.delete_(stretch.dtaId).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete daily task 'Stretch'")));
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId)), done);
        QCOMPARE(step(history(), true), QString());
        QVERIFY(!found<DailyTaskEntity>(apps.dailyTasks.find(stretch.dtaId))->dtaIsDone);

        const ProjectEntity garden {.prjUserId = user, .prjName = QStringLiteral("Garden")};
        QVERIFY(apps.projects.create(garden).result);
        const TaskResultEntity written
            = apps.bitacora.saveText(garden.prjId, QDateTime::currentDateTimeUtc(), QStringLiteral("Sowed"), user);
        QVERIFY(written.result);
        const BitacoraEntryEntity entry = *written.dataAs<BitacoraEntryEntity>();
        QVERIFY(apps.bitacora.delete_(entry.bteId, user).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete logbook entry 'Sowed'")));
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(found<BitacoraEntryEntity>(apps.bitacora.find(entry.bteId)), entry);
    }

    void shouldRefuseAnIdentifierAlreadyInUse()
    {
        const auto apps = applications();
        const ProjectEntity home {.prjUserId = google->backendUser(), .prjName = QStringLiteral("Home")};
        QVERIFY(apps.projects.create(home).result);
        ProjectEntity again = home;
        again.prjName = QStringLiteral("Another home");
        QVERIFY(!apps.projects.create(again).result);
        QCOMPARE(found<ProjectEntity>(apps.projects.projectRepository->find(home.prjId))->prjName, u"Home");
    }
};

TOLVANE_GUI_TEST_MAIN(UndoGoogleModeTest)
#include "UndoGoogleModeTest.moc"
