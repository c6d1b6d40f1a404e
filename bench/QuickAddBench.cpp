// Reading typed lines into tasks, against a user with 100 projects of 10 lists each (the names
// that #Project and /List are matched against). Reports the mean and the 95th percentile of one
// line's parse; the goal is well under a millisecond, so that the chips follow every keystroke.
#include "quickadd/QuickAddParser.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

namespace {

QuickAddParser::Options userWithManyProjects()
{
    QuickAddParser::Options options;
    options.now = QDateTime(QDate(2026, 11, 23), QTime(10, 0));
    for (int p = 0; p < 100; ++p) {
        QuickAddParser::ProjectNames project {QStringLiteral("Project número %1").arg(p), {}};
        for (int l = 0; l < 10; ++l)
            project.lists.append(QStringLiteral("List %1 of %2").arg(l).arg(p));
        options.projects.append(project);
    }
    return options;
}

const QStringList lines {
    QStringLiteral("Pay rent tomorrow !1"),
    QStringLiteral("Call Ana tomorrow at 3pm #Project número 42 /List 3 of 42 remind me 10m before"),
    QStringLiteral("Standup every weekday at 9:30 #project numero 7"),
    QStringLiteral("Drinks every last Friday of the month at 19:00 !3"),
    QStringLiteral("Llamar a Ana pasado mañana a las 9:30 recordar 1h antes"),
    QStringLiteral("Alquiler cada mes el día 1 #Project número 99 /List 9 of 99"),
    QStringLiteral("Gift 15/12 for mum and dad, wrapped in blue paper with a bow on top"),
    QStringLiteral("May the force be with you on the train back home from the office"),
    QStringLiteral("Fix #Garden fence /nowhere before the storm next Monday"),
    QStringLiteral("Review every 2 weeks on friday"),
};

void BM_ParseLine(benchmark::State& state)
{
    const QuickAddParser::Options options = userWithManyProjects();
    std::vector<double> micros;
    qsizetype index = 0;
    for (auto _ : state) {
        const QString& line = lines.at(index++ % lines.size());
        const auto start = std::chrono::steady_clock::now();
        QuickAddParser::Fields fields = QuickAddParser::parse(line, options);
        benchmark::DoNotOptimize(fields);
        micros.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(micros.begin(), micros.end());
    state.counters["p95_us"] = micros.at(std::min(micros.size() - 1, micros.size() * 95 / 100));
    state.counters["max_us"] = micros.back();
}

} // namespace

BENCHMARK(BM_ParseLine)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
