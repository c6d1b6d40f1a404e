// The schedule over a full desktop calendar: 2,000 events (a quarter of them weekly series) in
// three calendars across the six months the navigator reaches. How long an edit made by another
// program takes to show on screen, from the start of its write until the schedule shows the new
// title (median and 95th percentile over 50 edits); then switching to a day already read, to a
// day of the span read ahead around the shown one, to a day weeks away (not read yet), and to
// the next day after a moment on the shown one; then the frames of a card dragged over the loaded
// day: one mouse move and the repaint of what it dirtied (median and 95th percentile), on a busy
// day of 40 meets a week ahead.
// Needs the desktop session's EDS: scripts/with-desktop-session build/bench/bench_live_schedule
#include "meetings/DirectCalendar.h"
#include "meetings/OffMainThread.h"
#include "platform/calendar_store/CalendarStore.h"
#include "platform/calendar_store/CalendarWatcher.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyEventsView.h"
#include "screens/schedule/DailyScheduleTimelineView.h"
#include "support/TestEnvironment.h"
#include "support/ui/AppFixture.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
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
    // A busy day, for the drag: 40 meets between 8:00 and 18:00, many side by side.
    if (part == 1) {
        for (int i = 0; i < 40; ++i) {
            const QDateTime start(shownDay.addDays(7), QTime(8 + i / 4, (i % 4) * 15));
            ics += "BEGIN:VEVENT\r\nUID:" + QUuid::createUuid().toString(QUuid::WithoutBraces).toLatin1()
                + "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART:" + utc(start) + "\r\nDTEND:" + utc(start.addSecs(3600))
                + "\r\nSUMMARY:Busy " + QByteArray::number(i) + "\r\nEND:VEVENT\r\n";
        }
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

// Three days apart, within the three weeks around the shown day that are read ahead at once in
// the background: a moment on each day first, as someone reading their week would.
void BM_SwitchToADayInTheLoadedSpan(benchmark::State& state)
{
    World& w = world();
    w.show(w.shownDay);
    int offset = -9;
    int hits = 0;
    for (auto _ : state) {
        const QDate day = w.shownDay.addDays(offset);
        offset += 3;
        QElapsedTimer looking;
        looking.start();
        while (!w.view->isDayCached(day) && looking.elapsed() < 3000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        hits += w.view->isDayCached(day) ? 1 : 0;
        QElapsedTimer switching;
        switching.start();
        w.show(day);
        w.view->repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
    }
    state.counters["read_ahead"] = double(hits) / double(state.iterations());
}
BENCHMARK(BM_SwitchToADayInTheLoadedSpan)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(7);

// Weeks apart, so that each day lies outside what was watched and read ahead for the one before.
void BM_SwitchToANewDay(benchmark::State& state)
{
    World& w = world();
    const int offsets[] = {25, -25, 47, -47, 69, -69, 85, -85};
    int next = 0;
    for (auto _ : state) {
        const QDate day = w.shownDay.addDays(offsets[next++ % 8]);
        QElapsedTimer switching;
        switching.start();
        w.show(day);
        w.view->repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
    }
}
BENCHMARK(BM_SwitchToANewDay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(8);

// Day after day, as someone looks through the week: a moment on each day, then the next.
void BM_SwitchToTheNextDay(benchmark::State& state)
{
    World& w = world();
    w.show(w.shownDay.addDays(-20));
    int hits = 0;
    for (auto _ : state) {
        const QDate next = w.view->selectedDate().addDays(1);
        QElapsedTimer looking;
        looking.start();
        while (!w.view->isDayCached(next) && looking.elapsed() < 2000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        hits += w.view->isDayCached(next) ? 1 : 0;
        QElapsedTimer switching;
        switching.start();
        w.show(next);
        w.view->repaint();
        state.SetIterationTime(double(switching.nsecsElapsed()) / 1e9);
    }
    state.counters["read_ahead"] = double(hits) / double(state.iterations());
}
BENCHMARK(BM_SwitchToTheNextDay)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

void sendMouse(QWidget* card, QEvent::Type type, const QPoint& onTimeline, Qt::MouseButtons buttons)
{
    QWidget* timeline = card->parentWidget();
    const QPoint local = card->mapFrom(timeline, onTimeline);
    QMouseEvent event(type, local, timeline->mapToGlobal(onTimeline),
        type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(card, &event);
}

void BM_DragFrame(benchmark::State& state)
{
    World& w = world();
    w.show(w.shownDay.addDays(7));
    DailyScheduleTimelineView* timeline = w.view->timeline();
    DailyEventCardView* card = nullptr;
    for (DailyEventCardView* candidate : timeline->cards()) {
        if (candidate->isVisible())
            card = candidate;
    }
    if (!card) {
        state.SkipWithError("no card on the shown day");
        return;
    }
    const QPoint pressed = card->mapTo(timeline, card->rect().center());
    sendMouse(card, QEvent::MouseButtonPress, pressed, Qt::LeftButton);
    QList<double> samples;
    int step = 0;
    for (auto _ : state) {
        // Up and down three hours around where it was pressed, a few pixels a move.
        const int phase = step++ % 240;
        const int offset = (phase < 120 ? phase : 240 - phase) * 3 - 180;
        const QRect before = card->geometry();
        QElapsedTimer frame;
        frame.start();
        sendMouse(card, QEvent::MouseMove, pressed + QPoint(0, offset), Qt::LeftButton);
        // What the move dirtied, painted at once: where the card was and where it is.
        timeline->repaint(before.united(card->geometry()));
        const double seconds = double(frame.nsecsElapsed()) / 1e9;
        samples.append(seconds * 1000);
        state.SetIterationTime(seconds);
    }
    // Called off: nothing is saved.
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(card, &escape);
    sendMouse(card, QEvent::MouseButtonRelease, pressed, Qt::NoButton);
    state.counters["median_ms"] = percentile(samples, 0.5);
    state.counters["p95_ms"] = percentile(samples, 0.95);
    state.counters["cards"] = double(timeline->cards().size());
}
BENCHMARK(BM_DragFrame)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(500);

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
