#include "screens/settings/CalendarSettingsServices.h"

#include "calendar_providers/database/CalendarProviderDatabase.h"
#include "calendar_providers/repositories/EventKitPermissionRepositoryImpl.h"
#include "calendar_providers/repositories/LiveEventStoreAuthorizing.h"
#include "calendar_providers/repositories/LocalRegistryRepositoryImpl.h"
#include "platform/SecretServiceKeychain.h"
#include "platform/SystemSecureRandom.h"
#include "platform/calendar_store/CalendarStore.h"

#include <QProcess>
#include <QStandardPaths>

CalendarSettingsServices CalendarSettingsServices::standard()
{
    return {RealmConfiguration::defaultConfiguration()};
}

CalendarProvidersResultEntity CalendarSettingsServices::registryApplication() const
{
    const RealmEncryptedConfigurationFactory factory(
        std::make_shared<SecretServiceKeychain>(), std::make_shared<SystemSecureRandom>(), storeDefaults);
    const ResultEntity made = CalendarProviderDatabase::make(factory);
    if (!made.result)
        return made;
    return CalendarProvidersResultEntity::success(CalendarProviderRegistryApplication(
        std::make_shared<LocalRegistryRepositoryImpl>(*made.dataAs<CalendarProviderDatabase>()),
        std::make_shared<EventKitPermissionRepositoryImpl>(
            std::make_shared<LiveEventStoreAuthorizing>(CalendarStore::shared())),
        EnabledCalendarAccountsStore::standard()));
}

QStringList DesktopSettings::command(Page page)
{
    // GNOME keeps both pages in its control centre; Plasma has its notification module but no
    // page for the calendar store's accounts.
    if (!QStandardPaths::findExecutable(QStringLiteral("gnome-control-center")).isEmpty()) {
        return {QStringLiteral("gnome-control-center"),
            page == Page::notifications ? QStringLiteral("notifications") : QStringLiteral("online-accounts")};
    }
    if (page == Page::notifications && !QStandardPaths::findExecutable(QStringLiteral("systemsettings")).isEmpty())
        return {QStringLiteral("systemsettings"), QStringLiteral("kcm_notifications")};
    return {};
}

bool DesktopSettings::open(Page page)
{
    QStringList arguments = command(page);
    if (arguments.isEmpty())
        return false;
    const QString program = arguments.takeFirst();
    return QProcess::startDetached(program, arguments);
}
