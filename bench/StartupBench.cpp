// Start-up and the projects workspace with a large store: 100 projects x 10 lists x 100 tasks.
// - cold start: a fresh process from main() to the first painted window, Tolvane against a bare
//   Qt Widgets window started the same way;
// - warm start: the same window built again in a process that has already shown one;
// - opening the projects workspace and switching between two lists, with the longest stall of
//   the GUI thread seen meanwhile.
// Run inside scripts/with-desktop-session (the stores' keys live in the keyring), offscreen.
#include "ContentView.h"
#include "LargeTaskStore.h"
#include "MainWindow.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "screens/projects/ProjectSectionView.h"
#include "screens/projects/ProjectsView.h"
#include "screens/projects/TaskListSidebarRowView.h"
#include "storage/RealmDatabase.h"
#include "storage/RealmTable.h"
#include "support/ui/AppFixture.h"
#include "tasks/database/ProjectRealmModel.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListRealmModel.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TaskRealmModel.h"
#include "tasks/database/TasksDatabase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <benchmark/benchmark.h>
#include <chrono>

namespace {

// Fills the stores in one transaction each; the per-operation path is measured elsewhere.
void seedLargeStore(AppFixture& app)
{
    app.storeLocalUser();
    const QUuid user
        = QUuid::fromString(app.services().loginApplication().getCurrentUser().dataAs<UserEntity>()->usrId);
    const auto factory = [&] {
        return RealmEncryptedConfigurationFactory(
            std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), [&] {
                RealmConfiguration defaults;
                defaults.fileURL = app.directory() + QStringLiteral("/default.realm");
                return defaults;
            }());
    };
    const auto projects
        = RealmDatabase::open(ProjectsDatabase::make(factory()).dataAs<ProjectsDatabase>()->configuration);
    const auto lists
        = RealmDatabase::open(TaskListsDatabase::make(factory()).dataAs<TaskListsDatabase>()->configuration);
    const auto tasks = RealmDatabase::open(TasksDatabase::make(factory()).dataAs<TasksDatabase>()->configuration);
    fillLargeTaskStore(*projects, *lists, *tasks, user);
}

// Longest gap between ticks of a 5 ms timer: how long the GUI thread was busy at a stretch.
class StallProbe {
public:
    StallProbe()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const qint64 now = m_clock.nsecsElapsed();
            m_longest = std::max(m_longest, now - m_last);
            m_last = now;
        });
        m_clock.start();
        m_last = 0;
        m_timer.start(5);
    }
    double longestMilliseconds() const { return double(m_longest) / 1e6; }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    qint64 m_longest = 0;
};

bool waitForLoad(ProjectsView* view)
{
    bool loaded = false;
    const auto connection = QObject::connect(view, &ProjectsView::loaded, [&] { loaded = true; });
    const bool done = QTest::qWaitFor([&] { return loaded; }, 30000);
    QObject::disconnect(connection);
    return done;
}

// Paints the window and answers when its first paint has happened.
template <typename Window> void showAndWaitForPaint(Window& window)
{
    bool painted = false;
    struct PaintSpy : QObject {
        bool* painted;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Paint)
                *painted = true;
            return false;
        }
    } spy;
    spy.painted = &painted;
    window.installEventFilter(&spy);
    window.show();
    // A window never painted would time nothing worth reporting.
    if (!QTest::qWaitFor([&] { return painted; }, 10000))
        qFatal("the window was not painted within 10 s");
    window.removeEventFilter(&spy);
}

// A child process started with --first-paint KIND prints the milliseconds from its main() to
// its first painted window.
double coldStart(const QString& kind, const QString& storeDirectory)
{
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TOLVANE_BENCH_STORE"), storeDirectory);
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--first-paint"), kind});
    child.waitForFinished(60000);
    return child.readAllStandardOutput().trimmed().toDouble();
}

struct Environment {
    AppFixture app;
    Environment() { seedLargeStore(app); }
};

Environment& environment()
{
    static Environment shared;
    return shared;
}

void BM_ColdStartToFirstPaint(benchmark::State& state, const char* kind)
{
    for (auto _ : state) {
        const double milliseconds = coldStart(QString::fromLatin1(kind), environment().app.directory());
        state.SetIterationTime(milliseconds / 1000);
    }
}
BENCHMARK_CAPTURE(BM_ColdStartToFirstPaint, bare_window, "bare")
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ColdStartToFirstPaint, tolvane, "tolvane")
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);

void BM_WarmStartToFirstPaint(benchmark::State& state, bool tolvane)
{
    for (auto _ : state) {
        if (tolvane) {
            MainWindow window(environment().app.services());
            showAndWaitForPaint(window);
        } else {
            QMainWindow window;
            window.setCentralWidget(new QLabel(QStringLiteral("Tolvane")));
            window.resize(1200, 800);
            showAndWaitForPaint(window);
        }
    }
}
BENCHMARK_CAPTURE(BM_WarmStartToFirstPaint, bare_window, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_WarmStartToFirstPaint, tolvane, true)->Unit(benchmark::kMillisecond);

void BM_OpenProjectsWorkspace(benchmark::State& state)
{
    double longestStall = 0;
    for (auto _ : state) {
        MainWindow window(environment().app.services());
        showAndWaitForPaint(window);
        StallProbe probe;
        QElapsedTimer clock;
        clock.start();
        window.contentView()->select(SidebarItemEnum::projects);
        if (!waitForLoad(window.findChild<ProjectsView*>()))
            state.SkipWithError("the workspace never loaded");
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        longestStall = std::max(longestStall, probe.longestMilliseconds());
    }
    state.counters["longest_gui_stall_ms"] = longestStall;
}
BENCHMARK(BM_OpenProjectsWorkspace)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void BM_SwitchBetweenLists(benchmark::State& state)
{
    MainWindow window(environment().app.services());
    showAndWaitForPaint(window);
    window.contentView()->select(SidebarItemEnum::projects);
    auto* view = window.findChild<ProjectsView*>();
    waitForLoad(view);
    window.findChild<ProjectSectionView*>(QStringLiteral("project:Project 000"))
        ->findChild<QToolButton*>(QStringLiteral("projectFold"))
        ->click();
    waitForLoad(view);
    double longestStall = 0;
    int round = 0;
    for (auto _ : state) {
        auto* row = window.findChild<TaskListSidebarRowView*>(QStringLiteral("list:List %1").arg(round++ % 2));
        StallProbe probe;
        QElapsedTimer clock;
        clock.start();
        Q_EMIT row->selected(row->taskList());
        if (!waitForLoad(view))
            state.SkipWithError("the list never showed");
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        longestStall = std::max(longestStall, probe.longestMilliseconds());
    }
    state.counters["longest_gui_stall_ms"] = longestStall;
}
BENCHMARK(BM_SwitchBetweenLists)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

int firstPaint(int argc, char* argv[], const QByteArray& kind)
{
    QElapsedTimer clock;
    clock.start();
    QApplication application(argc, argv);
    if (kind == "bare") {
        QMainWindow window;
        window.setCentralWidget(new QLabel(QStringLiteral("Tolvane")));
        window.resize(1200, 800);
        showAndWaitForPaint(window);
    } else {
        AppFixture app(qEnvironmentVariable("TOLVANE_BENCH_STORE"));
        MainWindow window(app.services());
        showAndWaitForPaint(window);
    }
    printf("%f\n", double(clock.nsecsElapsed()) / 1e6);
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "--first-paint") == 0)
        return firstPaint(argc, argv, argv[2]);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
