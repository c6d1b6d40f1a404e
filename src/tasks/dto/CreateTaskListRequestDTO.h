#pragma once

#include "tasks/entities/TaskListEntity.h"

#include <QJsonValue>
#include <QString>

// The body of POST /v0/task-lists; the backend assigns talId.
struct CreateTaskListRequestDTO {
    QString prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    static CreateTaskListRequestDTO from(const TaskListEntity& taskList);
    QJsonValue toJson() const;
};
