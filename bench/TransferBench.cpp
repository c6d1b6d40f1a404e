// Backups and transfers of a large account: 100 projects x 10 lists x 100 tasks.
// - a checked backup of its stores (copy, integrity check, count, record);
// - an export to JSON and the import of that file into an empty account.
#include "LargeTaskStore.h"
#include "backup/StoreBackups.h"
#include "platform/SystemClock.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/database/ProjectRealmModel.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListRealmModel.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalDailyTaskRepositoryImpl.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskListRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"
#include "transfer/TasksImporter.h"
#include "transfer/TasksJsonFormat.h"
#include "transfer/TasksSnapshotReader.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const QUuid user = QUuid::fromString(QStringLiteral("5b0e8f0e-3c1f-4f61-9b43-7b0f3e1d2c10"));

template <typename Database> Database storeIn(const QString& folder)
{
    RealmConfiguration configuration;
    configuration.fileURL = folder + QLatin1Char('/') + Database::Store::name + QStringLiteral(".realm");
    configuration.encryptionKey = QByteArray(64, '\x5c');
    configuration.schemaVersion = Database::schemaVersion;
    configuration.objectTypes = Database::Store::objectTypes();
    return Database {configuration};
}

TasksRepositories accountIn(const QString& folder)
{
    return {std::make_shared<LocalProjectRepositoryImpl>(storeIn<ProjectsDatabase>(folder)),
        std::make_shared<LocalTaskListRepositoryImpl>(storeIn<TaskListsDatabase>(folder)),
        std::make_shared<LocalTaskRepositoryImpl>(storeIn<TasksDatabase>(folder)),
        std::make_shared<LocalDailyTaskRepositoryImpl>(storeIn<DailyTasksDatabase>(folder)),
        std::make_shared<LocalBitacoraRepositoryImpl>(storeIn<BitacoraDatabase>(folder))};
}

// Fills the stores in one transaction each, as the start-up benchmark does.
void seedLargeStore(const QString& folder)
{
    const auto projects = RealmDatabase::open(storeIn<ProjectsDatabase>(folder).configuration);
    const auto lists = RealmDatabase::open(storeIn<TaskListsDatabase>(folder).configuration);
    const auto tasks = RealmDatabase::open(storeIn<TasksDatabase>(folder).configuration);
    fillLargeTaskStore(*projects, *lists, *tasks, user);
    // The two other stores exist, empty, as in a real account.
    RealmDatabase::open(storeIn<DailyTasksDatabase>(folder).configuration);
    RealmDatabase::open(storeIn<BitacoraDatabase>(folder).configuration);
}

QList<RealmConfiguration> storesIn(const QString& folder)
{
    return {storeIn<ProjectsDatabase>(folder).configuration, storeIn<TaskListsDatabase>(folder).configuration,
        storeIn<TasksDatabase>(folder).configuration, storeIn<DailyTasksDatabase>(folder).configuration,
        storeIn<BitacoraDatabase>(folder).configuration};
}

void BM_BackUpLargeStore(benchmark::State& state)
{
    QTemporaryDir folder;
    seedLargeStore(folder.path());
    StoreBackups backups(folder.path(), storesIn(folder.path()), std::make_shared<SystemClock>());
    for (auto _ : state) {
        const ResultEntity made = backups.backUp(StoreBackups::dailyReason);
        if (!made.result || made.dataAs<StoreBackupEntity>()->totalCount() != 100 + 1000 + 100000)
            state.SkipWithError("the backup failed or lost records");
    }
}
BENCHMARK(BM_BackUpLargeStore)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ExportJsonAndImportIntoEmptyAccount(benchmark::State& state)
{
    QTemporaryDir source;
    seedLargeStore(source.path());
    const TasksRepositories from = accountIn(source.path());
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir target;
        const TasksRepositories to = accountIn(target.path());
        state.ResumeTiming();
        TransferControl control;
        const ResultEntity read
            = TasksSnapshotReader(from).read({user, std::nullopt, QDate(2026, 1, 1), QDate(2026, 12, 31)}, control);
        const QByteArray json = TasksJsonFormat::write(*read.dataAs<TasksSnapshot>());
        const std::optional<TasksSnapshot> file = TasksJsonFormat::read(json);
        const ResultEntity imported = TasksImporter(to, user).import(*file, control);
        if (!imported.result || imported.dataAs<TasksImporter::Outcome>()->created != 100 + 1000 + 100000)
            state.SkipWithError("the import failed or lost records");
        state.counters["json_MB"] = double(json.size()) / 1e6;
    }
}
BENCHMARK(BM_ExportJsonAndImportIntoEmptyAccount)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
