#pragma once

#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QWidget>

class InlineAddRowView;
class TaskActions;

// A list's tasks as a list: open tasks, the add row, then the completed ones, folded away
// unless opened.
class TaskListContentView final : public QWidget {
    Q_OBJECT

public:
    TaskListContentView(const TaskListEntity& taskList, const QList<TaskEntity>& tasks, TaskActions& actions,
        bool isCompletedExpanded, QWidget* parent = nullptr);

    InlineAddRowView* addRow() const { return m_addRow; }

Q_SIGNALS:
    void completedExpandedChanged(bool expanded);

private:
    InlineAddRowView* m_addRow;
};
