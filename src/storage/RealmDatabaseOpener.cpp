#include "storage/RealmDatabaseOpener.h"

#include "platform/Logging.h"
#include "storage/RealmDatabase.h"

ResultEntity RealmDatabaseOpener::open(const RealmConfiguration& configuration)
{
    QString firstError;
    try {
        return ResultEntity::success(RealmDatabase::open(configuration));
    } catch (const RealmError& error) {
        firstError = error.localizedDescription();
    }
    qCWarning(lcStorage) << "opening" << configuration.files().constFirst() << "failed:" << firstError
                         << "- recreating the store";

    try {
        RealmDatabase::deleteFiles(configuration);
    } catch (const RealmError& error) {
        return ResultEntity::databaseFailure(QStringLiteral("Open failed (%1) and the recovery delete also failed: %2")
                                                 .arg(firstError, error.localizedDescription()));
    }

    try {
        return ResultEntity::success(RealmDatabase::open(configuration));
    } catch (const RealmError& error) {
        return ResultEntity::databaseFailure(
            QStringLiteral("Open failed (%1); recreated the file but it still failed to open: %2")
                .arg(firstError, error.localizedDescription()));
    }
}
