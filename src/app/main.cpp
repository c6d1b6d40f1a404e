#include "MainWindow.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    QApplication::setApplicationVersion(QStringLiteral(TOLVANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.quorvel.tolvane"));

    MainWindow window;
    window.show();
    return QApplication::exec();
}
