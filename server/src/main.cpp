#include "Api.h"
#include "Config.h"
#include "Database.h"
#include "HttpFetch.h"
#include "HttpServer.h"
#include "Log.h"
#include "TokenVerifier.h"

#include <cstdio>
#include <iostream>
#include <thread>

int main(int argc, char** argv)
{
    Config config;
    try {
        config = Config::load(argc, argv, Config::currentEnvironment());
    } catch (const ConfigError& error) {
        std::cerr << "tolvane-server: " << error.what() << "\n\n" << Config::usage();
        return 2;
    }
    if (config.action == Config::Action::help) {
        std::cout << Config::usage();
        return 0;
    }
    if (config.action == Config::Action::version) {
        std::cout << "tolvane-server " << TOLVANE_VERSION << '\n';
        return 0;
    }
    slog::setLevel(config.logLevel);

    // Enough workers to keep both the CPUs and the database busy while some wait on it.
    const int cores = std::max(1u, std::thread::hardware_concurrency());
    HttpServer::Options options;
    options.host = config.listenHost;
    options.port = config.listenPort;
    options.ioThreads = cores;
    options.workers = 4 * cores;

    try {
        ConnectionPool pool(config.databaseUrl, std::size_t(options.workers));
        {
            auto connection = pool.acquire();
            const int applied = applyMigrations(*connection);
            slog::info("database schema up to date (" + std::to_string(applied) + " migrations applied now)");
        }
        TokenVerifier verifier(
            config.discoveryUrl, config.issuers, config.clientIds, [](const std::string& url) { return httpGet(url); });
        Api api(pool, verifier);
        HttpServer server(options, [&api](const ApiRequest& request) { return api.handle(request); });
        server.start();
        slog::info("listening on http://" + config.listenHost + ':' + std::to_string(server.port()));
        server.runUntilSignalled();
        slog::info("stopped");
        return 0;
    } catch (const std::exception& error) {
        slog::error(std::string("cannot start: ") + error.what());
        return 1;
    }
}
