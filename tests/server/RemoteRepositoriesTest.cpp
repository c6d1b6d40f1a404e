#include "login/RemoteSupportRepositoryImpl.h"
#include "login/RemoteUserRegistrationRepositoryImpl.h"
#include "login/UserEntity.h"
#include "meetings/domain/MeetIdentity.h"
#include "meetings/repositories/remote/RemoteEventRepositoryImpl.h"
#include "support/TestMain.h"
#include "support/identity/LocalIdentityProvider.h"
#include "support/server/ServerBackend.h"
#include "tasks/domain/TaskMessages.h"
#include "tasks/repositories/remote/RemoteBitacoraRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteDailyTaskRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteProjectRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskListRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"

#include <QTest>

// The app's remote repositories against the real tolvane-server on a real PostgreSQL: what one
// writes the other reads, with the server's rules (ownership, defaults, the UTC day) in force.
// Each test signs in as a user of its own, so they share one server without seeing each other.
namespace {

const QDateTime nine(QDate(2026, 3, 17), QTime(9, 0), Qt::UTC);
const QString awkward = QStringLiteral("Quote \" back \\ tab\t line\n é ñ € ") + QString::fromUcs4(U"\U0001F600");

void verifySucceeded(const ResultEntity& outcome)
{
    QVERIFY2(outcome.result, qPrintable(outcome.firstMessage().value_or(QStringLiteral("<no message>"))));
}

void verifyRemoteFailure(const ResultEntity& outcome, const QString& text)
{
    QVERIFY(!outcome.result);
    QCOMPARE(outcome.infrastructureMessage, std::optional<QString>(text));
}

template <typename T> T dataOf(const ResultEntity& outcome)
{
    const T* data = outcome.dataAs<T>();
    return data ? *data : T {};
}

} // namespace

class RemoteRepositoriesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<ServerBackend> m_backend;

private Q_SLOTS:
    void initTestCase()
    {
        m_backend = std::make_unique<ServerBackend>();
        QVERIFY2(m_backend->isRunning(), qPrintable(m_backend->error()));
    }

    void cleanupTestCase() { m_backend.reset(); }

    void projects_roundTripAndKeepTheirRules()
    {
        const QUuid owner = m_backend->registerUser(QStringLiteral("projects"));
        RemoteProjectRepositoryImpl projects(m_backend->client(QStringLiteral("projects")));
        RemoteTaskListRepositoryImpl lists(m_backend->client(QStringLiteral("projects")));

        ProjectEntity home {.prjUserId = owner, .prjName = awkward, .prjDescription = QStringLiteral("notes")};
        home.prjShowEveryDay = true;
        const ResultEntity created = projects.create(home);
        verifySucceeded(created);
        const auto stored = dataOf<ProjectEntity>(created);
        // The server keeps the client's identifier; everything else comes back exactly.
        QCOMPARE(stored, home);
        // That identifier is nobody else's to take, nor this user's a second time.
        const QUuid other = m_backend->registerUser(QStringLiteral("projects-other"));
        RemoteProjectRepositoryImpl othersProjects(m_backend->client(QStringLiteral("projects-other")));
        QVERIFY(!othersProjects.create({.prjId = home.prjId, .prjUserId = other, .prjName = QStringLiteral("Mine")})
                     .result);
        QVERIFY(!projects.create({.prjId = home.prjId, .prjUserId = owner, .prjName = QStringLiteral("Again")}).result);
        QCOMPARE(dataOf<ProjectEntity>(projects.find(home.prjId)), home);

        home.prjName = QStringLiteral("House");
        home.prjShowEveryDay = false;
        QCOMPARE(dataOf<ProjectEntity>(projects.update(home)), home);
        QCOMPARE(dataOf<ProjectEntity>(projects.find(home.prjId)), home);
        const ProjectEntity work = dataOf<ProjectEntity>(
            projects.create(ProjectEntity {.prjUserId = owner, .prjName = QStringLiteral("Work")}));
        QCOMPARE(dataOf<QList<ProjectEntity>>(projects.list(owner)), (QList<ProjectEntity> {home, work}));

        // A project with lists stays; without them it goes.
        verifySucceeded(lists.create(TaskListEntity {.prjId = home.prjId, .talName = QStringLiteral("Inbox")}));
        QVERIFY(!projects.delete_(home.prjId).result);
        QCOMPARE(dataOf<ProjectEntity>(projects.find(home.prjId)), home);
        verifySucceeded(projects.delete_(work.prjId));
        verifyRemoteFailure(projects.find(work.prjId), TaskMessages::Project::remoteNotFound);
        verifyRemoteFailure(projects.delete_(work.prjId), TaskMessages::Project::remoteNotFound);

        // A project in someone else's name is refused, not created for them.
        QVERIFY(
            !projects.create(ProjectEntity {.prjUserId = QUuid::createUuid(), .prjName = QStringLiteral("X")}).result);
        QCOMPARE(dataOf<QList<ProjectEntity>>(projects.list(owner)).size(), 1);
    }

    void users_neverReachEachOthersRecords()
    {
        const QUuid ada = m_backend->registerUser(QStringLiteral("ada"));
        const QUuid bob = m_backend->registerUser(QStringLiteral("bob"));
        QVERIFY(ada != bob);
        QCOMPARE(m_backend->registerUser(QStringLiteral("ada")), ada);
        RemoteProjectRepositoryImpl adas(m_backend->client(QStringLiteral("ada")));
        RemoteProjectRepositoryImpl bobs(m_backend->client(QStringLiteral("bob")));
        RemoteTaskListRepositoryImpl bobsLists(m_backend->client(QStringLiteral("bob")));
        const ProjectEntity mine
            = dataOf<ProjectEntity>(adas.create(ProjectEntity {.prjUserId = ada, .prjName = QStringLiteral("Mine")}));

        QCOMPARE(dataOf<QList<ProjectEntity>>(bobs.list(bob)), QList<ProjectEntity>());
        verifyRemoteFailure(bobs.find(mine.prjId), TaskMessages::Project::remoteNotFound);
        ProjectEntity taken = mine;
        taken.prjName = QStringLiteral("Taken");
        verifyRemoteFailure(bobs.update(taken), TaskMessages::Project::remoteNotFound);
        verifyRemoteFailure(bobs.delete_(mine.prjId), TaskMessages::Project::remoteNotFound);
        QVERIFY(!bobsLists.create(TaskListEntity {.prjId = mine.prjId, .talName = QStringLiteral("Sneaky")}).result);
        QCOMPARE(dataOf<QList<ProjectEntity>>(adas.list(ada)), QList<ProjectEntity> {mine});

        // A token the server does not believe gets nothing at all.
        m_backend->identityProvider().setSigning(LocalIdentityProvider::Signing::none);
        RemoteProjectRepositoryImpl forged(m_backend->client(QStringLiteral("ada")));
        m_backend->identityProvider().setSigning(LocalIdentityProvider::Signing::publishedKey);
        verifyRemoteFailure(forged.list(ada), QStringLiteral("no autorizado"));
    }

    void taskLists_keepOneDefaultPerProject()
    {
        const QUuid owner = m_backend->registerUser(QStringLiteral("lists"));
        RemoteProjectRepositoryImpl projects(m_backend->client(QStringLiteral("lists")));
        RemoteTaskListRepositoryImpl lists(m_backend->client(QStringLiteral("lists")));
        const ProjectEntity project = dataOf<ProjectEntity>(
            projects.create(ProjectEntity {.prjUserId = owner, .prjName = QStringLiteral("P")}));

        TaskListEntity first {.prjId = project.prjId, .talName = QStringLiteral("First"), .talIsDefault = true};
        first.talId = dataOf<TaskListEntity>(lists.create(first)).talId;
        TaskListEntity second {.prjId = project.prjId, .talName = awkward, .talDescription = awkward};
        const TaskListEntity created = dataOf<TaskListEntity>(lists.create(second));
        second.talId = created.talId;
        QCOMPARE(created, second);

        second.talIsDefault = true;
        QCOMPARE(dataOf<TaskListEntity>(lists.update(second)), second);
        first.talIsDefault = false;
        QCOMPARE(dataOf<QList<TaskListEntity>>(lists.list(project.prjId)), (QList<TaskListEntity> {first, second}));

        verifySucceeded(lists.delete_(first.talId));
        verifyRemoteFailure(lists.find(first.talId), TaskMessages::TaskList::remoteNotFound);
        QCOMPARE(dataOf<QList<TaskListEntity>>(lists.list(project.prjId)), QList<TaskListEntity> {second});
    }

    void tasks_roundTripEveryFieldAndChangeOneAtATime()
    {
        const QUuid owner = m_backend->registerUser(QStringLiteral("tasks"));
        RemoteProjectRepositoryImpl projects(m_backend->client(QStringLiteral("tasks")));
        RemoteTaskListRepositoryImpl lists(m_backend->client(QStringLiteral("tasks")));
        RemoteTaskRepositoryImpl tasks(m_backend->client(QStringLiteral("tasks")));
        const QUuid projectId
            = dataOf<ProjectEntity>(projects.create(ProjectEntity {.prjUserId = owner, .prjName = QStringLiteral("P")}))
                  .prjId;
        const QUuid listId
            = dataOf<TaskListEntity>(lists.create(TaskListEntity {.prjId = projectId, .talName = QStringLiteral("L")}))
                  .talId;

        TaskEntity full {.prjId = projectId, .talId = listId, .tasTitle = awkward};
        full.tasDueDate = nine;
        full.tasEisenhowerTag = EisenhowerTagEnum::delegate;
        const TaskEntity created = dataOf<TaskEntity>(tasks.create(full));
        full.tasId = created.tasId;
        QCOMPARE(created, full);
        TaskEntity bare {.prjId = projectId, .talId = listId, .tasTitle = QStringLiteral("Bare")};
        bare.tasId = dataOf<TaskEntity>(tasks.create(bare)).tasId;

        // Read, change one field, write back whole: the others stay.
        full.tasIsDone = true;
        QCOMPARE(dataOf<TaskEntity>(tasks.setDone(full.tasId, true)), full);
        full.tasEisenhowerTag = std::nullopt;
        QCOMPARE(dataOf<TaskEntity>(tasks.setTag(full.tasId, std::nullopt)), full);
        QCOMPARE(dataOf<TaskEntity>(tasks.find(full.tasId)), full);
        // An update leaves out what the task no longer has.
        full.tasDueDate = std::nullopt;
        full.tasTitle = QStringLiteral("Renamed");
        QCOMPARE(dataOf<TaskEntity>(tasks.update(full)), full);
        QCOMPARE(dataOf<QList<TaskEntity>>(tasks.list(listId)), (QList<TaskEntity> {full, bare}));

        // The schedule travels whole and is kept; changing it writes every part of it.
        TaskEntity repeating {.prjId = projectId, .talId = listId, .tasTitle = QStringLiteral("Water the plants")};
        repeating.tasDueDate = nine;
        repeating.tasDueHasTime = true;
        repeating.tasRecurrence = TaskRecurrenceEntity {.frequency = RecurrenceFrequencyEnum::weekly,
            .interval = 2,
            .weekdays = {Qt::Monday, Qt::Thursday},
            .anchor = RecurrenceAnchorEnum::completion,
            .endOnDate = QDate(2027, 3, 1)};
        repeating.tasOccurrence = 4;
        repeating.tasReminderMinutesBefore = 10;
        repeating.tasId = dataOf<TaskEntity>(tasks.create(repeating)).tasId;
        QCOMPARE(dataOf<TaskEntity>(tasks.find(repeating.tasId)), repeating);
        repeating.tasIsDone = true;
        repeating.tasCompletedAt = nine.addDays(1);
        repeating.tasRecurrence->endOnDate.reset();
        repeating.tasRecurrence->endAfterCount = 5;
        repeating.tasRecurrence->frequency = RecurrenceFrequencyEnum::monthly;
        repeating.tasRecurrence->weekdays.clear();
        repeating.tasRecurrence->weekdayOrdinal = -1;
        repeating.tasRecurrence->ordinalWeekday = Qt::Friday;
        repeating.tasReminderMinutesBefore.reset();
        QCOMPARE(dataOf<TaskEntity>(tasks.update(repeating)), repeating);
        QCOMPARE(dataOf<QList<TaskEntity>>(tasks.list(listId)), (QList<TaskEntity> {full, bare, repeating}));
        QVERIFY(tasks.delete_(repeating.tasId).result);

        // A task must sit in a list of its own project.
        const QUuid otherProject
            = dataOf<ProjectEntity>(projects.create(ProjectEntity {.prjUserId = owner, .prjName = QStringLiteral("Q")}))
                  .prjId;
        QVERIFY(
            !tasks.create(TaskEntity {.prjId = otherProject, .talId = listId, .tasTitle = QStringLiteral("X")}).result);

        verifySucceeded(tasks.deleteCompleted(listId));
        QCOMPARE(dataOf<QList<TaskEntity>>(tasks.list(listId)), QList<TaskEntity> {bare});
        verifySucceeded(tasks.delete_(bare.tasId));
        verifyRemoteFailure(tasks.find(bare.tasId), TaskMessages::Task::remoteNotFound);
        verifyRemoteFailure(tasks.setDone(bare.tasId, true), TaskMessages::Task::remoteNotFound);
    }

    void dailyTasks_belongToTheirUtcDayAndToggle()
    {
        const QUuid owner = m_backend->registerUser(QStringLiteral("daily"));
        RemoteDailyTaskRepositoryImpl daily(m_backend->client(QStringLiteral("daily")));
        // 23:30 UTC, and 00:30 UTC of the day after: two different days.
        const QDateTime late(QDate(2026, 4, 10), QTime(23, 30), Qt::UTC);
        DailyTaskEntity water {.dtaUserId = owner, .dtaDate = late, .dtaTitle = awkward};
        const DailyTaskEntity created = dataOf<DailyTaskEntity>(daily.create(water));
        water.dtaId = created.dtaId;
        QCOMPARE(created, water);
        DailyTaskEntity run {.dtaUserId = owner, .dtaDate = late.addSecs(3600), .dtaTitle = QStringLiteral("Run")};
        run.dtaId = dataOf<DailyTaskEntity>(daily.create(run)).dtaId;

        QCOMPARE(dataOf<QList<DailyTaskEntity>>(daily.list(late)), QList<DailyTaskEntity> {water});
        QCOMPARE(dataOf<QList<DailyTaskEntity>>(daily.list(late.addSecs(3600))), QList<DailyTaskEntity> {run});

        // The toggle answers nothing to read; the next read shows it.
        verifySucceeded(daily.toggle(water.dtaId));
        water.dtaIsDone = true;
        QCOMPARE(dataOf<DailyTaskEntity>(daily.find(water.dtaId)), water);
        // Already done: asking for done changes nothing; asking for not done flips it back.
        verifySucceeded(daily.setDone(water.dtaId, true));
        QCOMPARE(dataOf<DailyTaskEntity>(daily.find(water.dtaId)), water);
        verifySucceeded(daily.setDone(water.dtaId, false));
        water.dtaIsDone = false;
        QCOMPARE(dataOf<DailyTaskEntity>(daily.find(water.dtaId)), water);
        water.dtaTitle = QStringLiteral("Water the plants");
        QCOMPARE(dataOf<DailyTaskEntity>(daily.update(water)), water);
        QCOMPARE(dataOf<DailyTaskEntity>(daily.find(water.dtaId)), water);

        verifySucceeded(daily.delete_(water.dtaId));
        verifyRemoteFailure(daily.toggle(water.dtaId), TaskMessages::DailyTask::remoteNotFound);
        QCOMPARE(dataOf<QList<DailyTaskEntity>>(daily.list(late)), QList<DailyTaskEntity>());
    }

    void bitacora_entriesCarryTheirAuthorAndChangeOnlyTheirText()
    {
        const QUuid owner = m_backend->registerUser(QStringLiteral("writer"));
        RemoteProjectRepositoryImpl projects(m_backend->client(QStringLiteral("writer")));
        RemoteBitacoraRepositoryImpl entries(m_backend->client(QStringLiteral("writer")));
        const QUuid projectId
            = dataOf<ProjectEntity>(projects.create(ProjectEntity {.prjUserId = owner, .prjName = QStringLiteral("P")}))
                  .prjId;

        BitacoraEntryEntity entry {.bteUserId = owner, .prjId = projectId, .bteDate = nine, .bteContent = awkward};
        const BitacoraEntryEntity created = dataOf<BitacoraEntryEntity>(entries.create(entry));
        entry.bteId = created.bteId;
        QCOMPARE(created, entry);
        entry.bteContent = QStringLiteral("Second thoughts");
        QCOMPARE(dataOf<BitacoraEntryEntity>(entries.update(entry)), entry);
        QCOMPARE(dataOf<QList<BitacoraEntryEntity>>(entries.list(projectId)), QList<BitacoraEntryEntity> {entry});
        QCOMPARE(dataOf<QList<BitacoraEntryEntity>>(entries.list(QUuid::createUuid())), QList<BitacoraEntryEntity>());

        verifySucceeded(entries.delete_(entry.bteId));
        verifyRemoteFailure(entries.find(entry.bteId), TaskMessages::Bitacora::remoteNotFound);
    }

    void events_createUpdateFetchAndDelete()
    {
        m_backend->registerUser(QStringLiteral("events"));
        QSet<QUuid> armed;
        RemoteEventRepositoryImpl events(
            m_backend->client(QStringLiteral("events")), [] { return false; },
            [&armed](const QUuid& id) { return armed.contains(id); });

        const MeetEntity created = events.createMeet(
            {awkward, QStringLiteral("Notes"), nine, nine.addSecs(5400), MeetRecurrenceFrequency::weekly, {6, 2, 4}});
        QCOMPARE(created.metId, MeetIdentity::forBackendEvent(created.metOriginalIdentifier));
        QCOMPARE(created.metName, awkward);
        QCOMPARE(created.metDate, nine);
        QCOMPARE(created.metDuration, 5400.0);
        QCOMPARE(created.metRecurringWeekdays, QSet<int>({2, 4, 6}));
        QCOMPARE(events.fetchMeets(), QList<MeetEntity> {created});

        armed.insert(created.metId);
        const MeetEntity updated = events.updateMeet(created,
            {QStringLiteral("Review"), QString(), nine, nine.addSecs(1800), MeetRecurrenceFrequency::none, {}});
        QCOMPARE(updated.metId, created.metId);
        QCOMPARE(updated.metName, QStringLiteral("Review"));
        QCOMPARE(updated.metDuration, 1800.0);
        QCOMPARE(events.fetchMeets(), QList<MeetEntity> {updated});

        events.deleteMeet(updated);
        QVERIFY(events.fetchMeets().isEmpty());
    }

    void registrationAndSupport_reachTheServer()
    {
        RemoteUserRegistrationRepositoryImpl registration(m_backend->client(QStringLiteral("grace")));
        const ResultEntity registered = registration.createUser(UserEntity {
            QString(), QStringLiteral("Grace"), QStringLiteral("H"), QStringLiteral("g@example.org"), true});
        verifySucceeded(registered);
        const UserEntity user = dataOf<UserEntity>(registered);
        QCOMPARE(QUuid::fromString(user.usrId), m_backend->registerUser(QStringLiteral("grace")));
        QCOMPARE(user.usrFirstName, QStringLiteral("Grace"));
        QVERIFY(user.usrIsGoogleAccount);

        UserEntity renamed = user;
        renamed.usrLastName = awkward;
        const ResultEntity updated = registration.updateUser(renamed);
        verifySucceeded(updated);
        QCOMPARE(dataOf<UserEntity>(updated).usrLastName, awkward);
        // Nobody changes another's profile.
        RemoteUserRegistrationRepositoryImpl stranger(m_backend->client(QStringLiteral("mallory")));
        QVERIFY(!stranger.updateUser(renamed).result);

        RemoteSupportRepositoryImpl support(m_backend->client(QStringLiteral("grace")));
        verifySucceeded(support.sendSupportMessage(awkward));
        QVERIFY(!support.sendSupportMessage(QStringLiteral("   ")).result);
    }
};

TOLVANE_TEST_MAIN(RemoteRepositoriesTest)
#include "RemoteRepositoriesTest.moc"
