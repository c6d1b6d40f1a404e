#pragma once

#include "tasks/repositories/BitacoraRepository.h"
#include "tasks/repositories/DailyTaskRepository.h"
#include "tasks/repositories/ProjectRepository.h"
#include "tasks/repositories/TaskListRepository.h"
#include "tasks/repositories/TaskRepository.h"

#include <memory>

// The five repositories of one account, local stores or backend alike: what exports read from
// and imports write to.
struct TasksRepositories {
    std::shared_ptr<ProjectRepository> projects;
    std::shared_ptr<TaskListRepository> taskLists;
    std::shared_ptr<TaskRepository> tasks;
    std::shared_ptr<DailyTaskRepository> dailyTasks;
    std::shared_ptr<BitacoraRepository> bitacora;
};
