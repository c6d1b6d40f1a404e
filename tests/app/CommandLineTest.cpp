#include "CommandLine.h"

#include "support/TestMain.h"

#include <QTranslator>

// The options a launch understands, and what it refuses before any window opens.
class CommandLineTest : public QObject {
    Q_OBJECT

    static CommandLine::Parsed parse(QStringList arguments)
    {
        arguments.prepend(QStringLiteral("tolvane"));
        return CommandLine::parse(arguments);
    }

    QTranslator english;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(english.load(QStringLiteral(":/i18n/tolvane_en")));
        QCoreApplication::installTranslator(&english);
    }

    void shouldReadWhatALaunchAsks()
    {
        QCOMPARE(parse({}).request, LaunchRequest());
        QVERIFY(!parse({}).request.asksForAnything());

        const CommandLine::Parsed all = parse({"--date", "2026-12-01", "--quick-add", "  buy milk ", "--background"});
        QCOMPARE(all.error, QString());
        QCOMPARE(all.request.date, std::optional(QDate(2026, 12, 1)));
        QCOMPARE(all.request.quickAddText, std::optional(QStringLiteral("buy milk")));
        QVERIFY(all.request.background);

        QCOMPARE(parse({"--date=2028-02-29"}).request.date, std::optional(QDate(2028, 2, 29)));
        QVERIFY(parse({"--help"}).helpAsked);
        QVERIFY(parse({"-v"}).versionAsked);
    }

    void shouldRefuseWhatItCannotRead_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::newRow("not a day") << QStringList {"--date", "2026-02-30"}
                                   << "Not a day: \u201c2026-02-30\u201d. Write it as YYYY-MM-DD, for example "
                                      "2026-12-01.";
        QTest::newRow("another form") << QStringList {"--date", "01/12/2026"}
                                      << "Not a day: \u201c01/12/2026\u201d. Write it as YYYY-MM-DD, for example "
                                         "2026-12-01.";
        QTest::newRow("no leading zeros") << QStringList {"--date", "2026-1-5"}
                                          << "Not a day: \u201c2026-1-5\u201d. Write it as YYYY-MM-DD, for example "
                                             "2026-12-01.";
        QTest::newRow("date without value") << QStringList {"--date"} << "Missing value after '--date'.";
        QTest::newRow("blank quick-add") << QStringList {"--quick-add", "   "}
                                         << "--quick-add needs the text of the task.";
        QTest::newRow("unknown option") << QStringList {"--dat", "2026-12-01"} << "Unknown option 'dat'.";
        QTest::newRow("stray word") << QStringList {"tomorrow"} << "Unexpected argument: tomorrow";
    }

    void shouldRefuseWhatItCannotRead()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        const CommandLine::Parsed parsed = parse(arguments);
        QCOMPARE(parsed.error, error);
        QCOMPARE(CommandLine::badArgumentsStatus, 2);
    }

    void shouldCarryTheRequestToTheRunningOne()
    {
        LaunchRequest request;
        request.date = QDate(2026, 12, 1);
        request.quickAddText = QStringLiteral("buy milk");
        request.background = true;
        const LaunchRequest received = LaunchRequest::fromPlatformData(request.toPlatformData());
        QCOMPARE(received.date, request.date);
        QCOMPARE(received.quickAddText, request.quickAddText);
        // Handed over, it is a request for the window, never for the background.
        QVERIFY(!received.background);

        // Other programs may call the same method: what does not read is left out.
        const LaunchRequest junk = LaunchRequest::fromPlatformData(
            {{QStringLiteral("tolvane-date"), QStringLiteral("soon")}, {QStringLiteral("tolvane-quick-add"), 42.5},
                {QStringLiteral("activation-token"), QStringLiteral("x")}});
        QCOMPARE(junk.date, std::nullopt);
        QCOMPARE(junk.quickAddText, std::optional(QStringLiteral("42.5")));
        QVERIFY(!LaunchRequest::fromPlatformData({{QStringLiteral("tolvane-quick-add"), QStringLiteral(" ")}})
                     .asksForAnything());
    }
};

TOLVANE_TEST_MAIN(CommandLineTest)
#include "CommandLineTest.moc"
