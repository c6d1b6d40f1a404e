#pragma once

#include <QJsonValue>
#include <QString>

// A task list as the backend returns it; identifiers stay text until the repository reads them.
struct TaskListResponseDTO {
    QString talId;
    QString prjId;
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    // Every key is required; throws DecodingError.
    static TaskListResponseDTO fromJson(const QJsonValue& json);
};
