#pragma once

#include "tasks/entities/EisenhowerTagEnum.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

#include <optional>

struct TaskEntity {
    QUuid tasId = QUuid::createUuid();
    // The project of its list, kept on the task so a project's tasks are found directly.
    QUuid prjId;
    QUuid talId;
    QString tasTitle;
    bool tasIsDone = false;
    std::optional<QDateTime> tasDueDate;
    std::optional<EisenhowerTagEnum> tasEisenhowerTag;

    friend bool operator==(const TaskEntity&, const TaskEntity&) = default;
};
