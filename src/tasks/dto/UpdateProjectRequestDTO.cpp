#include "tasks/dto/UpdateProjectRequestDTO.h"

#include <QJsonObject>

UpdateProjectRequestDTO UpdateProjectRequestDTO::from(const ProjectEntity& project)
{
    return {project.prjName, project.prjDescription, project.prjShowEveryDay};
}

QJsonValue UpdateProjectRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("prjName"), prjName}, {QStringLiteral("prjDescription"), prjDescription},
        {QStringLiteral("prjShowEveryDay"), prjShowEveryDay}};
}
