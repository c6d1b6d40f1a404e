#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>

// A daily task as the backend returns it, under `tas` keys; identifiers stay text until the
// repository reads them.
struct DailyTaskResponseDTO {
    QString tasId;
    QString tasUserId;
    QDateTime tasDate;
    QString tasTitle;
    bool tasIsDone = false;

    // Every key is required; throws DecodingError.
    static DailyTaskResponseDTO fromJson(const QJsonValue& json);
};
