#include "TolvaneApp.h"

#include "AlarmStartupHook.h"
#include "MainWindow.h"
#include "oauth/GIDSignIn.h"
#include "platform/Logging.h"
#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Appearance.h"
#include "screens/common/Async.h"
#include "screens/common/ErrorConsoleStore.h"
#include "screens/settings/AutomaticBackupStart.h"

#include <QCoreApplication>
#include <QLocale>
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

void TolvaneApp::start()
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
    // The storage layer tells when it set an unreadable store aside; the user reads it here.
    NotificationCenter::defaultCenter().addObserver(NotificationName::storeSetAside, m_window.get(),
        [console = &m_services.console()](const QVariant& line) { console->appendLine(line.toString()); });
    m_window->show();
}
