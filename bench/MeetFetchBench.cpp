// The schedule's 16-day window read from a calendar of 2,000 events, 200 of them repeating (some
// since 2019): through the meet repository, which reads each series from its master to survive
// EDS 3.46's stale time index, and through libecal's bare bulk expansion of the same window.
// Runs inside scripts/with-desktop-session; the benchmarks run on a worker thread while the main
// thread turns the GLib main context, as in the application.
#include "meetings/repositories/eventkit/EventKitMeetRepositoryImpl.h"
#include "meetings/repositories/eventkit/LiveEventKitStore.h"
#include "platform/SystemClock.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimeZone>
#include <QUuid>

#include <benchmark/benchmark.h>
#include <libecal/libecal.h>

namespace {

const QString calendarId = QStringLiteral("tolvane-bench-meets-") + QUuid::createUuid().toString(QUuid::WithoutBraces);

QDateTime today()
{
    return QDateTime(QDate::currentDate(), QTime(0, 0));
}

QByteArray utc(const QDateTime& instant)
{
    return instant.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'")).toLatin1();
}

// 1,800 single events over the year around today and 200 series of every kind, a third of them
// started years ago.
QByteArray calendarOf2000Events()
{
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Tolvane bench//EN\r\n";
    const char* rules[] = {"FREQ=DAILY", "FREQ=WEEKLY;BYDAY=MO,WE,FR", "FREQ=WEEKLY", "FREQ=MONTHLY;BYMONTHDAY=15",
        "FREQ=DAILY;INTERVAL=3", "FREQ=YEARLY"};
    for (int i = 0; i < 2000; ++i) {
        const bool repeating = i % 10 == 0;
        QDateTime start = today().addDays(i % 365 - 180).addSecs(3600 * (7 + i % 11));
        if (repeating && i % 30 == 0)
            start = start.addYears(-6);
        text += "BEGIN:VEVENT\r\nUID:bench-" + QByteArray::number(i) + "@tolvane.test\r\nDTSTAMP:20260101T000000Z\r\n";
        text += "DTSTART:" + utc(start) + "\r\nDTEND:" + utc(start.addSecs(1800)) + "\r\n";
        text += "SUMMARY:Event " + QByteArray::number(i) + "\r\nDESCRIPTION:Notes of event " + QByteArray::number(i)
            + "\r\n";
        if (repeating)
            text += QByteArray("RRULE:") + rules[(i / 10) % 6] + "\r\n";
        text += "END:VEVENT\r\n";
    }
    return text + "END:VCALENDAR\r\n";
}

void throughTheRepository(benchmark::State& state)
{
    QSet<QString> hidden;
    for (const CalendarStoreCalendar& calendar : CalendarStore::shared().calendars()) {
        if (calendar.identifier != calendarId)
            hidden.insert(calendar.identifier);
    }
    EventKitMeetRepositoryImpl repository(LiveEventKitStore::shared(), QTimeZone::systemTimeZone(), 1, 14, hidden,
        std::nullopt, std::make_shared<SystemClock>());
    qsizetype meets = 0;
    for (auto _ : state)
        meets = repository.fetchMeets().size();
    state.counters["meets"] = double(meets);
}

gboolean countInstance(ICalComponent*, ICalTime*, ICalTime*, gpointer count, GCancellable*, GError**)
{
    ++*static_cast<int*>(count);
    return TRUE;
}

void throughBareLibecal(benchmark::State& state)
{
    ESourceRegistry* registry = e_source_registry_new_sync(nullptr, nullptr);
    ESource* source = e_source_registry_ref_source(registry, calendarId.toUtf8().constData());
    auto* client
        = E_CAL_CLIENT(e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, 15, nullptr, nullptr));
    e_cal_client_set_default_timezone(client, e_cal_util_get_system_timezone());
    const time_t from = today().addDays(-1).toSecsSinceEpoch();
    const time_t to = today().addDays(14).toSecsSinceEpoch();
    int instances = 0;
    for (auto _ : state) {
        instances = 0;
        e_cal_client_generate_instances_sync(client, from, to, nullptr, countInstance, &instances);
    }
    state.counters["meets"] = double(instances);
    g_object_unref(client);
    g_object_unref(source);
    g_object_unref(registry);
}

} // namespace

BENCHMARK(throughTheRepository)->Unit(benchmark::kMillisecond)->MinTime(3);
BENCHMARK(throughBareLibecal)->Unit(benchmark::kMillisecond)->MinTime(3);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    CalendarStore& store = CalendarStore::shared();
    int status = 0;
    QThread* runner = QThread::create([&] {
        try {
            store.addLocalCalendar(calendarId, QStringLiteral("Bench"), QStringLiteral("#336699"));
            QThread::msleep(500);
            store.importCalendarData(calendarId, calendarOf2000Events());
            benchmark::RunSpecifiedBenchmarks();
        } catch (const std::exception& error) {
            fprintf(stderr, "%s\n", error.what());
            status = 1;
        }
        store.disableCalendar(calendarId);
        QMetaObject::invokeMethod(&application, &QCoreApplication::quit, Qt::QueuedConnection);
    });
    runner->start();
    application.exec();
    runner->wait();
    delete runner;
    benchmark::Shutdown();
    return status;
}
