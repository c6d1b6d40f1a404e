#pragma once

#include <string>
#include <string_view>

// Plain leveled lines on standard error. Callers pass only what is safe to keep in a log: never a
// token, a request body or anything a user wrote.
namespace slog {

enum class Level { debug, info, warning, error };

void setLevel(Level level);
bool enabled(Level level);
void write(Level level, std::string_view message);

inline void debug(std::string_view message)
{
    write(Level::debug, message);
}
inline void info(std::string_view message)
{
    write(Level::info, message);
}
inline void warning(std::string_view message)
{
    write(Level::warning, message);
}
inline void error(std::string_view message)
{
    write(Level::error, message);
}

} // namespace slog
