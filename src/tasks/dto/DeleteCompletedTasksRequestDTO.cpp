#include "tasks/dto/DeleteCompletedTasksRequestDTO.h"

#include <QJsonObject>

QJsonValue DeleteCompletedTasksRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("confirm"), confirm}};
}
