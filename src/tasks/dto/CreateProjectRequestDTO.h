#pragma once

#include "tasks/entities/ProjectEntity.h"

#include <QJsonValue>
#include <QString>

// The body of POST /v0/projects. It names no prjId: the backend assigns one.
struct CreateProjectRequestDTO {
    QString prjUserId;
    QString prjName;
    QString prjDescription;
    bool prjShowEveryDay = false;

    static CreateProjectRequestDTO from(const ProjectEntity& project);
    QJsonValue toJson() const;
};
