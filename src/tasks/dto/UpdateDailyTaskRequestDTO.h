#pragma once

#include "tasks/entities/DailyTaskEntity.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/daily-tasks/{id}: a rename. The done flag changes only by toggling.
struct UpdateDailyTaskRequestDTO {
    QString tasTitle;

    static UpdateDailyTaskRequestDTO from(const DailyTaskEntity& dailyTask);
    QJsonValue toJson() const;
};
