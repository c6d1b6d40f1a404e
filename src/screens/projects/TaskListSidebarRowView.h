#pragma once

#include "tasks/entities/TaskListEntity.h"

#include <QFrame>

class InlineEditableLabel;

// One list under its project in the sidebar: click to open it, rename in place, make it the
// default list, delete it.
class TaskListSidebarRowView final : public QFrame {
    Q_OBJECT

public:
    TaskListSidebarRowView(const TaskListEntity& taskList, bool isSelected, bool isDeleting, QWidget* parent = nullptr);

    const TaskListEntity& taskList() const { return m_taskList; }
    void startRenaming();
    void setSelected(bool selected);

Q_SIGNALS:
    void selected(const TaskListEntity& taskList);
    void renameRequested(const TaskListEntity& taskList, const QString& name);
    void setDefaultRequested(const TaskListEntity& taskList);
    void deleteRequested(const TaskListEntity& taskList);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    TaskListEntity m_taskList;
    InlineEditableLabel* m_name;
};
