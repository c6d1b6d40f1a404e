#include "TolvaneApp.h"
#include "screens/common/AppServices.h"

#include <QApplication>
#include <QIcon>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setApplicationVersion(QStringLiteral(TOLVANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.quorvel.tolvane"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/QuorvelLogo.svg")));
    TolvaneApp::installTranslations();

    const AppServices services = AppServices::live();
    TolvaneApp app(services);
    app.start();
    return QApplication::exec();
}
