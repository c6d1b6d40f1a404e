#include "TolvaneApp.h"

#include "AlarmStartupHook.h"
#include "ContentView.h"
#include "DayRituals.h"
#include "MainWindow.h"
#include "oauth/GIDSignIn.h"
#include "platform/Logging.h"
#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Appearance.h"
#include "screens/common/Async.h"
#include "screens/common/ErrorConsoleStore.h"
#include "screens/common/StoreMigrationProgress.h"
#include "screens/settings/AutomaticBackupStart.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSystemTrayIcon>
#include <QTranslator>

TolvaneApp::TolvaneApp(const AppServices& services)
    : m_services(services)
{
}

TolvaneApp::~TolvaneApp() = default;

void TolvaneApp::installTranslations()
{
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(), QStringLiteral("tolvane"), QStringLiteral("_"), QStringLiteral(":/i18n"))
        || translator->load(QStringLiteral(":/i18n/tolvane_en")))
        QCoreApplication::installTranslator(translator);
}

void TolvaneApp::start(const LaunchRequest& request)
{
    runAlarmStartupHook(m_services);
    startAutomaticBackup(m_services, QCoreApplication::instance());
    if (GIDSignIn* signIn = m_services.signIn()) {
        runAsync(
            QCoreApplication::instance(),
            [signIn] {
                try {
                    signIn->restorePreviousSignIn();
                    return true;
                } catch (const std::exception& error) {
                    qCInfo(lcLogin) << "no earlier Google session:" << error.what();
                    return false;
                }
            },
            [](bool) {});
    }
    m_appearance = std::make_unique<Appearance>();
    m_appearance->apply();
    m_appearance->followChoice(m_services.userDefaults(), m_services.notificationCenter());
    m_window = std::make_unique<MainWindow>(m_services);
    // Migrations begin with the first reads of the stores, which the window starts; their
    // notices arrive once the event loop runs.
    m_migrationProgress = std::make_unique<StoreMigrationProgress>(m_services.notificationCenter(), m_window.get());
    // The storage layer tells when it set an unreadable store aside; the user reads it here.
    NotificationCenter::defaultCenter().addObserver(NotificationName::storeSetAside, m_window.get(),
        [console = &m_services.console()](const QVariant& line) { console->appendLine(line.toString()); });
    m_rituals = std::make_unique<DayRituals>(m_services, m_window.get());
    if (request.background) {
        // Started at login: the tray holds Tolvane; a desktop without one gets the window
        // minimised, since an invisible process could only be reached by launching it again.
        keepInTray(true);
        if (!QSystemTrayIcon::isSystemTrayAvailable())
            m_window->showMinimized();
    } else {
        m_window->show();
    }
    m_rituals->atStart(request.background);
    handle(request);
}

void TolvaneApp::handle(const LaunchRequest& request)
{
    if (request.date) {
        qCInfo(lcApp) << "opening the schedule on" << request.date->toString(Qt::ISODate);
        m_window->contentView()->openDate(*request.date);
    }
    if (request.quickAddText)
        m_rituals->quickAdd(*request.quickAddText);
}
