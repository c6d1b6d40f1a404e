#include "MainWindow.h"
#include "SingleInstance.h"
#include "TolvaneApp.h"
#include "platform/ProcessHardening.h"
#include "screens/common/AppServices.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char* argv[])
{
    // Before any key, token or text is in memory.
    ProcessHardening::disableCoreDumps();
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setApplicationVersion(QStringLiteral(TOLVANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.quorvel.tolvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")));
    TolvaneApp::installTranslations();

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
