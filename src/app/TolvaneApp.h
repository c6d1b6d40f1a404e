#pragma once

#include <memory>

class AppServices;
class Appearance;
class MainWindow;
class QTranslator;

// The application: start-up in its order, then the main window.
class TolvaneApp {
public:
    explicit TolvaneApp(const AppServices& services);
    ~TolvaneApp();

    // 1. the alarm start-up hook; 2. with Google sign-in configured, restoring an earlier
    // session in the background (a failure is ignored); 3. the window.
    void start();
    MainWindow* window() const { return m_window.get(); }

    // The texts of the system's language, English when there are none.
    static void installTranslations();

private:
    const AppServices& m_services;
    std::unique_ptr<Appearance> m_appearance;
    std::unique_ptr<MainWindow> m_window;
};
