// The schedule over a full desktop calendar: 2,000 events (a quarter of them weekly series) in
// three calendars across the six months the navigator reaches. How long an edit made by another
// program takes to show on screen, from the start of its write until the schedule shows the new
// title (median and 95th percentile over 50 edits); then switching to a day already read, and to
// a day not read yet.
// Needs the desktop session's EDS: scripts/with-desktop-session build/bench/bench_live_schedule
#include "meetings/DirectCalendar.h"
#include "meetings/OffMainThread.h"
#include "platform/calendar_store/CalendarStore.h"
#include "platform/calendar_store/CalendarWatcher.h"
#include "screens/schedule/DailyEventsView.h"
#include "support/TestEnvironment.h"
#include "support/ui/AppFixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QUuid>

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

constexpr int eventCount = 2000;

QByteArray utc(const QDateTime& time)
{
    return time.toUTC().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1();
}

// A third of the events for one calendar, spread over the months around today; every fourth a
// weekly series. The shown day gets one plain event of its own, whose UID is returned.
QByteArray calendarData(int part, const QDate& shownDay, QByteArray* shownUid)
{
    QByteArray ics = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane bench//EN\r\n";
    const QDate first = QDate::currentDate().addMonths(-3);
    for (int i = part; i < eventCount; i += 3) {
        const QDate day = first.addDays((i * 7) % 182);
        const QDateTime start(day, QTime(6 + i % 14, (i * 5) % 60));
        ics += "BEGIN:VEVENT\r\nUID:" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
            + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + utc(start) + "\r\nDTEND:" + utc(start.addSecs(1800))
            + "\r\nSUMMARY:Event " + QByteArray::number(i) + "\r\n";
        if (i % 4 == 0)
            ics += "RRULE:FREQ=WEEKLY;COUNT=20\r\n";
        ics += "END:VEVENT\r\n";
    }
    if (shownUid) {
        *shownUid = QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1();
        const QDateTime start(shownDay, QTime(11, 0));
        ics += "BEGIN:VEVENT\r\nUID:" + *shownUid + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + utc(start)
            + "\r\nDTEND:" + utc(start.addSecs(3600)) + "\r\nSUMMARY:Edited elsewhere 0\r\nEND:VEVENT\r\n";
    }
    return ics + "END:VCALENDAR\r\n";
}

struct World {
    AppFixture app;
    QStringList calendars;
    QByteArray shownUid;
    QDate shownDay = QDate::currentDate().addDays(1);
    std::unique_ptr<DailyEventsView> view;

    World()
    {
        app.storeLocalUser();
        for (int part = 0; part < 3; ++part) {
            const QString calendar
                = QStringLiteral("tolvane-bench-") + QUuid::createUuid().toString(QUuid::WithoutBraces);
            CalendarStore::shared().addLocalCalendar(calendar, QStringLiteral("Bench %1").arg(part), "#3E8BFF");
            calendars.append(calendar);
            offMainThread([&] {
                CalendarStore::shared().importCalendarData(
                    calendar, calendarData(part, shownDay, part == 0 ? &shownUid : nullptr));
            });
        }
        view = std::make_unique<DailyEventsView>(app.services(), DailyEventsView::Bindings {});
        view->resize(1400, 900);
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->show();
        loaded.wait(60000);
        show(shownDay);
        // The watch is up once every calendar's view runs.
        auto* watcher = qobject_cast<CalendarStoreWatcher*>(view->calendarWatcher());
        QElapsedTimer waiting;
        waiting.start();
        while (watcher && watcher->watchedCalendars().size() < calendars.size() && waiting.elapsed() < 30000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    ~World()
    {
        view.reset();
        for (const QString& calendar : std::as_const(calendars))
            CalendarStore::shared().disableCalendar(calendar);
    }

    void show(const QDate& day)
    {
        QSignalSpy loaded(view.get(), &DailyEventsView::loaded);
        view->setSelectedDate(day);
        if (loaded.isEmpty())
            loaded.wait(60000);
    }

    bool shows(const QString& title) const
    {
        return std::any_of(view->events().cbegin(), view->events().cend(),
            [&](const MeetEntity& meet) { return meet.metName == title; });
    }
};

World& world()
{
    static World* made = new World;
    return *made;
}

double percentile(QList<double> samples, double fraction)
{
    std::sort(samples.begin(), samples.end());
    return samples.at(std::min(samples.size() - 1, qsizetype(fraction * double(samples.size()))));
}

void BM_OutsideChangeShown(benchmark::State& state)
{
    World& w = world();
    DirectCalendar* other = offMainThread([&] { return new DirectCalendar(w.calendars.first()); });
    QList<double> samples;
    int edit = 0;
    for (auto _ : state) {
        const QString title = QStringLiteral("Edited elsewhere %1").arg(++edit);
        QElapsedTimer shown;
        shown.start();
        offMainThread([&] {
            ICalComponent* event = other->master(QString::fromLatin1(w.shownUid));
            i_cal_component_set_summary(event, title.toUtf8().constData());
            e_cal_client_modify_object_sync(
                other->client(), event, E_CAL_OBJ_MOD_ALL, E_CAL_OPERATION_FLAG_NONE, nullptr, nullptr);
            g_object_unref(event);
        });
        while (!w.shows(title) && shown.elapsed() < 30000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        w.view->repaint();
        const double seconds = double(shown.nsecsElapsed()) / 1e9;
        samples.append(seconds * 1000);
        state.SetIterationTime(seconds);
    }
    offMainThread([&] { delete other; });
    state.counters["median_ms"] = percentile(samples, 0.5);
    state.counters["p95_ms"] = percentile(samples, 0.95);
}
BENCHMARK(BM_OutsideChangeShown)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void BM_SwitchToALoadedDay(benchmark::State& state)
{
    World& w = world();
    w.show(w.shownDay.addDays(1));
    w.show(w.shownDay);
    for (auto _ : state) {
        QElapsedTimer switching;
        switching.start();
        w.show(w.shownDay.addDays(1));
        w.view->repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
        w.show(w.shownDay);
    }
}
BENCHMARK(BM_SwitchToALoadedDay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void BM_SwitchToANewDay(benchmark::State& state)
{
    World& w = world();
    int offset = 2;
    for (auto _ : state) {
        const QDate day = w.shownDay.addDays(offset++);
        QElapsedTimer switching;
        switching.start();
        w.show(day);
        w.view->repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
    }
}
BENCHMARK(BM_SwitchToANewDay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(8);

} // namespace

int main(int argc, char** argv)
{
    TestEnvironment::pinBeforeApplication();
    QApplication application(argc, argv);
    TestEnvironment::pinAfterApplication();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    delete &world();
    return 0;
}
