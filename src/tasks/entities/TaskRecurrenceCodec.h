#pragma once

#include "tasks/entities/TaskRecurrenceEntity.h"

#include <QJsonObject>

#include <optional>

// A repetition rule as a JSON object, the one form the local store, the export file and the
// backend's column keep it in:
//   {"frequency": "weekly", "interval": 2, "weekdays": [1, 3], "anchor": "dueDate",
//    "monthDay": -1, "weekdayOrdinal": -1, "ordinalWeekday": 5, "endAfterCount": 10,
//    "endOnDate": "2027-06-30"}
// Keys holding their default are left out.
namespace TaskRecurrenceCodec {

QJsonObject toJson(const TaskRecurrenceEntity& rule);
// Nothing when the object is not a rule this version can follow (an unknown frequency, say):
// such a task then simply does not repeat here.
std::optional<TaskRecurrenceEntity> fromJson(const QJsonObject& json);

// The object as compact text, for a text column.
QString toText(const TaskRecurrenceEntity& rule);
std::optional<TaskRecurrenceEntity> fromText(const QString& text);

} // namespace TaskRecurrenceCodec
