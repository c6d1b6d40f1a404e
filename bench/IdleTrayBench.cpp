// Tolvane started at login, idle in the tray: the real program with --background, as the
// autostart entry runs it, left alone for a measured interval.
// - rss_mb: resident memory at the end (target <= 80);
// - wakeups_per_min: context switches of all its threads per minute over the interval, voluntary
//   and not, from /proc/<pid>/task/*/status (target <= 2 with no alarm due);
// - cpu_percent: processor time used over the interval.
// The interval is TOLVANE_IDLE_SECONDS (default 300, five minutes), after a settling time of
// TOLVANE_SETTLE_SECONDS (default 45) for start-up work to finish.
// Run inside scripts/with-desktop-session (keyring, notification bus), offscreen:
//   QT_QPA_PLATFORM=offscreen scripts/with-desktop-session build/bench/bench_idle_tray
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QThread>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace {

int secondsFrom(const char* variable, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(variable, &ok);
    return ok && value > 0 ? value : fallback;
}

qint64 statusField(const QString& path, const QByteArray& name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.mid(name.size() + 1).trimmed().split(' ').constFirst().toLongLong();
    }
    return 0;
}

// Every thread's switches by thread: a timer on a worker thread wakes the process as much as one
// on the main thread.
QHash<QString, qint64> contextSwitches(qint64 pid)
{
    QHash<QString, qint64> threads;
    const QString tasks = QStringLiteral("/proc/%1/task").arg(pid);
    for (const QString& thread : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString status = tasks + QLatin1Char('/') + thread + QStringLiteral("/status");
        threads.insert(
            thread, statusField(status, "voluntary_ctxt_switches") + statusField(status, "nonvoluntary_ctxt_switches"));
    }
    return threads;
}

struct Wakeups {
    qint64 switches = 0;
    int threadsEnded = 0;
};

// The switches between two readings. A thread that ended in between is counted once, for the
// wake-up that ended it (an idle pool thread expiring); one that began counts all of its own.
Wakeups between(const QHash<QString, qint64>& before, const QHash<QString, qint64>& after)
{
    Wakeups wakeups;
    for (auto thread = after.cbegin(); thread != after.cend(); ++thread)
        wakeups.switches += thread.value() - before.value(thread.key(), 0);
    for (auto thread = before.cbegin(); thread != before.cend(); ++thread) {
        if (!after.contains(thread.key())) {
            ++wakeups.switches;
            ++wakeups.threadsEnded;
        }
    }
    return wakeups;
}

// utime + stime in clock ticks.
qint64 cpuTicks(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray stat = file.readAll();
    // Fields after the command name, which may hold spaces, start after its closing parenthesis.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 12 ? fields.at(11).toLongLong() + fields.at(12).toLongLong() : 0;
}

void idleInTheTray(benchmark::State& state)
{
    // Long enough for the start-up's pool threads to expire (30 s after their last work).
    const int settle = secondsFrom("TOLVANE_SETTLE_SECONDS", 45);
    const int interval = secondsFrom("TOLVANE_IDLE_SECONDS", 300);
    for (auto _ : state) {
        QProcess tolvane;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
            environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        tolvane.setProcessEnvironment(environment);
        tolvane.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        tolvane.start(QStringLiteral(TOLVANE_PROGRAM), {QStringLiteral("--background")});
        if (!tolvane.waitForStarted(30000)) {
            state.SkipWithError("Tolvane did not start");
            return;
        }
        const qint64 pid = tolvane.processId();
        QThread::sleep(settle);
        if (tolvane.state() != QProcess::Running) {
            state.SkipWithError("Tolvane quit while in the background");
            return;
        }
        const QHash<QString, qint64> switchesBefore = contextSwitches(pid);
        const qint64 ticksBefore = cpuTicks(pid);
        QThread::sleep(interval);
        const Wakeups wakeups = between(switchesBefore, contextSwitches(pid));
        const qint64 ticks = cpuTicks(pid) - ticksBefore;
        const qint64 rssKb = statusField(QStringLiteral("/proc/%1/status").arg(pid), "VmRSS");
        state.SetIterationTime(interval);
        state.counters["rss_mb"] = double(rssKb) / 1024.0;
        state.counters["wakeups_per_min"] = double(wakeups.switches) * 60.0 / interval;
        state.counters["threads_ended"] = wakeups.threadsEnded;
        state.counters["cpu_percent"] = 100.0 * double(ticks) / double(sysconf(_SC_CLK_TCK)) / interval;
        state.counters["interval_s"] = interval;
        tolvane.terminate();
        if (!tolvane.waitForFinished(30000))
            tolvane.kill();
        tolvane.waitForFinished(30000);
    }
}

BENCHMARK(idleInTheTray)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
