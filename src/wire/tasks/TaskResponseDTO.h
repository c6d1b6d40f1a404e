#pragma once

#include "wire/JSONWriter.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// A task as the backend returns it. Identifiers stay text until the repository reads them, and
// the tag stays the API string: one this version does not know is no tag, not a broken task.
// The optional keys may be missing or null; the backend writes null.
struct TaskResponseDTO {
    QString tasId;
    QString prjId;
    QString talId;
    QString tasTitle;
    bool tasIsDone = false;
    std::optional<QDateTime> tasDueDate;
    std::optional<QString> tasEisenhowerTag;

    // The client's reading: every key is required unless optional; throws DecodingError.
    static TaskResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
