// Undo of the delete of a list with 100 tasks, over the real encrypted local stores: from the
// undo asked for to the list and every task back in the store under their identifiers (checked,
// written, and reported back on the GUI thread). Needs the desktop session's keyring:
// scripts/with-desktop-session build/bench/bench_undo
#include "support/ui/AppFixture.h"
#include "undo/UndoHistory.h"

#include <QApplication>
#include <QEventLoop>
#include <QTranslator>

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

// Turns the event loop until done() holds, for at most a minute.
template <typename Done> bool waitUntil(Done&& done)
{
    const auto deadline = Clock::now() + std::chrono::minutes(1);
    while (!done()) {
        if (Clock::now() > deadline)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

void BM_UndoDeleteOfAListWithItsTasks(benchmark::State& state)
{
    const int taskCount = int(state.range(0));
    AppFixture app;
    app.storeLocalUser();
    UndoHistory& history = app.services().undoHistory();
    const auto apps = *app.services().tasksApplications(false).dataAs<TasksApplicationFactory::Applications>();
    const QUuid userId
        = QUuid::fromString(app.services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
    const ProjectEntity project {.prjUserId = userId, .prjName = QStringLiteral("Bench")};
    if (!apps.projects.create(project).result) {
        state.SkipWithError("the project could not be created");
        return;
    }

    int round = 0;
    for (auto _ : state) {
        const TaskListEntity list {.prjId = project.prjId, .talName = QStringLiteral("List %1").arg(++round)};
        bool stored = apps.taskLists.create(list).result;
        for (int i = 0; stored && i < taskCount; ++i) {
            TaskEntity task {.prjId = project.prjId, .talId = list.talId, .tasTitle = QStringLiteral("Task %1").arg(i)};
            task.tasIsDone = i % 3 == 0;
            stored = apps.tasks.create(task).result;
        }
        const int recorded = history.count();
        stored = stored && apps.taskLists.delete_(list.talId).result;
        if (!stored || !waitUntil([&] { return history.count() > recorded && !history.isBusy(); })) {
            state.SkipWithError("the list could not be made and deleted");
            return;
        }

        QString outcome = QStringLiteral("none");
        const QMetaObject::Connection heard = QObject::connect(
            &history, &UndoHistory::finished, [&outcome](bool, const QString& message) { outcome = message; });
        const auto start = Clock::now();
        history.undo();
        const bool finished = waitUntil([&] { return outcome != u"none"; });
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        QObject::disconnect(heard);

        const TaskResultEntity listed = apps.tasks.list(list.talId);
        const auto* tasks = listed.dataAs<QList<TaskEntity>>();
        if (!finished || !outcome.isEmpty() || !tasks || tasks->size() != taskCount) {
            state.SkipWithError("the undo did not bring the list back");
            return;
        }
    }
    state.counters["tasks"] = taskCount;
}
BENCHMARK(BM_UndoDeleteOfAListWithItsTasks)->Arg(100)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QTranslator english;
    if (english.load(QStringLiteral(":/i18n/tolvane_en")))
        QCoreApplication::installTranslator(&english);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
