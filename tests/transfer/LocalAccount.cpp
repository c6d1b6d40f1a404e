#include "LocalAccount.h"

#include "tasks/database/BitacoraDatabase.h"
#include "tasks/database/DailyTasksDatabase.h"
#include "tasks/database/ProjectsDatabase.h"
#include "tasks/database/TaskListsDatabase.h"
#include "tasks/database/TasksDatabase.h"
#include "tasks/repositories/local/LocalBitacoraRepositoryImpl.h"
#include "tasks/repositories/local/LocalDailyTaskRepositoryImpl.h"
#include "tasks/repositories/local/LocalProjectRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskListRepositoryImpl.h"
#include "tasks/repositories/local/LocalTaskRepositoryImpl.h"

namespace {

template <typename Database> Database storeIn(const QTemporaryDir& folder, char keyByte)
{
    RealmConfiguration configuration;
    configuration.fileURL = folder.filePath(Database::Store::name + QStringLiteral(".realm"));
    configuration.encryptionKey = QByteArray(64, keyByte);
    configuration.schemaVersion = Database::schemaVersion;
    configuration.objectTypes = Database::Store::objectTypes();
    return Database {configuration};
}

} // namespace

LocalAccount::LocalAccount(char keyByte)
{
    repositories = {std::make_shared<LocalProjectRepositoryImpl>(storeIn<ProjectsDatabase>(folder, keyByte)),
        std::make_shared<LocalTaskListRepositoryImpl>(storeIn<TaskListsDatabase>(folder, keyByte)),
        std::make_shared<LocalTaskRepositoryImpl>(storeIn<TasksDatabase>(folder, keyByte)),
        std::make_shared<LocalDailyTaskRepositoryImpl>(storeIn<DailyTasksDatabase>(folder, keyByte)),
        std::make_shared<LocalBitacoraRepositoryImpl>(storeIn<BitacoraDatabase>(folder, keyByte))};
}
