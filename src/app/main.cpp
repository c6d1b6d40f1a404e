#include "CommandLine.h"
#include "MainWindow.h"
#include "SingleInstance.h"
#include "TolvaneApp.h"
#include "platform/ProcessHardening.h"
#include "screens/common/AppServices.h"

#include <QApplication>
#include <QIcon>

#include <algorithm>
#include <cstdio>

namespace {

void describeApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("Tolvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TOLVANE_VERSION));
}

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return arguments;
}

// Qt's own window-system options (-platform, -style ...) take a single dash; ours take two.
bool hasSingleDashOption(const QStringList& arguments)
{
    return std::any_of(arguments.begin() + 1, arguments.end(), [](const QString& argument) {
        return argument.startsWith(QLatin1Char('-')) && !argument.startsWith(QStringLiteral("--"));
    });
}

[[noreturn]] void refuse(const QString& error)
{
    std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName().toLower()), qPrintable(error));
    //% "Try “tolvane --help” for the options."
    std::fprintf(stderr, "%s\n", qPrintable(qtTrId("app-option-try-help")));
    std::exit(CommandLine::badArgumentsStatus);
}

// --help, --version and wrong arguments are answered on a machine without a display (a server, a
// package check, a typo in a terminal), so before the window system is opened. Qt's own
// window-system options may stand beside them: they are not ours to reject here.
[[noreturn]] void answerWithoutDisplay(int argc, char* argv[])
{
    QCoreApplication core(argc, argv);
    describeApplication();
    TolvaneApp::installTranslations();
    const CommandLine::Parsed parsed = CommandLine::parse(QCoreApplication::arguments());
    QCommandLineParser parser;
    CommandLine::addOptions(parser);
    parser.parse(QCoreApplication::arguments());
    if (parsed.helpAsked)
        parser.showHelp(0);
    if (parsed.versionAsked)
        parser.showVersion();
    refuse(parsed.error);
}

} // namespace

int main(int argc, char* argv[])
{
    // Before any key, token or text is in memory.
    ProcessHardening::disableCoreDumps();

    {
        // Only whether the arguments are fine matters here; the texts, read before the
        // translations are in, would warn about their placeholders.
        const QtMessageHandler previous
            = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        const QStringList raw = argumentsOf(argc, argv);
        const CommandLine::Parsed early = CommandLine::parse(raw);
        qInstallMessageHandler(previous);
        if (early.helpAsked || early.versionAsked || (!early.error.isEmpty() && !hasSingleDashOption(raw)))
            answerWithoutDisplay(argc, argv);
    }
    QApplication application(argc, argv);
    describeApplication();
    QApplication::setDesktopFileName(QStringLiteral("com.quorvel.tolvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")));
    TolvaneApp::installTranslations();

    // QApplication has taken its own options out of the arguments; anything left that is not
    // ours is a mistake worth saying rather than ignoring.
    const CommandLine::Parsed parsed = CommandLine::parse(QCoreApplication::arguments());
    if (!parsed.error.isEmpty())
        refuse(parsed.error);

    // Before anything is opened: a second launch hands its request to the running one.
    SingleInstance instance;
    if (instance.claim(parsed.request) == SingleInstance::Claim::handedOver)
        return 0;

    const AppServices services = AppServices::live();
    TolvaneApp app(services);
    app.start(parsed.request);
    QObject::connect(&instance, &SingleInstance::activationRequested, app.window(), &MainWindow::bringToFront);
    QObject::connect(&instance, &SingleInstance::launchRequested, app.window(),
        [&app](const LaunchRequest& request) { app.handle(request); });
    return QApplication::exec();
}
