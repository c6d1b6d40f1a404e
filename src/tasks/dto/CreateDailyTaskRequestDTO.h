#pragma once

#include "tasks/entities/DailyTaskEntity.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// The body of POST /v0/daily-tasks. On the wire daily tasks use the `tas` prefix.
struct CreateDailyTaskRequestDTO {
    QString tasUserId;
    QDateTime tasDate;
    QString tasTitle;

    static CreateDailyTaskRequestDTO from(const DailyTaskEntity& dailyTask);
    QJsonValue toJson() const;
};
