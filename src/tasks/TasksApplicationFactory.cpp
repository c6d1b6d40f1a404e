#include "tasks/TasksApplicationFactory.h"

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
#include "tasks/repositories/remote/RemoteBitacoraRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteDailyTaskRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteProjectRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskListRepositoryImpl.h"
#include "tasks/repositories/remote/RemoteTaskRepositoryImpl.h"

namespace {

const QString noGoogleConnection = QStringLiteral("No hay conexión configurada para la cuenta de Google");
const QString noLocalDatabase = QStringLiteral("No se pudo abrir la base de datos local");

TaskResultEntity bundle(std::shared_ptr<ProjectRepository> projects, std::shared_ptr<TaskListRepository> taskLists,
    std::shared_ptr<TaskRepository> tasks, std::shared_ptr<DailyTaskRepository> dailyTasks,
    std::shared_ptr<BitacoraRepository> bitacora)
{
    return TaskResultEntity::success(TasksApplicationFactory::Applications {
        ProjectsApplication(projects, taskLists),
        TaskListsApplication(taskLists, projects, tasks),
        TasksApplication(tasks, taskLists),
        DailyTasksApplication(dailyTasks),
        BitacoraApplication(bitacora),
        TaskAgendaApplication(projects, taskLists, tasks),
    });
}

} // namespace

TasksApplicationFactory::TasksApplicationFactory(RealmEncryptedConfigurationFactory storeConfigurations)
    : m_storeConfigurations(std::move(storeConfigurations))
{
}

TaskResultEntity TasksApplicationFactory::make(bool isGoogleAccount, const std::optional<APIClient>& apiClient) const
{
    return isGoogleAccount ? makeRemote(apiClient) : makeLocal();
}

TaskResultEntity TasksApplicationFactory::makeRemote(const std::optional<APIClient>& apiClient) const
{
    if (!apiClient)
        return TaskResultEntity::infrastructureFailure(noGoogleConnection);
    return bundle(std::make_shared<RemoteProjectRepositoryImpl>(*apiClient),
        std::make_shared<RemoteTaskListRepositoryImpl>(*apiClient),
        std::make_shared<RemoteTaskRepositoryImpl>(*apiClient),
        std::make_shared<RemoteDailyTaskRepositoryImpl>(*apiClient),
        std::make_shared<RemoteBitacoraRepositoryImpl>(*apiClient));
}

TaskResultEntity TasksApplicationFactory::makeLocal() const
{
    // Every store's key is looked up (and made on first use) before any is used, in this order;
    // which one failed is not passed on.
    const TaskResultEntity projects = ProjectsDatabase::make(m_storeConfigurations);
    const TaskResultEntity taskLists = TaskListsDatabase::make(m_storeConfigurations);
    const TaskResultEntity tasks = TasksDatabase::make(m_storeConfigurations);
    const TaskResultEntity dailyTasks = DailyTasksDatabase::make(m_storeConfigurations);
    const TaskResultEntity bitacora = BitacoraDatabase::make(m_storeConfigurations);
    for (const TaskResultEntity* made : {&projects, &taskLists, &tasks, &dailyTasks, &bitacora}) {
        if (!made->result)
            return TaskResultEntity::infrastructureFailure(noLocalDatabase);
    }
    return bundle(std::make_shared<LocalProjectRepositoryImpl>(*projects.dataAs<ProjectsDatabase>()),
        std::make_shared<LocalTaskListRepositoryImpl>(*taskLists.dataAs<TaskListsDatabase>()),
        std::make_shared<LocalTaskRepositoryImpl>(*tasks.dataAs<TasksDatabase>()),
        std::make_shared<LocalDailyTaskRepositoryImpl>(*dailyTasks.dataAs<DailyTasksDatabase>()),
        std::make_shared<LocalBitacoraRepositoryImpl>(*bitacora.dataAs<BitacoraDatabase>()));
}
