#pragma once

#include "networking/APIClient.h"
#include "storage/RealmEncryptedConfigurationFactory.h"
#include "tasks/applications/BitacoraApplication.h"
#include "tasks/applications/DailyTasksApplication.h"
#include "tasks/applications/ProjectsApplication.h"
#include "tasks/applications/TaskAgendaApplication.h"
#include "tasks/applications/TaskListsApplication.h"
#include "tasks/applications/TasksApplication.h"

#include <optional>

// Builds the Tasks module for the signed-in account: the encrypted local stores for a local
// account, the backend for a Google account. The screens get the same applications either
// way and cannot tell which storage is behind them.
class TasksApplicationFactory {
public:
    struct Applications {
        ProjectsApplication projects;
        TaskListsApplication taskLists;
        TasksApplication tasks;
        DailyTasksApplication dailyTasks;
        BitacoraApplication bitacora;
        TaskAgendaApplication agenda;
    };

    explicit TasksApplicationFactory(RealmEncryptedConfigurationFactory storeConfigurations);

    // data: Applications. The applications share one repository object of each kind. No store
    // is opened here: a damaged file is found, and recreated, at its first operation.
    TaskResultEntity make(bool isGoogleAccount, const std::optional<APIClient>& apiClient) const;

private:
    TaskResultEntity makeRemote(const std::optional<APIClient>& apiClient) const;
    TaskResultEntity makeLocal() const;

    RealmEncryptedConfigurationFactory m_storeConfigurations;
};
