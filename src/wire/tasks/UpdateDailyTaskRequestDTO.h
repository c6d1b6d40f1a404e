#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/daily-tasks/{id}: a rename. The done flag changes only by toggling.
struct UpdateDailyTaskRequestDTO {
    QString tasTitle;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateDailyTaskRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
