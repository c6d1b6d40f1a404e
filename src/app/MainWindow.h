#pragma once

#include <QMainWindow>

// The one window of the application.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
};
