#include "tasks/dto/UpdateTaskListRequestDTO.h"

#include <QJsonObject>

UpdateTaskListRequestDTO UpdateTaskListRequestDTO::from(const TaskListEntity& taskList)
{
    return {taskList.talName, taskList.talDescription, taskList.talIsDefault};
}

QJsonValue UpdateTaskListRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("talName"), talName}, {QStringLiteral("talDescription"), talDescription},
        {QStringLiteral("talIsDefault"), talIsDefault}};
}
