// Alarm delivery and arming. Run inside scripts/with-desktop-session: it registers its own
// notification server on the private session bus.
#include "meetings/alarms/MeetAlarmScheduler.h"
#include "meetings/alarms/MeetAlarmSettingsStores.h"
#include "platform/SystemClock.h"
#include "platform/notifications/EspeakSpeechSynthesizer.h"
#include "platform/notifications/LiveUserNotificationCenter.h"
#include "platform/notifications/SystemSounds.h"
#include "support/notifications/TestNotificationServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

std::shared_ptr<LiveUserNotificationCenter> makeCenter(const QTemporaryDir& folder)
{
    LiveUserNotificationCenter::Options options;
    options.storeFilePath = folder.filePath(QStringLiteral("pending-notifications.json"));
    options.soundsDirectory = folder.filePath(QStringLiteral("sounds"));
    options.defaultSoundPath = SystemSounds::defaultNotificationSoundPath();
    options.clock = std::make_shared<SystemClock>();
    return std::make_shared<LiveUserNotificationCenter>(std::move(options));
}

// 200 alarms spread over the next two minutes; how late each one reaches the server's bus.
void BM_DeliveryLateness(benchmark::State& state)
{
    constexpr int alarmCount = 200;
    for (auto _ : state) {
        QTemporaryDir folder;
        TestNotificationServer server;
        if (!server.start()) {
            state.SkipWithError("no session bus: run inside scripts/with-desktop-session");
            return;
        }
        const std::shared_ptr<LiveUserNotificationCenter> center = makeCenter(folder);
        std::vector<double> latenessMs;
        QEventLoop loop;
        QObject::connect(center.get(), &LiveUserNotificationCenter::requestFired, &loop,
            [&](const QString&, const QDateTime& fireDate, bool) {
                latenessMs.push_back(double(fireDate.msecsTo(QDateTime::currentDateTime())));
                if (int(latenessMs.size()) == alarmCount)
                    loop.quit();
            });
        for (int i = 0; i < alarmCount; ++i) {
            const double seconds = 1.0 + 119.0 * i / (alarmCount - 1);
            UserNotificationRequest request;
            request.identifier = QStringLiteral("bench-%1").arg(i);
            request.content.title = QStringLiteral("Meet %1").arg(i);
            request.content.soundName = QStringLiteral("none.oga");
            request.trigger = UserNotificationTrigger::afterInterval(seconds);
            center->add(request);
        }
        QTimer::singleShot(150000, &loop, &QEventLoop::quit);
        loop.exec();
        if (int(latenessMs.size()) != alarmCount || server.notifications().size() != alarmCount) {
            state.SkipWithError("not every alarm reached the server");
            return;
        }
        std::sort(latenessMs.begin(), latenessMs.end());
        state.counters["median_ms"] = latenessMs[latenessMs.size() / 2];
        state.counters["p99_ms"] = latenessMs[size_t(latenessMs.size() * 0.99) - 1];
        state.counters["max_ms"] = latenessMs.back();
    }
}
BENCHMARK(BM_DeliveryLateness)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

// Arming one meet in voice mode: synthesis with espeak-ng dominates.
void BM_ArmOneMeetInVoiceMode(benchmark::State& state)
{
    QTemporaryDir folder;
    TestNotificationServer server;
    if (!server.start()) {
        state.SkipWithError("no session bus: run inside scripts/with-desktop-session");
        return;
    }
    const std::shared_ptr<LiveUserNotificationCenter> center = makeCenter(folder);
    const UserDefaults defaults(folder.filePath(QStringLiteral("Tolvane.conf")));
    MeetAlarmModeStore(defaults).save(MeetAlarmModeEnum::voice);
    const MeetAlarmScheduler scheduler({defaults, center, std::make_shared<EspeakSpeechSynthesizer>(),
        AlarmSoundFiles(folder.filePath(QStringLiteral("sounds")), SystemSounds::themeDirectory),
        std::make_shared<SystemClock>()});
    MeetEntity meet;
    meet.metName = QStringLiteral("Revisión semanal del proyecto");
    meet.metDate = QDateTime::currentDateTime().addDays(1);
    meet.metSource = MeetSource::backend;
    for (auto _ : state) {
        meet.metId = QUuid::createUuid();
        if (!scheduler.arm(meet))
            state.SkipWithError("arming failed");
    }
}
BENCHMARK(BM_ArmOneMeetInVoiceMode)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
