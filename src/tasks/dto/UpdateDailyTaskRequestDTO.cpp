#include "tasks/dto/UpdateDailyTaskRequestDTO.h"

#include <QJsonObject>

UpdateDailyTaskRequestDTO UpdateDailyTaskRequestDTO::from(const DailyTaskEntity& dailyTask)
{
    return {dailyTask.dtaTitle};
}

QJsonValue UpdateDailyTaskRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("tasTitle"), tasTitle}};
}
