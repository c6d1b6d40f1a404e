#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QWidget>

class TaskActions;

// One list in a project's overview: a header that opens the list, and its tasks, folded away
// unless expanded.
class ProjectOverviewListSectionView final : public QWidget {
    Q_OBJECT

public:
    ProjectOverviewListSectionView(
        const TaskListWithTasksEntity& item, TaskActions& actions, bool isExpanded, QWidget* parent = nullptr);

Q_SIGNALS:
    void expandedChanged(const QUuid& taskListId, bool expanded);
    void openList(const TaskListEntity& taskList);
};
