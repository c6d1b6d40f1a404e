#pragma once

#include "transfer/TasksSnapshot.h"

#include <QByteArray>
#include <QString>

#include <optional>

// The JSON file an export writes and an import reads: every field of every record, ids included,
// times in UTC ISO 8601 with milliseconds.
namespace TasksJsonFormat {

inline const QString formatName = QStringLiteral("tolvane-tasks");
inline constexpr int version = 1;

QByteArray write(const TasksSnapshot& snapshot);
// Nothing when the text is not such a file; why goes into error.
std::optional<TasksSnapshot> read(const QByteArray& json, QString* error = nullptr);

} // namespace TasksJsonFormat
