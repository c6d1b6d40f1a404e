#pragma once

#include "wire/JSONWriter.h"
#include "wire/tasks/TaskRecurrenceDTO.h"

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
    // Optional keys a backend of an older version neither sends nor expects: each is sent only
    // when it holds a value, and a missing one reads as none (tasOccurrence as 1).
    std::optional<QDateTime> tasCompletedAt;
    bool tasDueHasTime = false;
    std::optional<qint64> tasOccurrence;
    std::optional<TaskRecurrenceDTO> tasRecurrence;
    std::optional<qint64> tasReminderMinutesBefore;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static UpdateTaskRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
