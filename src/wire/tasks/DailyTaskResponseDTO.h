#pragma once

#include "wire/JSONWriter.h"

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

    // The client's reading: every key is required unless optional; throws DecodingError.
    static DailyTaskResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
