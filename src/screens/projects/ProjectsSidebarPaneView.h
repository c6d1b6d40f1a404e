#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QSet>
#include <QWidget>

class InlineAddRowView;
class ProjectSectionView;
class QLabel;
class QScrollArea;
class QVBoxLayout;
class TaskDayViewSidebarRowView;

// The left side of the projects workspace: "Today" and "Upcoming" with their counts, every
// project with its lists, and an add row.
class ProjectsSidebarPaneView final : public QWidget {
    Q_OBJECT

public:
    struct State {
        QList<ProjectWithListsEntity> workspace;
        bool isLoading = false;
        bool isLoggedIn = false;
        QSet<QUuid> expandedProjectIds;
        QUuid selectedProjectId;
        QUuid selectedListId;
        QUuid deletingProjectId;
        QUuid deletingListId;
        // today or upcoming while one of those is open.
        ProjectsDetailSelectionEnum selectedDayView = ProjectsDetailSelectionEnum::none;
    };

    explicit ProjectsSidebarPaneView(QWidget* parent = nullptr);

    void show(const State& state);
    // Moves the highlight only; the rows stay as they are.
    void setSelection(const QUuid& selectedProjectId, const QUuid& selectedListId,
        ProjectsDetailSelectionEnum selectedDayView = ProjectsDetailSelectionEnum::none);
    // How many tasks "Today" holds (overdue of them) and how many "Upcoming" does.
    void setDayCounts(int today, int overdue, int upcoming);
    TaskDayViewSidebarRowView* dayView(ProjectsDetailSelectionEnum view) const;
    InlineAddRowView* addProjectRow() const { return m_addProject; }
    ProjectSectionView* section(const QUuid& projectId) const;

Q_SIGNALS:
    void expandedChanged(const QUuid& projectId, bool expanded);
    void selectProject(const ProjectEntity& project);
    void selectList(const TaskListEntity& taskList, const ProjectEntity& project);
    void selectDayView(ProjectsDetailSelectionEnum view);
    void renameProject(const ProjectEntity& project, const QString& name);
    void toggleProjectShowEveryDay(const ProjectEntity& project, bool showEveryDay);
    void deleteProject(const ProjectEntity& project);
    void renameList(const TaskListEntity& taskList, const QString& name);
    void setDefaultList(const TaskListEntity& taskList);
    void deleteList(const TaskListEntity& taskList);
    void addList(const ProjectEntity& project, const QString& name);
    void addProject(const QString& name);

private:
    void connectSection(ProjectSectionView* section);

    QLabel* m_state;
    TaskDayViewSidebarRowView* m_today;
    TaskDayViewSidebarRowView* m_upcoming;
    QScrollArea* m_scroll;
    QWidget* m_content;
    QVBoxLayout* m_contentLayout;
    InlineAddRowView* m_addProject;
    QList<ProjectSectionView*> m_sections;
};
