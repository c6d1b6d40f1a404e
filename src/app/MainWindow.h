#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QUuid>

class AppServices;
class ContentView;
class QuickAddView;
class SearchPopupView;
class SearchSource;
struct SearchItem;
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
    // Search over everything, floating over the window (Ctrl+K).
    void openSearch();
    SearchPopupView* searchPopup() const { return m_search; }
    // Opens what search found where it lives: the projects workspace, the schedule on its day,
    // the logbook on its day.
    void openSearchResult(const SearchItem& item);
    // The projects workspace on a project, a list or a task (selected, scrolled to), as search
    // and a clicked reminder open them.
    void openInProjects(const QUuid& projectId, const QUuid& taskListId = {}, const QUuid& taskId = {});

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showConsole();
    void showUserSettings();
    // Ctrl+N: one line that becomes a task.
    void showQuickAdd();

    const AppServices& m_services;
    ContentView* m_contentView;
    QPointer<UserSettingsView> m_settings;
    QPointer<QuickAddView> m_quickAdd;
    SearchSource* m_searchSource;
    SearchPopupView* m_search = nullptr;
};
