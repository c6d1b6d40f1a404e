#include "UndoTestSupport.h"
#include "support/TestMain.h"
#include "support/ui/AppFixture.h"

#include <QTranslator>

#include <algorithm>

using namespace UndoTestSupport;

// The daily checklist, the logbook and repeating tasks have their changes recorded by their use
// cases like the workspace's: each is undone and redone step by step over real encrypted stores,
// and checked through another instance of the stores.
class UndoUseCasesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<AppFixture> app;
    QTranslator english;

    TasksApplicationFactory::Applications recording()
    {
        return *app->services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
    }
    TasksApplicationFactory::Applications elsewhere()
    {
        return *TasksApplicationFactory(app->services().storeConfigurations())
                    .make(false, std::nullopt)
                    .dataAs<TasksApplicationFactory::Applications>();
    }
    UndoHistory& history() { return app->services().undoHistory(); }
    static QList<TaskEntity> byId(QList<TaskEntity> tasks)
    {
        std::sort(
            tasks.begin(), tasks.end(), [](const TaskEntity& a, const TaskEntity& b) { return a.tasId < b.tasId; });
        return tasks;
    }
    QUuid userId()
    {
        return QUuid::fromString(app->services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
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
    void cleanup() { app.reset(); }

    void shouldUndoAndRedoEveryChangeToADailyTask()
    {
        const auto apps = recording();
        const QDateTime today = QDateTime::currentDateTime();
        const DailyTaskEntity stretch {.dtaUserId = userId(), .dtaDate = today, .dtaTitle = QStringLiteral("Stretch")};
        const auto stored = [&] { return found<DailyTaskEntity>(elsewhere().dailyTasks.find(stretch.dtaId)); };

        // Each state the item goes through, and the text of the change that led to it.
        QList<std::optional<DailyTaskEntity>> states {std::nullopt};
        QVERIFY(apps.dailyTasks.create(stretch).result);
        states.append(stored());
        QVERIFY(waitForText(history(), QStringLiteral("add daily task 'Stretch'")));
        QVERIFY(apps.dailyTasks.setDone(stretch.dtaId, true).result);
        states.append(stored());
        QVERIFY(waitForText(history(), QStringLiteral("complete daily task 'Stretch'")));
        QVERIFY(apps.dailyTasks.moveToDay(*states.constLast(), today.addDays(1)).result);
        states.append(stored());
        QVERIFY(waitForText(history(), QStringLiteral("move daily task 'Stretch'")));
        DailyTaskEntity renamed = *states.constLast();
        renamed.dtaTitle = QStringLiteral("Stretch for ten minutes");
        QVERIFY(apps.dailyTasks.rename(renamed).result);
        states.append(stored());
        QVERIFY(waitForText(history(), QStringLiteral("edit daily task 'Stretch for ten minutes'")));
        QVERIFY(apps.dailyTasks.delete_(stretch.dtaId).result);
        states.append(stored());
        QVERIFY(waitForText(history(), QStringLiteral("delete daily task 'Stretch for ten minutes'")));
        QVERIFY(states.at(2)->dtaIsDone);
        QCOMPARE(states.at(3)->dtaDate.date(), today.addDays(1).date());
        QVERIFY(!states.constLast());

        for (qsizetype index = states.size() - 2; index >= 0; --index) {
            QCOMPARE(step(history(), true), QString());
            QCOMPARE(stored(), states.at(index));
        }
        QVERIFY(!history().canUndo());
        for (qsizetype index = 1; index < states.size(); ++index) {
            QCOMPARE(step(history(), false), QString());
            QCOMPARE(stored(), states.at(index));
        }
    }

    // Completing a repeating task makes its next occurrence: undone, the task is open again and
    // the next one gone, so doing it again makes no second copy; redone, both come back.
    void shouldTakeBackTheNextOccurrenceWithTheCompletion()
    {
        const auto apps = recording();
        const ProjectEntity home {.prjUserId = userId(), .prjName = QStringLiteral("Home")};
        const TaskListEntity chores {.prjId = home.prjId, .talName = QStringLiteral("Chores"), .talIsDefault = true};
        QVERIFY(apps.projects.create(home).result);
        QVERIFY(apps.taskLists.create(chores).result);
        const TaskEntity water {.prjId = home.prjId,
            .talId = chores.talId,
            .tasTitle = QStringLiteral("Water the plants"),
            .tasDueDate = QDateTime(QDate::currentDate(), QTime(0, 0), Qt::UTC),
            .tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::weekly}};
        QVERIFY(apps.tasks.create(water).result);
        const auto listed = [&] { return UndoTestSupport::listed<TaskEntity>(elsewhere().tasks.list(chores.talId)); };

        QVERIFY(apps.tasks.markDone(water.tasId).result);
        QVERIFY(waitForText(history(), QStringLiteral("complete task 'Water the plants'")));
        const QList<TaskEntity> afterDone = listed();
        QCOMPARE(afterDone.size(), 2);

        QCOMPARE(step(history(), true), QString());
        const QList<TaskEntity> undone = listed();
        QCOMPARE(undone.size(), 1);
        QVERIFY(!undone.constFirst().tasIsDone);
        QCOMPARE(undone.constFirst().tasId, water.tasId);

        // Redone as it was: completed when it was, not again now.
        QCOMPARE(step(history(), false), QString());
        QCOMPARE(byId(listed()), byId(afterDone));
        QVERIFY(apps.tasks.markDone(water.tasId).result);
        QCOMPARE(listed().size(), 2);

        // A done task deleted and brought back keeps its completion, and starts no new occurrence.
        QVERIFY(apps.tasks.delete_(water.tasId).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete task 'Water the plants'")));
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(byId(listed()), byId(afterDone));
    }

    void shouldUndoAndRedoTheLogbook()
    {
        const auto apps = recording();
        const ProjectEntity garden {.prjUserId = userId(), .prjName = QStringLiteral("Garden")};
        QVERIFY(apps.projects.create(garden).result);
        const QDateTime now = QDateTime::currentDateTime();
        const TaskResultEntity written = apps.bitacora.saveText(garden.prjId, now, QStringLiteral("Sowed"), userId());
        QVERIFY(written.result);
        const BitacoraEntryEntity first = *written.dataAs<BitacoraEntryEntity>();
        QVERIFY(waitForText(history(), QStringLiteral("add logbook entry 'Sowed'")));
        QVERIFY(apps.bitacora.saveText(garden.prjId, now, QStringLiteral("Sowed the beans\nand the peas"), userId())
                    .result);
        QVERIFY(waitForText(history(), QStringLiteral("edit logbook entry 'Sowed the beans'")));
        QVERIFY(apps.bitacora.delete_(first.bteId, userId()).result);
        QVERIFY(waitForText(history(), QStringLiteral("delete logbook entry 'Sowed the beans'")));
        const auto stored = [&] { return found<BitacoraEntryEntity>(elsewhere().bitacora.find(first.bteId)); };
        QVERIFY(!stored());

        QCOMPARE(step(history(), true), QString());
        QCOMPARE(stored()->bteContent, u"Sowed the beans\nand the peas");
        QCOMPARE(stored()->bteDate, first.bteDate);
        QCOMPARE(step(history(), true), QString());
        QCOMPARE(stored(), first);
        QCOMPARE(step(history(), true), QString());
        QVERIFY(!stored());
        // The project itself was the first change.
        QCOMPARE(history().undoText(), u"add project 'Garden'");

        // Redo again, then a redo that finds the entry already deleted elsewhere changes nothing.
        QCOMPARE(step(history(), false), QString());
        QCOMPARE(step(history(), false), QString());
        QVERIFY(elsewhere().bitacora.delete_(first.bteId, userId()).result);
        QCOMPARE(step(history(), false),
            u"Can't redo delete logbook entry 'Sowed the beans': it was changed elsewhere since. Nothing was changed.");
        QCOMPARE(history().redoText(), u"delete logbook entry 'Sowed the beans'");
    }

    void shouldTakeInTurnTheStepsAskedForWhileOneRuns()
    {
        const auto apps = recording();
        QList<ProjectEntity> projects;
        for (const QString& name : {QStringLiteral("One"), QStringLiteral("Two"), QStringLiteral("Three")}) {
            projects.append({.prjUserId = userId(), .prjName = name});
            QVERIFY(apps.projects.create(projects.constLast()).result);
        }
        QVERIFY(waitForText(history(), QStringLiteral("add project 'Three'")));
        QSignalSpy finished(&history(), &UndoHistory::finished);
        // Three undos and a redo asked for at once, as quick key presses would.
        history().undo();
        history().undo();
        history().undo();
        history().redo();
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 4, 15000);
        for (const QList<QVariant>& outcome : std::as_const(finished))
            QCOMPARE(outcome.at(1).toString(), QString());
        const auto stores = elsewhere();
        QCOMPARE(found<ProjectEntity>(stores.projects.projectRepository->find(projects.at(0).prjId)), projects.at(0));
        QVERIFY(!stores.projects.projectRepository->find(projects.at(1).prjId).result);
        QVERIFY(!stores.projects.projectRepository->find(projects.at(2).prjId).result);
        QCOMPARE(history().undoText(), u"add project 'One'");
    }

    void shouldForgetTheHistoryWhenTheAccountChanges()
    {
        const auto apps = recording();
        QVERIFY(apps.projects.create({.prjUserId = userId(), .prjName = QStringLiteral("Home")}).result);
        QVERIFY(waitForText(history(), QStringLiteral("add project 'Home'")));
        app->notificationCenter().post(NotificationName::userAccountDidChange);
        QTRY_VERIFY(!history().canUndo());
        QCOMPARE(history().count(), 0);
    }
};

TOLVANE_GUI_TEST_MAIN(UndoUseCasesTest)
#include "UndoUseCasesTest.moc"
