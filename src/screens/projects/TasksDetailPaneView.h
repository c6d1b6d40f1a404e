#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QPointer>
#include <QSet>
#include <QWidget>

class InlineAddRowView;
class QLabel;
class QScrollArea;
class QStackedWidget;
class QToolButton;
class TaskActions;
class TaskListContentView;

// The right side of the projects workspace: a placeholder, a project's overview, one list's
// tasks as a list or as the Eisenhower matrix, or the tasks due today or in the coming days.
class TasksDetailPaneView final : public QWidget {
    Q_OBJECT

public:
    explicit TasksDetailPaneView(TaskActions& actions, QWidget* parent = nullptr);

    ProjectsDetailSelectionEnum selection() const { return m_selection; }
    TaskListViewModeEnum taskListViewMode() const { return m_viewMode; }
    void setTaskListViewMode(TaskListViewModeEnum mode);

    void showNone();
    void showProject(const ProjectEntity& project, const QList<TaskListWithTasksEntity>& lists);
    void showList(const TaskListEntity& taskList, const QList<TaskEntity>& tasks);
    // "Today" or "Upcoming" (view) of tasks, the open ones due up to a week from today; places:
    // "Project › List" by list.
    void showDays(ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks, const QDate& today,
        const QHash<QUuid, QString>& places);
    // The add row of the list shown as a list; null for the matrix, an overview or nothing.
    InlineAddRowView* addRow() const;
    // Brings the shown list's task into view (as a list, its completed tasks unfolded if it is
    // done), marks it and gives it the focus; the mark goes with the next change of the tasks.
    void highlightTask(const QUuid& taskId);
    QUuid highlightedTaskId() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

Q_SIGNALS:
    void deleteListRequested(const TaskListEntity& taskList);
    void deleteAllCompletedRequested(const QList<TaskEntity>& tasks);
    void selectList(const TaskListEntity& taskList);

private:
    void rebuildList();
    void setBody(QWidget* body);

    TaskActions& m_actions;
    ProjectsDetailSelectionEnum m_selection = ProjectsDetailSelectionEnum::none;
    TaskListViewModeEnum m_viewMode = TaskListViewModeEnum::tasks;
    QSet<QUuid> m_expandedOverviewListIds;
    bool m_isCompletedExpanded = false;
    TaskListEntity m_taskList;
    QList<TaskEntity> m_tasks;

    QStackedWidget* m_pages;
    QWidget* m_placeholder;
    QWidget* m_content;
    QLabel* m_title;
    QWidget* m_listTools;
    QToolButton* m_tasksMode;
    QToolButton* m_matrixMode;
    QToolButton* m_deleteCompleted;
    QToolButton* m_deleteList;
    QStackedWidget* m_bodies;
    // The overview and the matrix, built anew for every change.
    QScrollArea* m_scroll;
    // The list, kept while its tasks change.
    QScrollArea* m_listScroll;
    TaskListContentView* m_listContent;
    QPointer<QWidget> m_highlightedRow;
};
