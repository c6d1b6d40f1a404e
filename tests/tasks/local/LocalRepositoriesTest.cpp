#include "storage/RealmDatabase.h"
#include "support/TestMain.h"
#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalDailyTaskRepositoryImpl.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QTemporaryDir>

namespace {

template <typename Database> Database storeIn(const QTemporaryDir& directory)
{
    RealmConfiguration configuration;
    configuration.fileURL = directory.filePath(Database::Store::name + QStringLiteral(".realm"));
    configuration.encryptionKey = QByteArray(64, '\x07');
    configuration.schemaVersion = 1;
    configuration.objectTypes = Database::Store::objectTypes();
    return Database {configuration};
}

template <typename T> QList<T> listed(const TaskResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

QStringList titles(const QList<TaskEntity>& tasks)
{
    QStringList names;
    for (const TaskEntity& task : tasks)
        names.append(task.tasTitle);
    return names;
}

// 23:30 on the 21st in the tests' zone (UTC-5) is already the 22nd in UTC.
QDateTime local(int day, int hour, int minute)
{
    return QDateTime(QDate(2026, 11, day), QTime(hour, minute));
}

} // namespace

// The local repositories over real encrypted store files.
class LocalRepositoriesTest : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory;
    const QUuid owner = QUuid::createUuid();

private Q_SLOTS:
    void init() { directory = std::make_unique<QTemporaryDir>(); }

    void shouldKeepProjectsPerUserInTheOrderTheyWereAdded()
    {
        LocalProjectRepositoryImpl projects(storeIn<ProjectsDatabase>(*directory));
        const ProjectEntity home {.prjUserId = owner, .prjName = QStringLiteral("Home")};
        const ProjectEntity work {.prjUserId = owner, .prjName = QStringLiteral("Work"), .prjShowEveryDay = true};
        QVERIFY(projects.create(work).result);
        QVERIFY(
            projects.create({.prjUserId = QUuid::createUuid(), .prjName = QStringLiteral("Someone else's")}).result);
        QVERIFY(projects.create(home).result);

        QCOMPARE(listed<ProjectEntity>(projects.list(owner)), (QList<ProjectEntity> {work, home}));

        ProjectEntity renamed = work;
        renamed.prjName = QStringLiteral("Office");
        QCOMPARE(*projects.update(renamed).dataAs<ProjectEntity>(), renamed);
        QCOMPARE(listed<ProjectEntity>(projects.list(owner)), (QList<ProjectEntity> {renamed, home}));
        QCOMPARE(*projects.find(home.prjId).dataAs<ProjectEntity>(), home);

        QVERIFY(projects.delete_(home.prjId).result);
        QCOMPARE(listed<ProjectEntity>(projects.list(owner)), QList<ProjectEntity> {renamed});
    }

    void shouldSayWhenTheRecordIsMissing()
    {
        LocalProjectRepositoryImpl projects(storeIn<ProjectsDatabase>(*directory));
        const ProjectEntity removed {.prjUserId = owner, .prjName = QStringLiteral("Gone")};
        const QString missing = QStringLiteral("The project does not exist");

        for (const TaskResultEntity& outcome :
            {projects.update(removed), projects.delete_(removed.prjId), projects.find(removed.prjId)}) {
            QVERIFY(!outcome.result);
            QCOMPARE(outcome.applicationMessage, missing);
            QCOMPARE(outcome.infrastructureMessage, std::nullopt);
        }
        QCOMPARE(listed<ProjectEntity>(projects.list(owner)), QList<ProjectEntity>());
    }

    void shouldReportAStoreThatCannotBeOpened()
    {
        ProjectsDatabase unreachable = storeIn<ProjectsDatabase>(*directory);
        unreachable.configuration.fileURL = directory->filePath(QStringLiteral("no/such/folder/Tasks.Projects.realm"));
        const TaskResultEntity outcome = LocalProjectRepositoryImpl(unreachable).list(owner);

        QVERIFY(!outcome.result);
        QVERIFY2(outcome.infrastructureMessage.value_or(QString()).startsWith(QStringLiteral("Open failed (")),
            qPrintable(outcome.infrastructureMessage.value_or(QString())));
        QCOMPARE(outcome.databaseMessage, std::nullopt);
    }

    void shouldStoreTheTagsRawValueAndClearIt()
    {
        const TasksDatabase database = storeIn<TasksDatabase>(*directory);
        LocalTaskRepositoryImpl tasks(database);
        const TaskEntity task {.talId = QUuid::createUuid(), .tasTitle = QStringLiteral("Call the plumber")};
        QVERIFY(tasks.create(task).result);
        const auto storedTag = [&] {
            return RealmDatabase::open(database.configuration)
                ->query(QStringLiteral("SELECT tasEisenhowerTag FROM TaskRealmModel"))
                .constFirst()
                .constFirst();
        };
        QVERIFY(storedTag().isNull());

        const TaskResultEntity tagged = tasks.setTag(task.tasId, EisenhowerTagEnum::doIt);
        QCOMPARE(tagged.dataAs<TaskEntity>()->tasEisenhowerTag, EisenhowerTagEnum::doIt);
        QCOMPARE(storedTag(), QVariant(QStringLiteral("do")));
        QCOMPARE(tasks.find(task.tasId).dataAs<TaskEntity>()->tasEisenhowerTag, EisenhowerTagEnum::doIt);

        QVERIFY(tasks.setTag(task.tasId, std::nullopt).result);
        QVERIFY(storedTag().isNull());
        QCOMPARE(tasks.setTag(QUuid::createUuid(), EisenhowerTagEnum::planning).applicationMessage,
            QStringLiteral("The task does not exist"));
    }

    void shouldChangeOnlyTheDoneFlagAndDeleteOnlyDoneTasksOfTheList()
    {
        LocalTaskRepositoryImpl tasks(storeIn<TasksDatabase>(*directory));
        const QUuid list = QUuid::createUuid();
        const QUuid otherList = QUuid::createUuid();
        const QDateTime due(QDate(2026, 12, 1), QTime(9, 0));
        const TaskEntity a {.talId = list, .tasTitle = QStringLiteral("a"), .tasDueDate = due};
        const TaskEntity b {.talId = list, .tasTitle = QStringLiteral("b")};
        const TaskEntity c {.talId = list, .tasTitle = QStringLiteral("c")};
        const TaskEntity elsewhere {.talId = otherList, .tasTitle = QStringLiteral("done elsewhere")};
        for (const TaskEntity& task : {a, b, c, elsewhere})
            QVERIFY(tasks.create(task).result);

        QVERIFY(tasks.deleteCompleted(list).result);
        QCOMPARE(titles(listed<TaskEntity>(tasks.list(list))), (QStringList {"a", "b", "c"}));

        const TaskEntity doneA = *tasks.markDone(a.tasId).dataAs<TaskEntity>();
        QVERIFY(doneA.tasIsDone);
        QCOMPARE(doneA.tasDueDate, due);
        QCOMPARE(doneA.tasTitle, QStringLiteral("a"));
        QVERIFY(tasks.markDone(c.tasId).result);
        QVERIFY(tasks.markDone(elsewhere.tasId).result);
        QVERIFY(!tasks.markNotDone(c.tasId).dataAs<TaskEntity>()->tasIsDone);
        QVERIFY(tasks.markDone(c.tasId).result);

        QVERIFY(tasks.deleteCompleted(list).result);
        QCOMPARE(titles(listed<TaskEntity>(tasks.list(list))), QStringList {"b"});
        QCOMPARE(titles(listed<TaskEntity>(tasks.list(otherList))), QStringList {"done elsewhere"});
    }

    void shouldListTheDailyTasksOfTheLocalDay()
    {
        LocalDailyTaskRepositoryImpl daily(storeIn<DailyTasksDatabase>(*directory));
        const DailyTaskEntity lateEvening {.dtaDate = local(21, 23, 30), .dtaTitle = QStringLiteral("late")};
        const DailyTaskEntity earlyMorning {.dtaDate = local(21, 0, 0), .dtaTitle = QStringLiteral("early")};
        const DailyTaskEntity nextDay {.dtaDate = local(22, 0, 0), .dtaTitle = QStringLiteral("tomorrow")};
        for (const DailyTaskEntity& item : {lateEvening, nextDay, earlyMorning})
            QVERIFY(daily.create(item).result);

        const QList<DailyTaskEntity> today = listed<DailyTaskEntity>(daily.list(local(21, 12, 0)));
        QCOMPARE(today, (QList<DailyTaskEntity> {lateEvening, earlyMorning}));
        QCOMPARE(listed<DailyTaskEntity>(daily.list(local(22, 23, 59))), QList<DailyTaskEntity> {nextDay});
    }

    void shouldToggleAndSetTheDailyTaskDoneFlag()
    {
        LocalDailyTaskRepositoryImpl daily(storeIn<DailyTasksDatabase>(*directory));
        const DailyTaskEntity item {.dtaDate = local(21, 9, 0), .dtaTitle = QStringLiteral("water the plants")};
        QVERIFY(daily.create(item).result);
        const auto isDone = [&] { return daily.find(item.dtaId).dataAs<DailyTaskEntity>()->dtaIsDone; };

        QVERIFY(daily.toggle(item.dtaId).result);
        QVERIFY(isDone());
        QVERIFY(daily.toggle(item.dtaId).result);
        QVERIFY(!isDone());
        QVERIFY(daily.setDone(item.dtaId, true).result);
        QVERIFY(daily.setDone(item.dtaId, true).result);
        QVERIFY(isDone());
        QCOMPARE(daily.toggle(QUuid::createUuid()).applicationMessage, QStringLiteral("The daily task does not exist"));
    }

    void shouldListTheEntriesOfOneProject()
    {
        LocalBitacoraRepositoryImpl bitacora(storeIn<BitacoraDatabase>(*directory));
        const QUuid project = QUuid::createUuid();
        const BitacoraEntryEntity monday {.bteUserId = owner, .prjId = project, .bteDate = local(16, 8, 0)};
        const BitacoraEntryEntity other {.bteUserId = owner, .prjId = QUuid::createUuid(), .bteDate = local(16, 8, 0)};
        BitacoraEntryEntity tuesday {.bteUserId = owner, .prjId = project, .bteDate = local(17, 8, 0)};
        for (const BitacoraEntryEntity& entry : {monday, other, tuesday})
            QVERIFY(bitacora.create(entry).result);
        tuesday.bteContent = QStringLiteral("17:\n\n• shipped it");
        QVERIFY(bitacora.update(tuesday).result);

        QCOMPARE(listed<BitacoraEntryEntity>(bitacora.list(project)), (QList<BitacoraEntryEntity> {monday, tuesday}));
        QCOMPARE(bitacora.delete_(QUuid::createUuid()).applicationMessage,
            QStringLiteral("The bitacora entry does not exist"));
    }
};

TOLVANE_TEST_MAIN(LocalRepositoriesTest)
#include "LocalRepositoriesTest.moc"
