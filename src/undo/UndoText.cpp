#include "undo/UndoHistory.h"

#include <QCoreApplication>

namespace {

QString verb(TaskChangeVerbEnum verb)
{
    switch (verb) {
    case TaskChangeVerbEnum::add:
        //% "add"
        return qtTrId("undo-verb-add");
    case TaskChangeVerbEnum::edit:
        //% "edit"
        return qtTrId("undo-verb-edit");
    case TaskChangeVerbEnum::complete:
        //% "complete"
        return qtTrId("undo-verb-complete");
    case TaskChangeVerbEnum::reopen:
        //% "reopen"
        return qtTrId("undo-verb-reopen");
    case TaskChangeVerbEnum::setTag:
        //% "change quadrant of"
        return qtTrId("undo-verb-set-tag");
    case TaskChangeVerbEnum::setDefault:
        //% "make default"
        return qtTrId("undo-verb-set-default");
    case TaskChangeVerbEnum::move:
        //% "move"
        return qtTrId("undo-verb-move");
    case TaskChangeVerbEnum::delete_:
    case TaskChangeVerbEnum::deleteCompleted:
        //% "delete"
        return qtTrId("undo-verb-delete");
    }
    return {};
}

QString noun(TaskChangeSubjectEnum subject)
{
    switch (subject) {
    case TaskChangeSubjectEnum::project:
        //% "project"
        return qtTrId("undo-noun-project");
    case TaskChangeSubjectEnum::taskList:
        //% "list"
        return qtTrId("undo-noun-task-list");
    case TaskChangeSubjectEnum::task:
        //% "task"
        return qtTrId("undo-noun-task");
    case TaskChangeSubjectEnum::dailyTask:
        //% "daily task"
        return qtTrId("undo-noun-daily-task");
    case TaskChangeSubjectEnum::bitacoraEntry:
        //% "logbook entry"
        return qtTrId("undo-noun-bitacora-entry");
    }
    return {};
}

} // namespace

QString UndoText::describe(const TasksChange& change)
{
    if (change.verb == TaskChangeVerbEnum::deleteCompleted) {
        //% "delete completed tasks (%1)"
        return qtTrId("undo-delete-completed").arg(change.before.tasks.size());
    }
    //% "%1 %2 '%3'"
    return qtTrId("undo-action").arg(verb(change.verb), noun(change.subject), change.name);
}

QString UndoText::describeEvent(TaskChangeVerbEnum change, const QString& title)
{
    //% "event"
    return qtTrId("undo-action").arg(verb(change), qtTrId("undo-noun-event"), title);
}

QString UndoText::undoAction(const QString& text)
{
    //% "Undo"
    if (text.isEmpty())
        return qtTrId("undo-menu-undo");
    //% "Undo %1"
    return qtTrId("undo-menu-undo-action").arg(text);
}

QString UndoText::redoAction(const QString& text)
{
    //% "Redo"
    if (text.isEmpty())
        return qtTrId("undo-menu-redo");
    //% "Redo %1"
    return qtTrId("undo-menu-redo-action").arg(text);
}

QString UndoText::deletedNotice(const TasksChange& change)
{
    if (change.verb == TaskChangeVerbEnum::deleteCompleted) {
        //% "Deleted completed tasks (%1)"
        return qtTrId("undo-notice-deleted-completed").arg(change.before.tasks.size());
    }
    //% "Deleted %1 '%2'"
    return qtTrId("undo-notice-deleted").arg(noun(change.subject), change.name);
}

QString UndoText::changedElsewhereUndo(const QString& text)
{
    //% "Can't undo %1: it was changed elsewhere since. Nothing was changed."
    return qtTrId("undo-changed-elsewhere").arg(text);
}

QString UndoText::changedElsewhereRedo(const QString& text)
{
    //% "Can't redo %1: it was changed elsewhere since. Nothing was changed."
    return qtTrId("redo-changed-elsewhere").arg(text);
}

QString UndoText::failed(const QString& reason)
{
    //% "Could not finish: %1"
    return qtTrId("undo-failed").arg(reason);
}
