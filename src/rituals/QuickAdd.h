#pragma once

#include "tasks/TasksApplicationFactory.h"

#include <QUuid>

// A task added from outside the window (the command line, another launch). For now the text is
// the title as it is; a parser that reads a list, a day or a tag out of it replaces add() alone.
namespace QuickAdd {

struct Outcome {
    bool added = false;
    // Where the task went, or why it went nowhere: shown to the user either way.
    QString notice;
};

// Adds a task titled text to the default list (or, with none marked, the first list) of the
// project preferredProjectId when the user has it, else of the user's first project.
Outcome add(const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& text,
    const QUuid& preferredProjectId = {});

} // namespace QuickAdd
