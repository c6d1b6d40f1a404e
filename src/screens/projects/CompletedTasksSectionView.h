#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QWidget>

class TaskActions;

// "Completed (n)", folded away unless opened; nothing at all when no task is done.
class CompletedTasksSectionView final : public QWidget {
    Q_OBJECT

public:
    CompletedTasksSectionView(
        const QList<TaskEntity>& tasks, TaskActions& actions, bool isExpanded, QWidget* parent = nullptr);

Q_SIGNALS:
    void expandedChanged(bool expanded);
};
