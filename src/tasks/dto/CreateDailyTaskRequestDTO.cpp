#include "tasks/dto/CreateDailyTaskRequestDTO.h"

#include "networking/JSONCoding.h"

#include <QJsonObject>

CreateDailyTaskRequestDTO CreateDailyTaskRequestDTO::from(const DailyTaskEntity& dailyTask)
{
    return {JSONCoding::encodeUUID(dailyTask.dtaUserId), dailyTask.dtaDate, dailyTask.dtaTitle};
}

QJsonValue CreateDailyTaskRequestDTO::toJson() const
{
    return QJsonObject {{QStringLiteral("tasUserId"), tasUserId},
        {QStringLiteral("tasDate"), JSONCoding::encodeDate(tasDate)}, {QStringLiteral("tasTitle"), tasTitle}};
}
