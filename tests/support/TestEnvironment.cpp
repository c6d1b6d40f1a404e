#include "support/TestEnvironment.h"

#include <QApplication>
#include <QLocale>
#include <QStyleFactory>

#include <cstdlib>
#include <ctime>

namespace TestEnvironment {

void pinBeforeApplication()
{
    const QByteArray chosen = qgetenv(timeZoneOverride);
    qputenv("TZ", chosen.isEmpty() ? QByteArray(timeZone) : chosen);
    tzset();
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANG", "C.UTF-8");
    qputenv("LANGUAGE", "en");
}

void pinAfterApplication()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QCoreApplication::setOrganizationName(QStringLiteral("Quorvel"));
    QCoreApplication::setApplicationName(QStringLiteral("TolvaneTests"));
}

void pinWidgetStyle()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
}

} // namespace TestEnvironment
