// Opening a tasks store of the previous schema version with 100 projects x 10 lists x 100 tasks
// (every other task with a due date, some at a time of day): the time the migration to the
// current version takes, the before-migration backup left out (it is measured with the backups).
#include "storage/RealmDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QUuid>

#include <benchmark/benchmark.h>

namespace {

const QByteArray key(64, '\x5a');

// The table as version 1 made it.
const RealmObjectType version1 {QStringLiteral("TaskRealmModel"),
    QStringLiteral("tasId TEXT PRIMARY KEY NOT NULL, prjId TEXT NOT NULL, talId TEXT NOT NULL, "
                   "tasTitle TEXT NOT NULL, tasIsDone INTEGER NOT NULL, tasDueDate INTEGER, tasEisenhowerTag TEXT")};

void writeVersion1Store(const QString& path)
{
    RealmConfiguration old;
    old.fileURL = path;
    old.encryptionKey = key;
    old.schemaVersion = 1;
    old.objectTypes = {version1};
    const auto database = RealmDatabase::open(old);
    const qint64 day = QDateTime(QDate(2026, 11, 1), QTime(0, 0), Qt::UTC).toMSecsSinceEpoch();
    database->write([&] {
        for (int project = 0; project < 100; ++project) {
            const QString projectId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
            for (int list = 0; list < 10; ++list) {
                const QString listId = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
                for (int task = 0; task < 100; ++task) {
                    QVariant due;
                    if (task % 2 == 0)
                        due = day + qint64(task) * 86'400'000 + (task % 4 == 0 ? 9 * 3'600'000 : 0);
                    database->execute(QStringLiteral("INSERT INTO TaskRealmModel VALUES (?, ?, ?, ?, ?, ?, ?)"),
                        {QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(), projectId, listId,
                            QStringLiteral("Task %1 of list %2").arg(task).arg(list), task % 3 == 0, due,
                            task % 5 == 0 ? QVariant() : QVariant(QStringLiteral("doIt"))});
                }
            }
        }
    });
}

void BM_MigrateHundredThousandTasks(benchmark::State& state)
{
    QTemporaryDir directory;
    const QString original = directory.filePath(QStringLiteral("original.realm"));
    writeVersion1Store(original);
    for (auto _ : state) {
        state.PauseTiming();
        const QString path = directory.filePath(QStringLiteral("Tasks.Tasks.realm"));
        QFile::remove(path);
        QFile::copy(original, path);
        RealmConfiguration current;
        current.fileURL = path;
        current.encryptionKey = key;
        current.schemaVersion = TasksDatabase::schemaVersion;
        current.migrationBlock = TasksDatabase::migration();
        current.objectTypes = TasksDatabaseSchema::objectTypes();
        state.ResumeTiming();

        const auto migrated = RealmDatabase::open(current);
        benchmark::DoNotOptimize(migrated);
    }
}

} // namespace

BENCHMARK(BM_MigrateHundredThousandTasks)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_MAIN();
