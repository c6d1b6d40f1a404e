#pragma once

#include "screens/projects/ProjectsSidebarPaneView.h"
#include "screens/projects/ProjectsWorkspaceEntities.h"
#include "tasks/applications/TaskAgendaApplication.h"

#include <QWidget>

#include <memory>
#include <optional>

class AppServices;
class ProjectsController;
class TaskActions;
class TaskListsController;
class TasksController;
class TasksDetailPaneView;
class QTimer;

// The projects workspace: projects and their lists on the left, a list's tasks (as a list or
// as the Eisenhower matrix) or a project's overview on the right. It shows what the stores hold:
// every change goes through the Tasks module and is followed by a reload.
class ProjectsView final : public QWidget {
    Q_OBJECT

public:
    explicit ProjectsView(const AppServices& services, QWidget* parent = nullptr);
    ~ProjectsView() override;

    bool isLoading() const { return m_isLoading; }
    bool isLoggedIn() const { return m_isLoggedIn; }
    // Reads everything again, after a change made elsewhere (a quick add).
    void reload();
    // Shows a project's overview, or a list with taskId (if any) in view and marked, once the
    // workspace has loaded.
    void reveal(const QUuid& projectId, const QUuid& taskListId = {}, const QUuid& taskId = {});
    TasksDetailPaneView* detailPane() const { return m_detail; }
    // The project whose overview or one of whose lists is open; null with none, or with "Today"
    // or "Upcoming" open.
    QUuid openProjectId() const;
    // The list open; null with a project's overview, "Today", "Upcoming" or nothing open.
    QUuid openListId() const;

Q_SIGNALS:
    // After every load, for tests and for the start-up benchmark.
    void loaded();
    // After every read of the tasks due this week (the counts of "Today" and "Upcoming").
    void daysLoaded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void start();
    void reloadDetail();
    // Reads the tasks due up to a week from today again: the counts of "Today" and "Upcoming",
    // and the one of them that is open.
    void reloadDays();
    void selectDayView(ProjectsDetailSelectionEnum view);
    void render();
    void showFailure(const QString& message);
    bool confirm(
        const QString& question, const QString& confirmText, const QString& cancelText, const QString& detail = {});

    void selectList(const TaskListEntity& taskList, const ProjectEntity& project);
    void selectProject(const ProjectEntity& project);
    void deleteProject(const ProjectEntity& project);
    void deleteList(const TaskListEntity& taskList);
    void deleteCompleted(const QList<TaskEntity>& tasks);
    void connectActions();
    // Acts on m_revealing; false when it waits for a load.
    bool revealPending();

    const AppServices& m_services;
    std::unique_ptr<ProjectsController> m_projects;
    std::unique_ptr<TaskListsController> m_taskLists;
    std::unique_ptr<TasksController> m_tasks;
    std::unique_ptr<TaskAgendaApplication> m_agenda;
    TaskActions* m_taskActions;
    ProjectsSidebarPaneView* m_sidebar;
    TasksDetailPaneView* m_detail;
    QTimer* m_midnight;

    bool m_started = false;
    quint64 m_generation = 0;
    quint64 m_detailGeneration = 0;
    quint64 m_daysGeneration = 0;
    // today or upcoming while one of those is open instead of a list or a project.
    ProjectsDetailSelectionEnum m_dayView = ProjectsDetailSelectionEnum::none;
    QList<TaskEntity> m_dueTasks;
    QList<ProjectWithListsEntity> m_workspace;
    bool m_isLoading = false;
    QSet<QUuid> m_expandedProjectIds;
    std::optional<ProjectEntity> m_selectedProject;
    std::optional<TaskListEntity> m_selectedTaskList;
    QList<TaskEntity> m_singleListTasks;
    QList<TaskListWithTasksEntity> m_projectOverviewLists;
    bool m_isDeletingCompletedTasks = false;
    std::optional<QString> m_completedTasksDeletionErrorMessage;
    QUuid m_deletingProjectId;
    QUuid m_deletingListId;
    QUuid m_userId;
    bool m_isLoggedIn = false;
    struct Revealing {
        QUuid projectId;
        QUuid taskListId;
        QUuid taskId;
        // Whether the workspace was read again to find it.
        bool reloaded = false;
    };
    std::optional<Revealing> m_revealing;
};
