#include "MainWindow.h"
#include "SingleInstance.h"
#include "TolvaneApp.h"
#include "platform/ProcessHardening.h"
#include "screens/common/AppServices.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>

#include <cstring>

namespace {

void describeApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("Tolvane"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TOLVANE_VERSION));
}

void addOptions(QCommandLineParser& parser)
{
    //% "Plan your day: schedule, projects and a daily logbook."
    parser.setApplicationDescription(qtTrId("app-command-line-description"));
    parser.addHelpOption();
    parser.addVersionOption();
}

bool asksForHelpOrVersion(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        for (const char* option : {"-h", "--help", "-?", "--help-all", "-v", "--version"}) {
            if (std::strcmp(argv[i], option) == 0)
                return true;
        }
    }
    return false;
}

// --help and --version answer on a machine without a display (a server, a package check), so
// they are served before the window system is opened. Qt's own window-system options
// (-platform ...) may stand beside them: they are not ours to reject here.
[[noreturn]] void answerHelpOrVersion(int argc, char* argv[])
{
    QCoreApplication core(argc, argv);
    describeApplication();
    TolvaneApp::installTranslations();
    QCommandLineParser parser;
    addOptions(parser);
    parser.parse(QCoreApplication::arguments());
    if (parser.isSet(QStringLiteral("version")))
        parser.showVersion();
    parser.showHelp(0);
}

} // namespace

int main(int argc, char* argv[])
{
    // Before any key, token or text is in memory.
    ProcessHardening::disableCoreDumps();

    if (asksForHelpOrVersion(argc, argv))
        answerHelpOrVersion(argc, argv);
    QApplication application(argc, argv);
    describeApplication();
    QApplication::setDesktopFileName(QStringLiteral("com.quorvel.tolvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")));
    TolvaneApp::installTranslations();

    // QApplication has taken its own options out of the arguments; anything left that is not
    // ours is a mistake worth saying rather than ignoring.
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);

    // Before anything is opened: a second launch only brings the running window forward.
    SingleInstance instance;
    if (instance.claim() == SingleInstance::Claim::handedOver)
        return 0;

    const AppServices services = AppServices::live();
    TolvaneApp app(services);
    app.start();
    QObject::connect(&instance, &SingleInstance::activationRequested, app.window(), &MainWindow::bringToFront);
    return QApplication::exec();
}
