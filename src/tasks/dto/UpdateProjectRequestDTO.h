#pragma once

#include "tasks/entities/ProjectEntity.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/projects/{id}: the project's editable fields; the owner never changes.
struct UpdateProjectRequestDTO {
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    static UpdateProjectRequestDTO from(const ProjectEntity& project);
    QJsonValue toJson() const;
};
