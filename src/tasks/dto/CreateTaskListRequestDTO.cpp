#include "tasks/dto/CreateTaskListRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

CreateTaskListRequestDTO CreateTaskListRequestDTO::from(const TaskListEntity& taskList)
{
    return {JSONCoding::encodeUUID(taskList.prjId), taskList.talName, taskList.talDescription, taskList.talIsDefault};
}

QJsonValue CreateTaskListRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("prjId"), prjId}, {QStringLiteral("talName"), talName},
        {QStringLiteral("talDescription"), talDescription}, {QStringLiteral("talIsDefault"), talIsDefault}};
}
