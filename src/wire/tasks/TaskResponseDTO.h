#pragma once

#include "wire/JSONWriter.h"
#include "wire/tasks/TaskRecurrenceDTO.h"

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
    // Optional keys a backend of an older version neither sends nor expects: each is sent only
    // when it holds a value, and a missing one reads as none (tasOccurrence as 1).
    std::optional<QDateTime> tasCompletedAt;
    bool tasDueHasTime = false;
    std::optional<qint64> tasOccurrence;
    std::optional<TaskRecurrenceDTO> tasRecurrence;
    std::optional<qint64> tasReminderMinutesBefore;

    // The client's reading: every key is required unless optional; throws DecodingError.
    static TaskResponseDTO fromJson(const QJsonValue& json);
    // The server's writing.
    void writeJson(JSONWriter& out) const;
};
