// "Today" and "Upcoming" over the heavy account (100 projects x 10 lists x 100 tasks, three in
// five with a due date spread over the coming year, a few days late at most): the read the
// workspace makes each time either view opens or a task changes, through the local stores as
// the program opens them, per operation. Against the same answer read list by list, which is
// what a store without the due-date query would do.
#include "LargeTaskStore.h"
#include "storage/RealmValue.h"
#include "tasks/applications/TaskAgendaApplication.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskListRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

namespace {

template <typename Database> Database storeAt(const QString& path, char key)
{
    RealmConfiguration configuration;
    configuration.fileURL = path;
    configuration.encryptionKey = QByteArray(64, key);
    configuration.schemaVersion = Database::schemaVersion;
    configuration.objectTypes = Database::Store::objectTypes();
    return Database {configuration};
}

// The local tasks read only list by list, as a store without the query on the due date.
class ListByList final : public TaskRepository {
public:
    explicit ListByList(std::shared_ptr<TaskRepository> tasks)
        : m_tasks(std::move(tasks))
    {
    }
    TaskResultEntity create(const TaskEntity& task) override { return m_tasks->create(task); }
    TaskResultEntity update(const TaskEntity& task) override { return m_tasks->update(task); }
    TaskResultEntity setDone(const QUuid& id, bool done) override { return m_tasks->setDone(id, done); }
    TaskResultEntity setTag(const QUuid& id, std::optional<EisenhowerTagEnum> tag) override
    {
        return m_tasks->setTag(id, tag);
    }
    TaskResultEntity delete_(const QUuid& id) override { return m_tasks->delete_(id); }
    TaskResultEntity deleteCompleted(const QUuid& id) override { return m_tasks->deleteCompleted(id); }
    TaskResultEntity find(const QUuid& id) override { return m_tasks->find(id); }
    TaskResultEntity list(const QUuid& id) override { return m_tasks->list(id); }
    TaskResultEntity listOfLists(const QList<QUuid>& ids) override { return m_tasks->listOfLists(ids); }

private:
    std::shared_ptr<TaskRepository> m_tasks;
};

struct Account {
    QTemporaryDir directory;
    QUuid user = QUuid::createUuid();
    std::shared_ptr<LocalProjectRepositoryImpl> projects;
    std::shared_ptr<LocalTaskListRepositoryImpl> lists;
    std::shared_ptr<LocalTaskRepositoryImpl> tasks;
};

Account& account()
{
    static Account* made = [] {
        auto* account = new Account;
        const auto projects = storeAt<ProjectsDatabase>(account->directory.filePath(QStringLiteral("p.realm")), 'p');
        const auto lists = storeAt<TaskListsDatabase>(account->directory.filePath(QStringLiteral("l.realm")), 'l');
        const auto tasks = storeAt<TasksDatabase>(account->directory.filePath(QStringLiteral("t.realm")), 't');
        {
            const auto projectsFile = RealmDatabase::open(projects.configuration);
            const auto listsFile = RealmDatabase::open(lists.configuration);
            const auto tasksFile = RealmDatabase::open(tasks.configuration);
            fillLargeTaskStore(*projectsFile, *listsFile, *tasksFile, account->user);
            // Two in five without a due date; the others a day from three days ago to a year on.
            tasksFile->write([&] {
                tasksFile->execute(QStringLiteral("UPDATE TaskRealmModel SET tasDueDate = CASE WHEN rowid % 5 < 2 "
                                                  "THEN NULL ELSE ? + ((rowid * 7919) % 368 - 3) * 86400000 END"),
                    {RealmValue::fromDate(TaskEntity::dueOnDay(QDate::currentDate()))});
            });
        }
        account->projects = std::make_shared<LocalProjectRepositoryImpl>(projects);
        account->lists = std::make_shared<LocalTaskListRepositoryImpl>(lists);
        account->tasks = std::make_shared<LocalTaskRepositoryImpl>(tasks);
        return account;
    }();
    return *made;
}

void measure(benchmark::State& state, const TaskAgendaApplication& agenda)
{
    const QDate today = QDate::currentDate();
    std::vector<double> milliseconds;
    qsizetype found = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const TaskResultEntity due = agenda.dueUpTo(account().user, today.addDays(7));
        milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (!due.result) {
            state.SkipWithError("the due tasks could not be read");
            return;
        }
        found = due.dataAs<QList<TaskEntity>>()->size();
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    state.counters["due_tasks"] = double(found);
    state.counters["p95_ms"] = milliseconds.at(std::min(milliseconds.size() - 1, milliseconds.size() * 95 / 100));
    state.counters["max_ms"] = milliseconds.back();
}

void BM_DueThisWeek(benchmark::State& state)
{
    Account& heavy = account();
    measure(state, TaskAgendaApplication(heavy.projects, heavy.lists, heavy.tasks));
}

void BM_DueThisWeekListByList(benchmark::State& state)
{
    Account& heavy = account();
    measure(state, TaskAgendaApplication(heavy.projects, heavy.lists, std::make_shared<ListByList>(heavy.tasks)));
}

} // namespace

BENCHMARK(BM_DueThisWeek)->Iterations(40)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DueThisWeekListByList)->Iterations(10)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
