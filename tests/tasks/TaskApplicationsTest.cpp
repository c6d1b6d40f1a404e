#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "remote/RemoteRepositoryFixture.h"
#include "support/FakeKeychain.h"
#include "support/FakeSecureRandom.h"
#include "support/SettableClock.h"
#include "support/TestMain.h"
#include "tasks/TasksApplicationFactory.h"

#include <QTemporaryDir>

namespace {

template <typename T> QList<T> listed(const TaskResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

QStringList namesOf(const QList<TaskListEntity>& lists)
{
    QStringList names;
    for (const TaskListEntity& list : lists)
        names.append(list.talName + (list.talIsDefault ? QStringLiteral("*") : QString()));
    return names;
}

void verifyFailure(
    const TaskResultEntity& outcome, std::optional<QString> TaskResultEntity::*field, const QString& text)
{
    QVERIFY(!outcome.result);
    QCOMPARE(outcome.*field, std::optional<QString>(text));
}

} // namespace

// The use cases as a screen meets them: built by the factory for a local account (encrypted
// stores, keys in the session's keyring) and for a Google account (the fake backend on
// loopback). Every test runs in both modes and must not be able to tell them apart.
class TaskApplicationsTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> stores;
    std::unique_ptr<RemoteFixture::Backend> backend;
    std::optional<TasksApplicationFactory::Applications> apps;
    bool isGoogle = false;
    // In Google mode the backend decides who owns what: its bearer token's user.
    QUuid user;

    TasksApplicationFactory factoryOver(std::shared_ptr<Keychain> keychain) const
    {
        RealmConfiguration defaults;
        defaults.fileURL = stores->filePath(QStringLiteral("default.realm"));
        return TasksApplicationFactory(
            RealmEncryptedConfigurationFactory(std::move(keychain), std::make_shared<SystemSecureRandom>(), defaults));
    }

    // Requests that changed something on the backend; none in local mode.
    QStringList writesSent() const
    {
        QStringList writes;
        if (!isGoogle)
            return writes;
        for (const RecordedRequest& request : backend->http.requests()) {
            if (request.method != "GET")
                writes.append(QString::fromLatin1(request.method) + QLatin1Char(' ') + request.path);
        }
        return writes;
    }

    ProjectEntity addProject(const QString& name)
    {
        const TaskResultEntity created = apps->projects.create({.prjUserId = user, .prjName = name});
        if (!created.result)
            qFatal("project not created: %s", qPrintable(created.firstMessage().value_or(QString())));
        return *created.dataAs<ProjectEntity>();
    }

    TaskListEntity addList(const ProjectEntity& project, const QString& name, bool isDefault = false)
    {
        const TaskResultEntity created
            = apps->taskLists.create({.prjId = project.prjId, .talName = name, .talIsDefault = isDefault});
        if (!created.result)
            qFatal("list not created: %s", qPrintable(created.firstMessage().value_or(QString())));
        return *created.dataAs<TaskListEntity>();
    }

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("google");
        QTest::newRow("local account") << false;
        QTest::newRow("Google account") << true;
    }

    void init()
    {
        QFETCH_GLOBAL(bool, google);
        isGoogle = google;
        stores = std::make_unique<QTemporaryDir>();
        backend = std::make_unique<RemoteFixture::Backend>();
        user = google ? FakeBackend::defaultUserId() : QUuid::createUuid();
        const TaskResultEntity made
            = factoryOver(std::make_shared<SecretServiceKeychain>()).make(google, backend->client());
        QVERIFY2(made.result, qPrintable(made.firstMessage().value_or(QString())));
        apps = *made.dataAs<TasksApplicationFactory::Applications>();
        backend->http.clearRequests();
    }

    void shouldShareOneRepositoryOfEachKind()
    {
        QCOMPARE(apps->projects.projectRepository, apps->taskLists.projectRepository);
        QCOMPARE(apps->projects.taskListRepository, apps->taskLists.taskListRepository);
        QCOMPARE(apps->taskLists.taskListRepository, apps->tasks.taskListRepository);
        QCOMPARE(apps->taskLists.taskRepository, apps->tasks.taskRepository);
    }

    void shouldRefuseBlankNamesBeforeAnyWrite()
    {
        verifyFailure(apps->projects.create({.prjUserId = user, .prjName = QStringLiteral(" \n")}),
            &TaskResultEntity::domainMessage, QStringLiteral("The project name cannot be empty"));
        const ProjectEntity project = addProject(QStringLiteral("Home"));
        backend->http.clearRequests();
        verifyFailure(apps->taskLists.create({.prjId = project.prjId, .talName = QStringLiteral("\t")}),
            &TaskResultEntity::domainMessage, QStringLiteral("The task list name cannot be empty"));
        verifyFailure(apps->dailyTasks.create({.dtaUserId = user, .dtaDate = QDateTime::currentDateTime()}),
            &TaskResultEntity::domainMessage, QStringLiteral("The daily task title cannot be empty"));
        QCOMPARE(backend->http.requests().size(), 0);
        QCOMPARE(listed<ProjectEntity>(apps->projects.list(user)), QList<ProjectEntity> {project});
    }

    void shouldKeepAProjectThatStillHasTaskLists()
    {
        const ProjectEntity project = addProject(QStringLiteral("Garden"));
        const TaskListEntity list = addList(project, QStringLiteral("Spring"));
        backend->http.clearRequests();

        verifyFailure(apps->projects.delete_(project.prjId, user), &TaskResultEntity::domainMessage,
            QStringLiteral("The project still has task lists"));
        QCOMPARE(writesSent(), QStringList());
        QCOMPARE(listed<ProjectEntity>(apps->projects.list(user)), QList<ProjectEntity> {project});

        QVERIFY(apps->taskLists.delete_(list.talId).result);
        QVERIFY(apps->projects.delete_(project.prjId, user).result);
        QCOMPARE(listed<ProjectEntity>(apps->projects.list(user)), QList<ProjectEntity>());
    }

    void shouldLetOnlyTheOwnerDeleteAProject()
    {
        const ProjectEntity project = addProject(QStringLiteral("Mine"));
        backend->http.clearRequests();

        verifyFailure(apps->projects.delete_(project.prjId, QUuid::createUuid()), &TaskResultEntity::domainMessage,
            QStringLiteral("This project does not belong to the given user"));
        QCOMPARE(writesSent(), QStringList());
    }

    void shouldRefuseAListOrTaskWithoutItsParent()
    {
        verifyFailure(apps->taskLists.create({.prjId = QUuid::createUuid(), .talName = QStringLiteral("Orphan")}),
            &TaskResultEntity::domainMessage, QStringLiteral("The parent project does not exist"));
        verifyFailure(apps->tasks.create({.talId = QUuid::createUuid(), .tasTitle = QStringLiteral("Orphan")}),
            &TaskResultEntity::domainMessage, QStringLiteral("The parent task list does not exist"));
        QCOMPARE(writesSent(), QStringList());
    }

    void shouldMakeExactlyOneListTheDefaultWritingOnlyWhatChanges()
    {
        const ProjectEntity project = addProject(QStringLiteral("Work"));
        const TaskListEntity a = addList(project, QStringLiteral("A"), true);
        const TaskListEntity b = addList(project, QStringLiteral("B"));
        const TaskListEntity c = addList(project, QStringLiteral("C"));
        backend->http.clearRequests();

        QVERIFY(apps->taskLists.setDefault(b).result);
        QCOMPARE(namesOf(listed<TaskListEntity>(apps->taskLists.list(project.prjId))), (QStringList {"A", "B*", "C"}));
        if (isGoogle) {
            const QString path = QStringLiteral("PUT /v0/task-lists/%1");
            QCOMPARE(writesSent(),
                (QStringList {path.arg(RemoteFixture::upper(a.talId)), path.arg(RemoteFixture::upper(b.talId))}));
        }

        backend->http.clearRequests();
        QVERIFY(apps->taskLists.setDefault(b).result);
        QCOMPARE(writesSent(), QStringList());
        verifyFailure(apps->taskLists.setDefault({.prjId = project.prjId, .talName = QStringLiteral("Stranger")}),
            &TaskResultEntity::applicationMessage, QStringLiteral("The task list does not exist"));
        Q_UNUSED(c);
    }

    void shouldTickTagAndClearTasks()
    {
        const ProjectEntity project = addProject(QStringLiteral("Home"));
        const TaskListEntity list = addList(project, QStringLiteral("Chores"), true);
        const QDateTime due(QDate(2026, 11, 28), QTime(18, 0));
        const TaskEntity laundry = *apps->tasks
                                        .create({.prjId = project.prjId,
                                            .talId = list.talId,
                                            .tasTitle = QStringLiteral("Laundry"),
                                            .tasDueDate = due})
                                        .dataAs<TaskEntity>();
        const TaskEntity dishes
            = *apps->tasks.create({.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Dishes")})
                   .dataAs<TaskEntity>();

        QVERIFY(apps->tasks.setTag(laundry.tasId, EisenhowerTagEnum::delegate).result);
        QVERIFY(apps->tasks.markDone(laundry.tasId).result);
        TaskEntity stored = *apps->tasks.find(laundry.tasId).dataAs<TaskEntity>();
        QVERIFY(stored.tasIsDone);
        QCOMPARE(stored.tasEisenhowerTag, EisenhowerTagEnum::delegate);
        QCOMPARE(stored.tasDueDate, due);
        QVERIFY(apps->tasks.setTag(laundry.tasId, std::nullopt).result);
        QCOMPARE(apps->tasks.find(laundry.tasId).dataAs<TaskEntity>()->tasEisenhowerTag, std::nullopt);

        QVERIFY(apps->tasks.deleteCompleted(list.talId).result);
        QCOMPARE(listed<TaskEntity>(apps->tasks.list(list.talId)).size(), 1);
        QCOMPARE(listed<TaskEntity>(apps->tasks.list(list.talId)).constFirst().tasId, dishes.tasId);
        verifyFailure(apps->tasks.rename({.tasId = dishes.tasId, .talId = list.talId, .tasTitle = QStringLiteral(" ")}),
            &TaskResultEntity::domainMessage, QStringLiteral("The task title cannot be empty"));
    }

    void shouldCompleteARepeatingTaskAndOpenItsNextOccurrence()
    {
        const ProjectEntity project = addProject(QStringLiteral("Home"));
        const TaskListEntity list = addList(project, QStringLiteral("Chores"), true);
        const auto clock = std::make_shared<SettableClock>(QDateTime(QDate(2026, 11, 30), QTime(15, 0), Qt::UTC));
        const TasksApplication tasks(apps->tasks.taskRepository, apps->tasks.taskListRepository, clock);
        const TaskRecurrenceEntity twoMondays {
            .frequency = RecurrenceFrequencyEnum::weekly, .interval = 1, .weekdays = {Qt::Monday}, .endAfterCount = 2};
        const TaskEntity bins = *tasks
                                     .create({.prjId = project.prjId,
                                         .talId = list.talId,
                                         .tasTitle = QStringLiteral("Put the bins out"),
                                         .tasDueDate = TaskEntity::dueOnDay(QDate(2026, 11, 30)),
                                         .tasEisenhowerTag = EisenhowerTagEnum::doIt,
                                         .tasRecurrence = twoMondays,
                                         .tasReminderMinutesBefore = 60})
                                     .dataAs<TaskEntity>();

        const TaskResultEntity done = tasks.markDone(bins.tasId);
        QVERIFY2(done.result, qPrintable(done.firstMessage().value_or(QString())));
        QList<TaskEntity> all = listed<TaskEntity>(tasks.list(list.talId));
        QCOMPARE(all.size(), 2);
        // The done one stays, with when it was done.
        QCOMPARE(all.at(0).tasId, bins.tasId);
        QVERIFY(all.at(0).tasIsDone);
        QCOMPARE(all.at(0).tasCompletedAt, clock->now());
        // The next one is open a week later, counted as the second.
        const TaskEntity next = all.at(1);
        QVERIFY(!next.tasIsDone);
        QCOMPARE(next.tasTitle, bins.tasTitle);
        QCOMPARE(next.dueDay(), QDate(2026, 12, 7));
        QCOMPARE(next.tasOccurrence, 2);
        QCOMPARE(next.tasRecurrence, twoMondays);
        QCOMPARE(next.tasReminderMinutesBefore, 60);
        QCOMPARE(next.tasEisenhowerTag, EisenhowerTagEnum::doIt);
        QCOMPARE(next.tasCompletedAt, std::nullopt);

        // Done twice is done once; the second occurrence was the last.
        QVERIFY(tasks.markDone(bins.tasId).result);
        clock->advance(7 * 86400);
        QVERIFY(tasks.markDone(next.tasId).result);
        all = listed<TaskEntity>(tasks.list(list.talId));
        QCOMPARE(all.size(), 2);
        QVERIFY(all.at(0).tasIsDone && all.at(1).tasIsDone);
        QCOMPARE(all.at(1).tasCompletedAt, clock->now());

        QVERIFY(tasks.markNotDone(bins.tasId).result);
        const TaskEntity reopened = *tasks.find(bins.tasId).dataAs<TaskEntity>();
        QVERIFY(!reopened.tasIsDone);
        QCOMPARE(reopened.tasCompletedAt, std::nullopt);
        QCOMPARE(reopened.tasRecurrence, twoMondays);

        // The factory's own use cases keep the time too.
        const TaskEntity plain
            = *apps->tasks.create({.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Once")})
                   .dataAs<TaskEntity>();
        QVERIFY(apps->tasks.markDone(plain.tasId).result);
        QVERIFY(apps->tasks.find(plain.tasId).dataAs<TaskEntity>()->tasCompletedAt.has_value());
        QCOMPARE(listed<TaskEntity>(apps->tasks.list(list.talId)).size(), 3);
    }

    void shouldSkipAnOccurrenceWithoutCompletingIt()
    {
        const ProjectEntity project = addProject(QStringLiteral("Health"));
        const TaskListEntity list = addList(project, QStringLiteral("Routine"), true);
        const auto clock = std::make_shared<SettableClock>(QDateTime(QDate(2026, 11, 22), QTime(9, 0), Qt::UTC));
        const TasksApplication tasks(apps->tasks.taskRepository, apps->tasks.taskListRepository, clock);
        const QDateTime nineInTheMorning(QDate(2026, 11, 30), QTime(9, 0));
        TaskRecurrenceEntity lastFriday {.frequency = RecurrenceFrequencyEnum::monthly, .interval = 1};
        lastFriday.weekdayOrdinal = -1;
        lastFriday.ordinalWeekday = Qt::Friday;
        const TaskEntity review = *tasks
                                       .create({.prjId = project.prjId,
                                           .talId = list.talId,
                                           .tasTitle = QStringLiteral("Monthly review"),
                                           .tasDueDate = nineInTheMorning,
                                           .tasDueHasTime = true,
                                           .tasRecurrence = lastFriday})
                                       .dataAs<TaskEntity>();

        const TaskResultEntity skipped = tasks.skipOccurrence(review.tasId);
        QVERIFY2(skipped.result, qPrintable(skipped.firstMessage().value_or(QString())));
        const QList<TaskEntity> all = listed<TaskEntity>(tasks.list(list.talId));
        QCOMPARE(all.size(), 1);
        QCOMPARE(all.constFirst().tasId, review.tasId);
        QVERIFY(!all.constFirst().tasIsDone);
        QCOMPARE(all.constFirst().tasDueDate->toLocalTime(), QDateTime(QDate(2026, 12, 25), QTime(9, 0)));
        QVERIFY(all.constFirst().tasDueHasTime);
        QCOMPARE(all.constFirst().tasOccurrence, 2);

        const TaskEntity once
            = *tasks.create({.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Once")})
                   .dataAs<TaskEntity>();
        verifyFailure(tasks.skipOccurrence(once.tasId), &TaskResultEntity::domainMessage,
            QStringLiteral("The task does not repeat"));
    }

    void shouldScheduleATaskAndRefuseRulesThatCannotRepeat()
    {
        const ProjectEntity project = addProject(QStringLiteral("Work"));
        const TaskListEntity list = addList(project, QStringLiteral("Inbox"), true);
        const TaskEntity report
            = *apps->tasks.create({.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Report")})
                   .dataAs<TaskEntity>();
        backend->http.clearRequests();

        TaskEntity planned = report;
        planned.tasTitle = QStringLiteral("ignored: the title changes through rename");
        planned.tasDueDate = QDateTime(QDate(2026, 12, 4), QTime(16, 30));
        planned.tasDueHasTime = true;
        planned.tasReminderMinutesBefore = 15;
        planned.tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::daily,
            .interval = 3,
            .anchor = RecurrenceAnchorEnum::completion,
            .endOnDate = QDate(2027, 1, 31)};
        QVERIFY(apps->tasks.schedule(planned).result);
        const TaskEntity stored = *apps->tasks.find(report.tasId).dataAs<TaskEntity>();
        QCOMPARE(stored.tasTitle, report.tasTitle);
        QCOMPARE(stored.tasDueDate, planned.tasDueDate);
        QVERIFY(stored.tasDueHasTime);
        QCOMPARE(stored.tasReminderMinutesBefore, 15);
        QCOMPARE(stored.tasRecurrence, planned.tasRecurrence);

        TaskEntity never = planned;
        never.tasRecurrence->interval = 0;
        verifyFailure(apps->tasks.schedule(never), &TaskResultEntity::domainMessage,
            QStringLiteral("The repetition needs an interval of at least 1 and valid days"));
        TaskEntity undated = planned;
        undated.tasDueDate.reset();
        verifyFailure(apps->tasks.schedule(undated), &TaskResultEntity::domainMessage,
            QStringLiteral("A reminder needs a due date and cannot be after it"));
        // Refused before anything was sent.
        QCOMPARE(writesSent().size(), isGoogle ? 1 : 0);
    }

    void shouldDeleteAListTogetherWithItsTasks()
    {
        const ProjectEntity project = addProject(QStringLiteral("Trip"));
        const TaskListEntity list = addList(project, QStringLiteral("Packing"));
        const TaskEntity passport
            = *apps->tasks.create({.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Passport")})
                   .dataAs<TaskEntity>();

        QVERIFY(apps->taskLists.delete_(list.talId).result);
        QVERIFY(!apps->tasks.find(passport.tasId).result);
        QVERIFY(!apps->taskLists.find(list.talId).result);
    }

    void shouldKeepTheChecklistOfEachDay()
    {
        // Noon keeps the local and the UTC day the same, so both modes agree on "today".
        const QDateTime today(QDate(2026, 11, 21), QTime(12, 0));
        const DailyTaskEntity call
            = *apps->dailyTasks.create({.dtaUserId = user, .dtaDate = today, .dtaTitle = QStringLiteral("Call mum")})
                   .dataAs<DailyTaskEntity>();
        QVERIFY(
            apps->dailyTasks.create({.dtaUserId = user, .dtaDate = today.addDays(1), .dtaTitle = QStringLiteral("Gym")})
                .result);

        QVERIFY(apps->dailyTasks.toggle(call.dtaId).result);
        QVERIFY(apps->dailyTasks.setDone(call.dtaId, true).result);
        const QList<DailyTaskEntity> items = listed<DailyTaskEntity>(apps->dailyTasks.list(today));
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.constFirst().dtaTitle, QStringLiteral("Call mum"));
        QVERIFY(items.constFirst().dtaIsDone);
        QVERIFY(apps->dailyTasks.toggle(call.dtaId).result);
        QVERIFY(!apps->dailyTasks.find(call.dtaId).dataAs<DailyTaskEntity>()->dtaIsDone);
    }

    void shouldSaveOneBitacoraEntryPerProjectAndDay()
    {
        const ProjectEntity project = addProject(QStringLiteral("Thesis"));
        const ProjectEntity quiet = addProject(QStringLiteral("Quiet"));
        const QDateTime morning(QDate(2026, 11, 21), QTime(9, 0));

        const TaskResultEntity first
            = apps->bitacora.saveText(project.prjId, morning, QStringLiteral("21:\n\n• outline"), user);
        QVERIFY2(first.result, qPrintable(first.firstMessage().value_or(QString())));
        QVERIFY(apps->bitacora
                    .saveText(project.prjId, morning.addSecs(3600), QStringLiteral("21:\n\n• outline, intro"), user)
                    .result);
        QVERIFY(apps->bitacora.saveText(project.prjId, morning.addDays(1), QStringLiteral("22:\n\n• results"), user)
                    .result);

        const auto entries = *apps->bitacora.entriesOn(morning, {project.prjId, quiet.prjId})
                                  .dataAs<QHash<QUuid, BitacoraEntryEntity>>();
        QCOMPARE(entries.size(), 1);
        QCOMPARE(entries.value(project.prjId).bteContent, QStringLiteral("21:\n\n• outline, intro"));
        QCOMPARE(entries.value(project.prjId).bteId, first.dataAs<BitacoraEntryEntity>()->bteId);
        QCOMPARE(listed<BitacoraEntryEntity>(apps->bitacora.list(project.prjId)).size(), 2);
    }

    void shouldLetOnlyTheAuthorChangeAnEntrySendingNothingOtherwise()
    {
        const ProjectEntity project = addProject(QStringLiteral("Shared"));
        const BitacoraEntryEntity entry
            = *apps->bitacora.saveText(project.prjId, QDateTime::currentDateTime(), QStringLiteral("mine"), user)
                   .dataAs<BitacoraEntryEntity>();
        backend->http.clearRequests();
        const QUuid stranger = QUuid::createUuid();

        verifyFailure(apps->bitacora.delete_(entry.bteId, stranger), &TaskResultEntity::domainMessage,
            QStringLiteral("This bitacora entry does not belong to the given user"));
        BitacoraEntryEntity rewritten = entry;
        rewritten.bteContent = QStringLiteral("not yours");
        verifyFailure(apps->bitacora.update(rewritten, stranger), &TaskResultEntity::domainMessage,
            QStringLiteral("This bitacora entry does not belong to the given user"));
        QCOMPARE(writesSent(), QStringList());
        QCOMPARE(apps->bitacora.find(entry.bteId).dataAs<BitacoraEntryEntity>()->bteContent, QStringLiteral("mine"));

        QVERIFY(apps->bitacora.delete_(entry.bteId, user).result);
        QVERIFY(!apps->bitacora.find(entry.bteId).result);
    }
};

// How the factory picks and fails.
class TasksApplicationFactoryTest : public QObject {
    Q_OBJECT

    QTemporaryDir stores;

    TasksApplicationFactory factoryOver(std::shared_ptr<Keychain> keychain) const
    {
        RealmConfiguration defaults;
        defaults.fileURL = stores.filePath(QStringLiteral("default.realm"));
        return TasksApplicationFactory(
            RealmEncryptedConfigurationFactory(std::move(keychain), std::make_shared<FakeSecureRandom>(), defaults));
    }

private Q_SLOTS:
    void shouldRefuseAGoogleAccountWithoutAClient()
    {
        const TaskResultEntity made = factoryOver(std::make_shared<FakeKeychain>()).make(true, std::nullopt);
        verifyFailure(made, &TaskResultEntity::infrastructureMessage,
            QStringLiteral("No hay conexión configurada para la cuenta de Google"));
        QVERIFY(!made.data.has_value());
    }

    void shouldNotComposeLocallyWhileTheKeychainRefuses()
    {
        auto keychain = std::make_shared<FakeKeychain>();
        keychain->lookupStatus = KeychainStatus::interactionNotAllowed;
        verifyFailure(factoryOver(keychain).make(false, std::nullopt), &TaskResultEntity::infrastructureMessage,
            QStringLiteral("No se pudo abrir la base de datos local"));
    }

    void shouldNeverTouchTheNetworkForALocalAccount()
    {
        RemoteFixture::Backend backend;
        const TaskResultEntity made = factoryOver(std::make_shared<FakeKeychain>()).make(false, backend.client());
        QVERIFY(made.result);
        const auto& apps = *made.dataAs<TasksApplicationFactory::Applications>();
        const QUuid user = QUuid::createUuid();
        QVERIFY(apps.projects.create({.prjUserId = user, .prjName = QStringLiteral("Offline")}).result);
        QCOMPARE(apps.projects.list(user).dataAs<QList<ProjectEntity>>()->size(), 1);
        QCOMPARE(backend.http.requests().size(), 0);
    }
};

int main(int argc, char* argv[])
{
    TestEnvironment::pinBeforeApplication();
    QCoreApplication application(argc, argv);
    TestEnvironment::pinAfterApplication();
    TaskApplicationsTest applications;
    TasksApplicationFactoryTest factory;
    return QTest::qExec(&applications, argc, argv) | QTest::qExec(&factory, argc, argv);
}

#include "TaskApplicationsTest.moc"
