#include "tasks/dto/CreateProjectRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

CreateProjectRequestDTO CreateProjectRequestDTO::from(const ProjectEntity& project)
{
    return {
        JSONCoding::encodeUUID(project.prjUserId), project.prjName, project.prjDescription, project.prjShowEveryDay};
}

QJsonValue CreateProjectRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("prjUserId"), prjUserId}, {QStringLiteral("prjName"), prjName},
        {QStringLiteral("prjDescription"), prjDescription}, {QStringLiteral("prjShowEveryDay"), prjShowEveryDay}};
}
