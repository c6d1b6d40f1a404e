#include "Config.h"

#include "support/TestMain.h"

#include <QTemporaryFile>

namespace {

// argv as main() gets it.
struct Arguments {
    std::vector<std::string> strings;
    std::vector<char*> pointers;

    explicit Arguments(std::vector<std::string> list)
        : strings(std::move(list))
    {
        strings.insert(strings.begin(), "tolvane-server");
        for (std::string& text : strings)
            pointers.push_back(text.data());
    }
    int argc() { return int(pointers.size()); }
    char** argv() { return pointers.data(); }
};

const std::map<std::string, std::string> complete = {{"TOLVANE_SERVER_DATABASE_URL", "host=/env"},
    {"TOLVANE_SERVER_ISSUERS", "https://a.example, https://b.example"}, {"TOLVANE_SERVER_CLIENT_IDS", "env-client"},
    {"TOLVANE_SERVER_DISCOVERY_URL", "https://a.example/.well-known/openid-configuration"}};

Config load(std::vector<std::string> arguments, const std::map<std::string, std::string>& environment = complete)
{
    Arguments list(std::move(arguments));
    return Config::load(list.argc(), list.argv(), environment);
}

} // namespace

class ConfigTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void environmentAlone_isEnough()
    {
        const Config config = load({});
        QCOMPARE(config.listenHost, std::string("127.0.0.1"));
        QCOMPARE(config.listenPort, 8080);
        QCOMPARE(config.issuers, (std::vector<std::string> {"https://a.example", "https://b.example"}));
        QCOMPARE(config.databaseUrl, std::string("host=/env"));
        QVERIFY(config.logLevel == slog::Level::info);
    }

    void flagsOverrideTheFileWhichOverridesTheEnvironment()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("# comment\nlisten = 0.0.0.0:9000\ndatabase-url = host=/file\nclient-id = file-a\n"
                   "client-id = file-b\nlog-level = debug\n");
        file.close();
        auto environment = complete;
        environment["TOLVANE_SERVER_CONFIG"] = file.fileName().toStdString();
        Config config = load({"--database-url", "host=/flag"}, environment);
        QCOMPARE(config.listenHost, std::string("0.0.0.0"));
        QCOMPARE(config.listenPort, 9000);
        QCOMPARE(config.databaseUrl, std::string("host=/flag"));
        QCOMPARE(config.clientIds, (std::vector<std::string> {"file-a", "file-b"}));
        QVERIFY(config.logLevel == slog::Level::debug);
        // A repeatable flag replaces the weaker source's list rather than adding to it.
        config = load({"--config", file.fileName().toStdString(), "--client-id", "x", "--client-id=y"});
        QCOMPARE(config.clientIds, (std::vector<std::string> {"x", "y"}));
    }

    void helpAndVersion_needNothingElse()
    {
        QVERIFY(load({"--version"}, {}).action == Config::Action::version);
        QVERIFY(load({"--help"}, {}).action == Config::Action::help);
    }

    void mistakes_areRefused_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("unknown flag") << QStringList {QStringLiteral("--port"), QStringLiteral("1")};
        QTest::newRow("flag without value") << QStringList {QStringLiteral("--listen")};
        QTest::newRow("listen without port") << QStringList {QStringLiteral("--listen"), QStringLiteral("localhost")};
        QTest::newRow("port out of range") << QStringList {QStringLiteral("--listen"), QStringLiteral("1.2.3.4:70000")};
        QTest::newRow("log level") << QStringList {QStringLiteral("--log-level"), QStringLiteral("loud")};
        QTest::newRow("missing file") << QStringList {QStringLiteral("--config"), QStringLiteral("/nonexistent/x")};
        QTest::newRow("stray argument") << QStringList {QStringLiteral("serve")};
    }

    void mistakes_areRefused()
    {
        QFETCH(QStringList, arguments);
        std::vector<std::string> list;
        for (const QString& argument : arguments)
            list.push_back(argument.toStdString());
        QVERIFY_THROWS_EXCEPTION(ConfigError, load(list));
    }

    void requiredSettings_mustBeGiven()
    {
        for (const auto& [variable, value] : complete) {
            auto environment = complete;
            environment.erase(variable);
            QVERIFY_THROWS_EXCEPTION(ConfigError, load({}, environment));
        }
    }
};

TOLVANE_TEST_MAIN(ConfigTest)
#include "ConfigTest.moc"
