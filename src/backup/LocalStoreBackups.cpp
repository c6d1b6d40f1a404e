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
};

QList<KnownStore> knownStores()
{
    return {{ProjectsDatabaseSchema::name, ProjectsDatabaseSchema::objectTypes()},
        {TaskListsDatabaseSchema::name, TaskListsDatabaseSchema::objectTypes()},
        {TasksDatabaseSchema::name, TasksDatabaseSchema::objectTypes()},
        {DailyTasksDatabaseSchema::name, DailyTasksDatabaseSchema::objectTypes()},
        {BitacoraDatabaseSchema::name, BitacoraDatabaseSchema::objectTypes()},
        {CalendarProviderDatabaseSchema::name, CalendarProviderDatabaseSchema::objectTypes()}};
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
        const ResultEntity made = configurations.makeConfiguration(
            known.name, RealmStoreDatabase<ProjectsDatabaseSchema>::schemaVersion, [](RealmDatabase&, quint64) {},
            known.objectTypes);
        if (!made.result) {
            qCWarning(lcStorage) << "no backup of" << known.name << ":" << made.firstMessage().value_or(QString());
            return std::nullopt;
        }
        stores.append(*made.dataAs<RealmConfiguration>());
    }
    return StoreBackups(folder.absolutePath(), stores, std::move(clock));
}

} // namespace LocalStoreBackups
