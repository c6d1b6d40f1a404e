#pragma once

#include "quickadd/QuickAddParser.h"
#include "tasks/TasksApplicationFactory.h"

#include <QUuid>

#include <optional>

// A task typed in one line, from the quick-add window, the command line or another launch: the
// line is read by QuickAddParser, so "#Home" files it in that project, "/Errands" in that list and
// "tomorrow at 9" gives it its due date.
namespace QuickAdd {

// The user's projects and their lists, what #Project and /List are matched against.
struct Catalogue {
    QList<ProjectEntity> projects;
    // By project id, in the store's order.
    QHash<QUuid, QList<TaskListEntity>> lists;
    // Empty when everything was read.
    QString failure;

    QList<QuickAddParser::ProjectNames> names() const;
    // Empty for a project the user does not have (or no longer has).
    QString nameOf(const QUuid& projectId) const;
};

// Blocking: reads every project's lists.
Catalogue catalogue(const TasksApplicationFactory::Applications& applications, const QUuid& userId);

struct Outcome {
    bool added = false;
    // Where the task went, or why it went nowhere: shown to the user either way.
    QString notice;
    // The task as it was handed to the store, when it was.
    std::optional<TaskEntity> task;
};

// What the user has open where the line is typed: a project, and maybe one of its lists.
struct OpenPlace {
    QUuid projectId;
    QUuid listId;
};

// Adds the task that text describes. A line that names neither project nor list goes to the list
// open, else to the open project's default list, else to the first project's. A /List alone is
// one of the open project's lists when it has one of that name, else the list of that name in
// another project; a #Project goes to that project's default list unless a /List follows. A
// project's default list is the one marked so, or with none marked its first. A #Project or /List
// that the user does not have, or a line with nothing left for a title, adds nothing and says
// why. options.projects and options.openProject are filled in here; its reference time and
// taken-back phrases are used as given.
Outcome add(const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& text,
    const OpenPlace& open = {}, QuickAddParser::Options options = {});

} // namespace QuickAdd
