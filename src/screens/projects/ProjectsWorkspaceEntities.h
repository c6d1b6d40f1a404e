#pragma once

#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QList>

// What the projects workspace shows.
struct ProjectWithListsEntity {
    ProjectEntity project;
    QList<TaskListEntity> lists;
};

struct TaskListWithTasksEntity {
    TaskListEntity taskList;
    QList<TaskEntity> tasks;
};

// What the detail pane shows.
// today and upcoming: tasks due across all projects, by day.
enum class ProjectsDetailSelectionEnum { list, project, none, today, upcoming };

enum class TaskListViewModeEnum {
    tasks, // the plain list, "task-list-view-mode-tasks"
    detail, // the Eisenhower matrix, "task-list-view-mode-detail"
};
