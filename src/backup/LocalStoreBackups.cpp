#include "backup/LocalStoreBackups.h"

#include "calendar_providers/database/CalendarProviderDatabase.h"
#include "platform/Logging.h"
#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"

#include <QDir>
#include <QFileInfo>

namespace {

struct KnownStore {
    QString name;
    QList<RealmObjectType> objectTypes;
    quint64 schemaVersion;
    RealmMigrationBlock migration;
};

// Each store with its own schema version: a copy is opened, and checked, as the store itself is.
template <typename Database> KnownStore known()
{
    return {Database::Store::name, Database::Store::objectTypes(), Database::schemaVersion, Database::migration()};
}

QList<KnownStore> knownStores()
{
    return {known<ProjectsDatabase>(), known<TaskListsDatabase>(), known<TasksDatabase>(), known<DailyTasksDatabase>(),
        known<BitacoraDatabase>(), known<CalendarProviderDatabase>()};
}

} // namespace

namespace LocalStoreBackups {

QStringList storeNames()
{
    QStringList names;
    for (const KnownStore& store : knownStores())
        names.append(store.name);
    return names;
}

std::optional<StoreBackups> make(const RealmEncryptedConfigurationFactory& configurations,
    const RealmConfiguration& storeDefaults, std::shared_ptr<Clock> clock)
{
    const QDir folder = QFileInfo(storeDefaults.files().constFirst()).dir();
    QList<RealmConfiguration> stores;
    for (const KnownStore& known : knownStores()) {
        if (!QFileInfo::exists(folder.filePath(known.name + QStringLiteral(".realm"))))
            continue;
        const ResultEntity made
            = configurations.makeConfiguration(known.name, known.schemaVersion, known.migration, known.objectTypes);
        if (!made.result) {
            qCWarning(lcStorage) << "no backup of" << known.name << ":" << made.firstMessage().value_or(QString());
            return std::nullopt;
        }
        stores.append(*made.dataAs<RealmConfiguration>());
    }
    return StoreBackups(folder.absolutePath(), stores, std::move(clock));
}

} // namespace LocalStoreBackups
