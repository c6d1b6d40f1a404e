// The schedule's layout of a very busy calendar, and a day switch with 200 meets on the day:
// the meets read from the session's calendar store, laid out and painted, with the longest time
// the GUI thread went without turning its event loop. Then the projects pane over the large store
// (100 projects x 10 lists x 100 tasks): its first load on a weekend (projects folded) with the
// longest GUI stall meanwhile, the unfolding of one project, and a reload with nothing changed.
// Needs the desktop session's EDS: scripts/with-desktop-session build/bench/bench_schedule
#include "LargeTaskStore.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "platform/calendar_store/CalendarStore.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/DailyScheduleLayout.h"
#include "screens/schedule/ScheduleProjectsPaneView.h"
#include "support/TestEnvironment.h"
#include "support/ui/AppFixture.h"
#include "tasks/TasksApplicationFactory.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTimer>
#include <QToolButton>
#include <QUuid>

#include <benchmark/benchmark.h>

namespace {

QList<MeetEntity> randomMeets(int count)
{
    QRandomGenerator random(42);
    const QDateTime start(QDate(2026, 3, 10), QTime(0, 0));
    QList<MeetEntity> meets;
    for (int i = 0; i < count; ++i) {
        MeetEntity meet;
        meet.metId = QUuid::createUuid();
        meet.metName = QString::number(i);
        meet.metDate = start.addSecs(qint64(random.bounded(0, 24 * 60 * 60 * 30 / 300)) * 300);
        meet.metDuration = random.bounded(0, 13) * 300.0;
        meets.append(meet);
    }
    return meets;
}

void BM_Layout10000Meets(benchmark::State& state)
{
    const QList<MeetEntity> meets = randomMeets(10'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(DailyScheduleLayout::layout(meets));
}
BENCHMARK(BM_Layout10000Meets)->Unit(benchmark::kMillisecond);

QByteArray busyDay(const QDate& day, int count)
{
    QByteArray ics = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane bench//EN\r\n";
    for (int i = 0; i < count; ++i) {
        const QDateTime start(day, QTime(6 + (i % 14), (i * 5) % 60));
        ics += "BEGIN:VEVENT\r\nUID:" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
            + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + start.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1()
            + "\r\nDTEND:" + start.addSecs(1800 + 300 * (i % 7)).toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1()
            + "\r\nSUMMARY:Meet " + QByteArray::number(i) + "\r\nEND:VEVENT\r\n";
    }
    return ics + "END:VCALENDAR\r\n";
}

void BM_SwitchToADayWith200Meets(benchmark::State& state)
{
    AppFixture app;
    app.storeLocalUser();
    const QString calendar = QStringLiteral("tolvane-bench-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
    CalendarStore::shared().addLocalCalendar(calendar, QStringLiteral("Bench"), QStringLiteral("#3E8BFF"));
    const QDate busy = QDate::currentDate().addDays(1);
    CalendarStore::shared().importCalendarData(calendar, busyDay(busy, 200));
    DailyEventsView view(app.services(), {});
    view.resize(1400, 900);
    QSignalSpy loaded(&view, &DailyEventsView::loaded);
    view.show();
    loaded.wait(15000);

    // The longest gap between two ticks of a 5 ms timer is the longest the GUI thread stalled.
    qint64 longestStall = 0;
    QElapsedTimer sinceTick;
    QTimer ticker;
    ticker.setInterval(5);
    QObject::connect(&ticker, &QTimer::timeout, [&] { longestStall = std::max(longestStall, sinceTick.restart()); });
    qsizetype meetsShown = 0;
    // A day already read is shown at once, before a wait could begin: the signal is looked for
    // first.
    const auto show = [&](const QDate& day) {
        loaded.clear();
        view.setSelectedDate(day);
        if (loaded.isEmpty())
            loaded.wait(15000);
    };
    for (auto _ : state) {
        show(busy.addDays(1));
        sinceTick.start();
        ticker.start();
        QElapsedTimer switching;
        switching.start();
        show(busy);
        view.repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
        ticker.stop();
        meetsShown = view.events().size();
    }
    state.counters["meets"] = double(meetsShown);
    state.counters["longestStallMs"] = double(longestStall);
    CalendarStore::shared().disableCalendar(calendar);
}
BENCHMARK(BM_SwitchToADayWith200Meets)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

// Fills the user's stores with the large account: 100 projects x 10 lists x 100 tasks, written
// directly in one transaction per store (one task at a time would take minutes).
void seedLargeStore(AppFixture& app)
{
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

double elapsedMs(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

void BM_ProjectsPaneOfABigStore(benchmark::State& state)
{
    AppFixture app;
    app.storeLocalUser();
    seedLargeStore(app);
    QDate saturday = QDate::currentDate();
    while (saturday.dayOfWeek() != Qt::Saturday)
        saturday = saturday.addDays(1);
    double firstLoad = 0, unfold = 0, unchangedReload = 0;
    qsizetype rows = 0;
    // The longest gap between two ticks of a 5 ms timer while the pane loads: the longest the GUI
    // thread stalled.
    qint64 longestStall = 0;
    QElapsedTimer sinceTick;
    QTimer ticker;
    ticker.setInterval(5);
    QObject::connect(&ticker, &QTimer::timeout, [&] { longestStall = std::max(longestStall, sinceTick.restart()); });
    for (auto _ : state) {
        ScheduleProjectsPaneView pane(app.services(), nullptr);
        pane.setSelectedDate(saturday);
        pane.resize(420, 900);
        QSignalSpy loaded(&pane, &ScheduleProjectsPaneView::loaded);
        QElapsedTimer timer;
        timer.start();
        sinceTick.start();
        ticker.start();
        pane.show();
        loaded.wait(120000);
        QCoreApplication::processEvents();
        firstLoad += elapsedMs(timer);
        ticker.stop();

        timer.restart();
        pane.projectSections().constFirst()->findChild<QToolButton*>()->click();
        QCoreApplication::processEvents();
        unfold += elapsedMs(timer);

        timer.restart();
        pane.reload();
        loaded.wait(120000);
        QCoreApplication::processEvents();
        unchangedReload += elapsedMs(timer);
        rows = 0;
        for (const ScheduleProjectSectionView* section : pane.projectSections())
            rows += section->taskRows().size();
    }
    const double runs = double(state.iterations());
    state.counters["first_load_ms"] = firstLoad / runs;
    state.counters["unfold_one_ms"] = unfold / runs;
    state.counters["unchanged_reload_ms"] = unchangedReload / runs;
    state.counters["rows_built"] = double(rows);
    state.counters["first_load_longest_stall_ms"] = double(longestStall);
}
BENCHMARK(BM_ProjectsPaneOfABigStore)->Iterations(3)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    TestEnvironment::pinBeforeApplication();
    QApplication application(argc, argv);
    TestEnvironment::pinAfterApplication();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
