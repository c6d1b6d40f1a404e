#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QFrame>

class QLabel;

// "Today" or "Upcoming" at the top of the sidebar, with how many tasks it holds: click, Enter or
// Space opens it in the detail pane.
class TaskDayViewSidebarRowView final : public QFrame {
    Q_OBJECT

public:
    TaskDayViewSidebarRowView(ProjectsDetailSelectionEnum view, QWidget* parent = nullptr);

    ProjectsDetailSelectionEnum view() const { return m_view; }
    // overdue: how many of count are late, which the count then says in red.
    void setCount(int count, int overdue = 0);
    int count() const { return m_countValue; }
    void setSelected(bool selected);

Q_SIGNALS:
    void selected(ProjectsDetailSelectionEnum view);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    ProjectsDetailSelectionEnum m_view;
    QLabel* m_count;
    int m_countValue = 0;
};
