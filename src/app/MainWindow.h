#pragma once

#include <QMainWindow>
#include <QPointer>

class AppServices;
class ContentView;
class QuickAddView;
class UserSettingsView;

// The one window: the content view, the menus and their shortcuts; its size and place are
// remembered between runs.
class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(const AppServices& services, QWidget* parent = nullptr);

    ContentView* contentView() const { return m_contentView; }
    // Shows the window (closed, minimised or behind others) and gives it the focus.
    void bringToFront();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void showConsole();
    void showUserSettings();
    // Ctrl+N: one line that becomes a task.
    void showQuickAdd();

    const AppServices& m_services;
    ContentView* m_contentView;
    QPointer<UserSettingsView> m_settings;
    QPointer<QuickAddView> m_quickAdd;
};
