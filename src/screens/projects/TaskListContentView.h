#pragma once

#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QWidget>

class InlineAddRowView;
class QVBoxLayout;
class TaskActions;

// A list's tasks as a list: open tasks, the add row, then the completed ones, folded away
// unless opened. It stays while the tasks change; only the task rows are rebuilt, so the add
// row keeps the focus, the text being typed and the entries waiting to be stored.
class TaskListContentView final : public QWidget {
    Q_OBJECT

public:
    TaskListContentView(TaskActions& actions, QWidget* parent = nullptr);

    void setTasks(const TaskListEntity& taskList, const QList<TaskEntity>& tasks, bool isCompletedExpanded);
    const TaskListEntity& taskList() const { return m_taskList; }
    InlineAddRowView* addRow() const { return m_addRow; }

Q_SIGNALS:
    void completedExpandedChanged(bool expanded);

private:
    void replace(QWidget*& current, QWidget* next, int index);

    TaskActions& m_actions;
    TaskListEntity m_taskList;
    QVBoxLayout* m_layout;
    QWidget* m_openTasks = nullptr;
    QWidget* m_completedTasks = nullptr;
    InlineAddRowView* m_addRow;
};
