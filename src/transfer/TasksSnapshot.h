#pragma once

#include "tasks/entities/BitacoraEntryEntity.h"
#include "tasks/entities/DailyTaskEntity.h"
#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QList>

// Everything of one account's Tasks module (or of one project of it) at one time, in the order
// it must be created again: projects, their lists, the lists' tasks, daily tasks, logbook.
struct TasksSnapshot {
    QList<ProjectEntity> projects;
    QList<TaskListEntity> taskLists;
    QList<TaskEntity> tasks;
    QList<DailyTaskEntity> dailyTasks;
    QList<BitacoraEntryEntity> bitacora;

    qsizetype itemCount() const
    {
        return projects.size() + taskLists.size() + tasks.size() + dailyTasks.size() + bitacora.size();
    }

    friend bool operator==(const TasksSnapshot&, const TasksSnapshot&) = default;
};
