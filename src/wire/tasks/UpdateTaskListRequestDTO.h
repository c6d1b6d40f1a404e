#pragma once

#include "wire/JSONWriter.h"

#include <QJsonValue>
#include <QString>

// The body of PUT /v0/task-lists/{id}; a list does not move to another project.
struct UpdateTaskListRequestDTO {
    QString talName;
    QString talDescription;
    bool talIsDefault = false;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateTaskListRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
