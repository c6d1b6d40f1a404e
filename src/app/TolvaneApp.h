#pragma once

#include "CommandLine.h"

#include <memory>

class AppServices;
class Appearance;
class DayRituals;
class MainWindow;
class QTranslator;
class StoreMigrationProgress;

// The application: start-up in its order, then the main window.
class TolvaneApp {
public:
    explicit TolvaneApp(const AppServices& services);
    ~TolvaneApp();

    // 1. the alarm start-up hook; 2. with Google sign-in configured, restoring an earlier
    // session in the background (a failure is ignored); 3. the window, shown unless the launch
    // asked for the background; 4. the day's rituals; 5. what the launch asked for.
    void start(const LaunchRequest& request = {});
    // A day to open, a task to add: from this launch or a later one.
    void handle(const LaunchRequest& request);
    MainWindow* window() const { return m_window.get(); }
    DayRituals* rituals() const { return m_rituals.get(); }

    // The texts of the system's language, English when there are none.
    static void installTranslations();

private:
    const AppServices& m_services;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<DayRituals> m_rituals;
    std::unique_ptr<StoreMigrationProgress> m_migrationProgress;
};
