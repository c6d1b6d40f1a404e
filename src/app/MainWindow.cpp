#include "MainWindow.h"

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("Tolvane"));
    setMinimumSize(900, 600);
    resize(1200, 800);
}
