#include "Config.h"

#include <fstream>
#include <set>
#include <sstream>

extern char** environ;

namespace {

const std::set<std::string> repeatable = {"issuer", "client-id"};
const std::set<std::string> keys
    = {"listen", "database-url", "issuer", "client-id", "discovery-url", "log-level", "config"};

// The settings of one source: each key with every value it was given, in order.
using Settings = std::map<std::string, std::vector<std::string>>;

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return {};
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

std::vector<std::string> commaSeparated(const std::string& text)
{
    std::vector<std::string> values;
    std::stringstream stream(text);
    std::string item;
    while (std::getline(stream, item, ',')) {
        if (const std::string value = trimmed(item); !value.empty())
            values.push_back(value);
    }
    return values;
}

Settings fromEnvironment(const std::map<std::string, std::string>& environment)
{
    const std::map<std::string, std::string> names = {{"TOLVANE_SERVER_LISTEN", "listen"},
        {"TOLVANE_SERVER_DATABASE_URL", "database-url"}, {"TOLVANE_SERVER_ISSUERS", "issuer"},
        {"TOLVANE_SERVER_CLIENT_IDS", "client-id"}, {"TOLVANE_SERVER_DISCOVERY_URL", "discovery-url"},
        {"TOLVANE_SERVER_LOG_LEVEL", "log-level"}, {"TOLVANE_SERVER_CONFIG", "config"}};
    Settings settings;
    for (const auto& [variable, key] : names) {
        const auto found = environment.find(variable);
        if (found == environment.end() || found->second.empty())
            continue;
        settings[key]
            = repeatable.contains(key) ? commaSeparated(found->second) : std::vector<std::string> {found->second};
    }
    return settings;
}

Settings fromFile(const std::string& path)
{
    std::ifstream file(path);
    if (!file)
        throw ConfigError("cannot read the configuration file " + path);
    Settings settings;
    std::string line;
    int number = 0;
    while (std::getline(file, line)) {
        ++number;
        const std::string content = trimmed(line);
        if (content.empty() || content.front() == '#')
            continue;
        const auto equals = content.find('=');
        const std::string key = equals == std::string::npos ? "" : trimmed(content.substr(0, equals));
        if (!keys.contains(key) || key == "config")
            throw ConfigError(path + ":" + std::to_string(number) + ": expected \"key = value\" with a known key");
        settings[key].push_back(trimmed(content.substr(equals + 1)));
    }
    return settings;
}

// A later source replaces a key's values wholesale, so a flag's issuers do not add to the file's.
void overlay(Settings& into, const Settings& from)
{
    for (const auto& [key, values] : from)
        into[key] = values;
}

slog::Level levelOf(const std::string& text)
{
    if (text == "debug")
        return slog::Level::debug;
    if (text == "info")
        return slog::Level::info;
    if (text == "warning")
        return slog::Level::warning;
    if (text == "error")
        return slog::Level::error;
    throw ConfigError("--log-level must be debug, info, warning or error");
}

} // namespace

std::pair<std::string, unsigned short> parseListenAddress(const std::string& text)
{
    const auto colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0)
        throw ConfigError("--listen must be HOST:PORT");
    std::string host = text.substr(0, colon);
    if (host.size() > 2 && host.front() == '[' && host.back() == ']')
        host = host.substr(1, host.size() - 2);
    const std::string port = text.substr(colon + 1);
    if (port.empty() || port.size() > 5 || port.find_first_not_of("0123456789") != std::string::npos
        || std::stoul(port) > 65535)
        throw ConfigError("--listen must be HOST:PORT with a port from 0 to 65535");
    return {host, static_cast<unsigned short>(std::stoul(port))};
}

std::map<std::string, std::string> Config::currentEnvironment()
{
    std::map<std::string, std::string> environment;
    for (char** entry = environ; entry && *entry; ++entry) {
        const std::string text = *entry;
        const auto equals = text.find('=');
        if (equals != std::string::npos)
            environment[text.substr(0, equals)] = text.substr(equals + 1);
    }
    return environment;
}

Config Config::load(int argc, char** argv, const std::map<std::string, std::string>& environment)
{
    Config config;
    Settings flags;
    for (int i = 1; i < argc; ++i) {
        std::string argument = argv[i];
        if (argument == "--help" || argument == "-h") {
            config.action = Action::help;
            return config;
        }
        if (argument == "--version") {
            config.action = Action::version;
            return config;
        }
        if (argument.rfind("--", 0) != 0)
            throw ConfigError("unexpected argument " + argument);
        std::string key = argument.substr(2);
        std::string value;
        if (const auto equals = key.find('='); equals != std::string::npos) {
            value = key.substr(equals + 1);
            key = key.substr(0, equals);
        } else if (i + 1 < argc) {
            value = argv[++i];
        } else {
            throw ConfigError("--" + key + " needs a value");
        }
        if (!keys.contains(key))
            throw ConfigError("unknown option --" + key);
        if (repeatable.contains(key))
            flags[key].push_back(value);
        else
            flags[key] = {value};
    }

    Settings settings = fromEnvironment(environment);
    std::string file;
    if (settings.contains("config"))
        file = settings["config"].back();
    if (flags.contains("config"))
        file = flags["config"].back();
    if (!file.empty())
        overlay(settings, fromFile(file));
    overlay(settings, flags);

    const auto single = [&](const std::string& key) -> std::optional<std::string> {
        const auto found = settings.find(key);
        if (found == settings.end() || found->second.empty())
            return std::nullopt;
        return found->second.back();
    };
    if (const auto listen = single("listen"))
        std::tie(config.listenHost, config.listenPort) = parseListenAddress(*listen);
    config.databaseUrl = single("database-url").value_or("");
    config.discoveryUrl = single("discovery-url").value_or("");
    if (const auto level = single("log-level"))
        config.logLevel = levelOf(*level);
    config.issuers = settings["issuer"];
    config.clientIds = settings["client-id"];

    if (config.databaseUrl.empty())
        throw ConfigError("no database: give --database-url");
    if (config.discoveryUrl.empty())
        throw ConfigError("no identity provider: give --discovery-url");
    if (config.issuers.empty())
        throw ConfigError("no token issuer: give --issuer");
    if (config.clientIds.empty())
        throw ConfigError("no client id: give --client-id");
    return config;
}

std::string Config::usage()
{
    return "Usage: tolvane-server [options]\n"
           "\n"
           "  --listen HOST:PORT       address to serve on (default 127.0.0.1:8080)\n"
           "  --database-url URL       PostgreSQL connection URL or key=value string\n"
           "  --issuer URL             accepted ID token issuer (repeatable)\n"
           "  --client-id ID           accepted ID token audience (repeatable)\n"
           "  --discovery-url URL      OpenID discovery document of the identity provider\n"
           "  --log-level LEVEL        debug, info, warning or error (default info)\n"
           "  --config FILE            file of \"key = value\" lines with the keys above\n"
           "  --version                print the version and exit\n"
           "  --help                   print this help and exit\n"
           "\n"
           "Flags override the file, the file overrides the environment: TOLVANE_SERVER_LISTEN,\n"
           "TOLVANE_SERVER_DATABASE_URL, TOLVANE_SERVER_ISSUERS and TOLVANE_SERVER_CLIENT_IDS (comma\n"
           "separated), TOLVANE_SERVER_DISCOVERY_URL, TOLVANE_SERVER_LOG_LEVEL, TOLVANE_SERVER_CONFIG.\n";
}
