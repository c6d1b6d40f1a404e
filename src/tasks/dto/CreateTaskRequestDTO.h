#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/tasks. A new task is never done and gets its tasId from the backend, so
// neither travels.
struct CreateTaskRequestDTO {
    QString prjId;
    QString talId;
    QString tasTitle;
    std::optional<QDateTime> tasDueDate;
    // The tag's API string ("urgent_important", ...).
    std::optional<QString> tasEisenhowerTag;

    static CreateTaskRequestDTO from(const TaskEntity& task);
    // The optional keys are left out when they have no value.
    QJsonValue toJson() const;
};
