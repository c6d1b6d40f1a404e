// What opening the encrypted store per repository operation costs, against keeping one
// connection open: a keyed open plus a one-row read, and a committed one-row write.
#include "storage/RealmDatabase.h"
#include "storage/RealmDatabaseOpener.h"
#include "tasks/database/ProjectsDatabase.h"

#include <QTemporaryDir>
#include <QUuid>

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

const QString projectId = QStringLiteral("6F9619FF-8B86-D011-B42D-00C04FC964FF");

struct Store {
    QTemporaryDir directory;
    RealmConfiguration configuration;

    Store()
    {
        configuration.fileURL = directory.filePath(QStringLiteral("Tasks.Projects.realm"));
        configuration.encryptionKey = QByteArray(64, '\x2a');
        configuration.schemaVersion = 1;
        configuration.objectTypes = ProjectsDatabaseSchema::objectTypes();
        write(*RealmDatabase::open(configuration), 0);
    }

    static void write(RealmDatabase& database, int64_t round)
    {
        database.write([&] {
            database.execute(QStringLiteral("INSERT OR REPLACE INTO ProjectRealmModel VALUES (?, ?, ?, ?, ?)"),
                {projectId, projectId, QStringLiteral("Home %1").arg(round), QString(), false});
        });
    }

    static QString read(RealmDatabase& database)
    {
        return database.query(QStringLiteral("SELECT prjName FROM ProjectRealmModel WHERE prjId = ?"), {projectId})
            .constFirst()
            .constFirst()
            .toString();
    }
};

std::shared_ptr<RealmDatabase> openedBy(const RealmConfiguration& configuration)
{
    return *RealmDatabaseOpener::open(configuration).dataAs<std::shared_ptr<RealmDatabase>>();
}

void BM_OpenAndReadPerOperation(benchmark::State& state)
{
    Store store;
    for (auto _ : state)
        benchmark::DoNotOptimize(Store::read(*openedBy(store.configuration)));
}
BENCHMARK(BM_OpenAndReadPerOperation)->Unit(benchmark::kMicrosecond);

// What a repository read costs: the same read inside a read transaction that also makes sure no
// page failed its check on the way.
void BM_OpenAndCheckedReadPerOperation(benchmark::State& state)
{
    Store store;
    for (auto _ : state) {
        const auto database = openedBy(store.configuration);
        benchmark::DoNotOptimize(database->read([&] { return Store::read(*database); }));
    }
}
BENCHMARK(BM_OpenAndCheckedReadPerOperation)->Unit(benchmark::kMicrosecond);

void BM_ReadOnKeptConnection(benchmark::State& state)
{
    Store store;
    const auto database = openedBy(store.configuration);
    for (auto _ : state)
        benchmark::DoNotOptimize(Store::read(*database));
}
BENCHMARK(BM_ReadOnKeptConnection)->Unit(benchmark::kMicrosecond);

void BM_WritePerOperation(benchmark::State& state)
{
    Store store;
    int64_t round = 0;
    for (auto _ : state)
        Store::write(*openedBy(store.configuration), ++round);
}
BENCHMARK(BM_WritePerOperation)->Unit(benchmark::kMicrosecond);

void BM_WriteOnKeptConnection(benchmark::State& state)
{
    Store store;
    const auto database = openedBy(store.configuration);
    int64_t round = 0;
    for (auto _ : state)
        Store::write(*database, ++round);
}
BENCHMARK(BM_WriteOnKeptConnection)->Unit(benchmark::kMicrosecond);

// Commit latency on a virtual disk varies several-fold from one second to the next, so the two
// kinds of write are taken in turns and compared within the same run.
void BM_WritePerOperationAgainstKeptConnection(benchmark::State& state)
{
    Store store;
    const auto kept = openedBy(store.configuration);
    int64_t round = 0;
    std::chrono::nanoseconds perOperation {0};
    std::chrono::nanoseconds onKept {0};
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        Store::write(*openedBy(store.configuration), ++round);
        const auto middle = std::chrono::steady_clock::now();
        Store::write(*kept, ++round);
        const auto end = std::chrono::steady_clock::now();
        perOperation += middle - start;
        onKept += end - middle;
    }
    const double iterations = double(state.iterations());
    state.counters["per_op_us"] = std::chrono::duration<double, std::micro>(perOperation).count() / iterations;
    state.counters["kept_us"] = std::chrono::duration<double, std::micro>(onKept).count() / iterations;
    state.counters["ratio"] = double(perOperation.count()) / double(onKept.count());
}
BENCHMARK(BM_WritePerOperationAgainstKeptConnection)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
