#pragma once

#include "transfer/TasksSnapshot.h"

#include <QString>

// The tasks of a snapshot as CSV, one row per task with its project's and list's names beside
// the ids, for spreadsheets and other task programs.
namespace TasksCsvExport {

QStringList header();
QString write(const TasksSnapshot& snapshot);

} // namespace TasksCsvExport
