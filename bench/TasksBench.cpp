// 10,000 tasks in one list through the local repository (a fresh store handle per operation):
// each created, the list read, each marked done; against the same work on one kept connection.
// The two are taken in turns so that the disk's changing commit latency falls on both alike.
#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "storage/RealmValue.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

double microseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::micro>(duration).count();
}

TasksDatabase storeAt(const QString& path)
{
    RealmConfiguration configuration;
    configuration.fileURL = path;
    configuration.encryptionKey = QByteArray(64, '\x33');
    configuration.schemaVersion = 1;
    configuration.objectTypes = TasksDatabaseSchema::objectTypes();
    return TasksDatabase {configuration};
}

template <typename Work> Clock::duration timed(Work&& work)
{
    const auto start = Clock::now();
    work();
    return Clock::now() - start;
}

void BM_TenThousandTasksInOneList(benchmark::State& state)
{
    const int count = int(state.range(0));
    for (auto _ : state) {
        QTemporaryDir directory;
        LocalTaskRepositoryImpl repository(storeAt(directory.filePath(QStringLiteral("per-operation.realm"))));
        const auto kept = RealmDatabase::open(storeAt(directory.filePath(QStringLiteral("kept.realm"))).configuration);
        RealmTable<TaskRealmModel> keptTasks(*kept);
        const QUuid list = QUuid::createUuid();
        QList<TaskEntity> tasks;
        for (int i = 0; i < count; ++i)
            tasks.append({.prjId = list, .talId = list, .tasTitle = QStringLiteral("Task %1").arg(i)});

        Clock::duration createPerOperation {}, createKept {}, donePerOperation {}, doneKept {};
        for (const TaskEntity& task : tasks) {
            createPerOperation += timed([&] {
                if (!repository.create(task).result)
                    state.SkipWithError("create failed");
            });
            createKept += timed([&] { kept->write([&] { keptTasks.add(TaskRealmModel::fromEntity(task)); }); });
        }

        qsizetype listedCount = 0;
        const Clock::duration listPerOperation
            = timed([&] { listedCount = repository.list(list).dataAs<QList<TaskEntity>>()->size(); });
        const Clock::duration listKept = timed([&] {
            const auto records = keptTasks.objects(QStringLiteral("talId = ?"), {RealmValue::fromUuid(list)});
            QList<TaskEntity> entities;
            for (const TaskRealmModel& record : records)
                entities.append(record.toEntity());
            benchmark::DoNotOptimize(entities);
        });
        if (listedCount != count)
            state.SkipWithError("the list lost tasks");

        for (const TaskEntity& task : tasks) {
            donePerOperation += timed([&] { repository.markDone(task.tasId); });
            doneKept += timed([&] {
                kept->write([&] {
                    auto record = *keptTasks.object(RealmValue::fromUuid(task.tasId));
                    record.tasIsDone = true;
                    keptTasks.update(record);
                });
            });
        }

        state.counters["create_per_op_us"] = microseconds(createPerOperation) / count;
        state.counters["create_kept_us"] = microseconds(createKept) / count;
        state.counters["create_ratio"] = double(createPerOperation.count()) / double(createKept.count());
        state.counters["list_ms"] = microseconds(listPerOperation) / 1000;
        state.counters["list_kept_ms"] = microseconds(listKept) / 1000;
        state.counters["list_ratio"] = double(listPerOperation.count()) / double(listKept.count());
        state.counters["done_per_op_us"] = microseconds(donePerOperation) / count;
        state.counters["done_kept_us"] = microseconds(doneKept) / count;
        state.counters["done_ratio"] = double(donePerOperation.count()) / double(doneKept.count());
    }
}
BENCHMARK(BM_TenThousandTasksInOneList)->Arg(10000)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace

BENCHMARK_MAIN();
