#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

// What search finds, in the order its groups are shown.
enum class SearchKind { project, taskList, task, dailyTask, logbook, meet };

inline constexpr SearchKind allSearchKinds[] = {SearchKind::project, SearchKind::taskList, SearchKind::task,
    SearchKind::dailyTask, SearchKind::logbook, SearchKind::meet};

// One thing search can find, with what it takes to open it where it lives.
struct SearchItem {
    SearchKind kind = SearchKind::project;
    // What is matched and shown: a name, a title, a logbook entry's text.
    QString text;
    // Where it lives, shown under it: "Project · List", a day.
    QString context;
    // The project of a project, list, task or logbook entry; the list of a list or a task.
    QUuid projectId;
    QUuid taskListId;
    // The task, the daily task or the logbook entry itself.
    QUuid itemId;
    // The day of a daily task or a logbook entry; the start of a meet.
    QDateTime date;
};
