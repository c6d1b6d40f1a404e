#pragma once

#include "transfer/TasksSnapshot.h"

#include <QMap>
#include <QString>

// The logbook as Markdown: one file per project ("<project>.md"), a section per day, oldest
// first, each day's entries in their stored order.
namespace BitacoraMarkdownExport {

// File name -> text. Names are the projects' names made safe for a file system, unique.
QMap<QString, QString> files(const TasksSnapshot& snapshot);

} // namespace BitacoraMarkdownExport
