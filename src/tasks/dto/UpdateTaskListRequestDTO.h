#pragma once

#include "tasks/entities/TaskListEntity.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/task-lists/{id}; a list does not move to another project.
struct UpdateTaskListRequestDTO {
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    static UpdateTaskListRequestDTO from(const TaskListEntity& taskList);
    QJsonValue toJson() const;
};
