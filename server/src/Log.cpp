#include "Log.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace slog {

namespace {

std::atomic<Level> threshold {Level::info};
std::mutex lineMutex;

const char* nameOf(Level level)
{
    switch (level) {
    case Level::debug:
        return "debug";
    case Level::info:
        return "info";
    case Level::warning:
        return "warning";
    case Level::error:
        return "error";
    }
    return "";
}

} // namespace

void setLevel(Level level)
{
    threshold = level;
}

bool enabled(Level level)
{
    return level >= threshold.load();
}

void write(Level level, std::string_view message)
{
    if (!enabled(level))
        return;
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm utc {};
    gmtime_r(&now, &utc);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y-%m-%dT%H:%M:%SZ", &utc);
    const std::lock_guard lock(lineMutex);
    std::fprintf(stderr, "%s %s %.*s\n", stamp, nameOf(level), int(message.size()), message.data());
    std::fflush(stderr);
}

} // namespace slog
