#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of PUT /v0/tasks/{id}: the whole task as it should be from now on, so a due date or a
// tag left out is one the task no longer has.
struct UpdateTaskRequestDTO {
    QString tasTitle;
    bool tasIsDone = false;
    std::optional<QDateTime> tasDueDate;
    std::optional<QString> tasEisenhowerTag;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateTaskRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
