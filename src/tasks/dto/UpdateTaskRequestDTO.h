#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of PUT /v0/tasks/{id}: the whole task as it should be from now on, so a due date or a
// tag left out is one the task no longer has.
struct UpdateTaskRequestDTO {
    QString tasTitle;
    bool tasIsDone = false;
    std::optional<QDateTime> tasDueDate;
    // The tag's API string ("urgent_important", ...).
    std::optional<QString> tasEisenhowerTag;

    static UpdateTaskRequestDTO from(const TaskEntity& task);
    // Title and done flag always; the optional keys only when they have a value.
    QJsonValue toJson() const;
};
