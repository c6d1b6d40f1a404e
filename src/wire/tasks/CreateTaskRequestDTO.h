#pragma once

#include "wire/JSONWriter.h"
#include "wire/tasks/TaskRecurrenceDTO.h"

#include <QDateTime>
#include <QJsonValue>
#include <QString>

#include <optional>

// The body of POST /v0/tasks. A new task is never done, so that does not travel. The optional keys are left out when
// they have no value; the tag is its API string ("urgent_important", ...).
struct CreateTaskRequestDTO {
    QString prjId;
    QString talId;
    QString tasTitle;
    std::optional<QDateTime> tasDueDate;
    std::optional<QString> tasEisenhowerTag;
    // Optional keys a backend of an older version neither sends nor expects: each is sent only
    // when it holds a value, and a missing one reads as none (tasOccurrence as 1).
    std::optional<QDateTime> tasCompletedAt;
    bool tasDueHasTime = false;
    std::optional<qint64> tasOccurrence;
    std::optional<TaskRecurrenceDTO> tasRecurrence;
    std::optional<qint64> tasReminderMinutesBefore;
    // The identifier the client chose (an undone delete brings the task back under its old one);
    // empty: the backend chooses.
    std::optional<QString> tasId;

    // The server's reading: strict, a key it does not know is an error; throws DecodingError.
    static CreateTaskRequestDTO fromJson(const QJsonValue& json);
    // The client's writing.
    void writeJson(JSONWriter& out) const;
};
