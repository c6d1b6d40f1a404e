#include "screens/settings/AutomaticBackupStart.h"

#include "backup/AutomaticBackup.h"
#include "backup/LocalStoreBackups.h"
#include "platform/Logging.h"
#include "platform/SystemClock.h"
#include "screens/common/AppServices.h"

void startAutomaticBackup(const AppServices& services, QObject* owner)
{
    auto* backup = new AutomaticBackup(
        [services] {
            return LocalStoreBackups::make(
                services.storeConfigurations(), services.storeDefaults(), std::make_shared<SystemClock>());
        },
        owner);
    // A failed backup is tried again at the next hourly check; the user reads why in the console.
    QObject::connect(
        backup, &AutomaticBackup::finished, owner, [&console = services.console()](const ResultEntity& result) {
            if (!result.result)
                console.appendLine(QStringLiteral("Backup failed: ") + result.firstMessage().value_or(QString()));
        });
    backup->start();
}
