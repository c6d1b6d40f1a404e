#pragma once

#include "Log.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

// How the server is set up. Sources, strongest first: command-line flags, the configuration file
// (--config or TOLVANE_SERVER_CONFIG: lines "key = value" with the flags' names), the environment.
struct Config {
    std::string listenHost = "127.0.0.1";
    unsigned short listenPort = 8080;
    std::string databaseUrl;
    std::vector<std::string> issuers;
    std::vector<std::string> clientIds;
    std::string discoveryUrl;
    slog::Level logLevel = slog::Level::info;

    // What the command line asked for besides running.
    enum class Action { run, help, version };
    Action action = Action::run;

    // Throws ConfigError with a message for the user when something is wrong or missing.
    static Config load(int argc, char** argv, const std::map<std::string, std::string>& environment);
    static std::map<std::string, std::string> currentEnvironment();
    static std::string usage();
};

struct ConfigError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// "host:port" or "[v6]:port"; throws ConfigError.
std::pair<std::string, unsigned short> parseListenAddress(const std::string& text);
