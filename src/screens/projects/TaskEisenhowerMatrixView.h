#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QWidget>

class TaskActions;

// The open tasks of a list in the four quadrants (do, plan / delegate, delete), the untagged
// ones below them. A task dropped on a quadrant takes its tag.
class TaskEisenhowerMatrixView final : public QWidget {
    Q_OBJECT

public:
    TaskEisenhowerMatrixView(
        const QList<TaskEntity>& tasks, TaskActions& actions, bool isCompletedExpanded, QWidget* parent = nullptr);

Q_SIGNALS:
    void completedExpandedChanged(bool expanded);
};
