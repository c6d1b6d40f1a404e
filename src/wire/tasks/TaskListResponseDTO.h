#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// A task list as the backend returns it; identifiers stay text until the repository reads them.
struct TaskListResponseDTO {
    QString talId;
    QString prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    // The client's reading: every key is required unless optional; throws DecodingError.
    static TaskListResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
