#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QDate>
#include <QHash>
#include <QWidget>

class TaskActions;

// The body of "Today" (overdue tasks, then today's) or "Upcoming" (the next seven days, one group
// per day that has tasks): the usual task rows, each with the project and list it lives in.
class TaskDaysContentView final : public QWidget {
    Q_OBJECT

public:
    // tasks: open and due, soonest first; places: "Project › List" by list.
    TaskDaysContentView(ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks, const QDate& today,
        const QHash<QUuid, QString>& places, TaskActions& actions, QWidget* parent = nullptr);

    // The tasks each view holds, of the tasks due up to a week from today.
    static QList<TaskEntity> inView(
        ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks, const QDate& today);
    // The heading of a day of "Upcoming": "Tomorrow" or the weekday, then the date.
    static QString dayHeading(const QDate& day, const QDate& today);
};
