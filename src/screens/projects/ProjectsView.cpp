#include "screens/projects/ProjectsView.h"

#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectSectionView.h"
#include "screens/projects/ProjectsController.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskDayViewSidebarRowView.h"
#include "screens/projects/TaskDaysContentView.h"
#include "screens/projects/TaskListsController.h"
#include "screens/projects/TasksController.h"
#include "screens/projects/TasksDetailPaneView.h"

#include <QHBoxLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>

namespace {

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

// Tells an add row that the store answered, if the row is still there.
std::function<void(bool)> answering(InlineAddRowView* row)
{
    return [row = QPointer<InlineAddRowView>(row)](bool added) {
        if (row)
            row->finishAdding(added);
    };
}

struct LoadedWorkspace {
    QList<ProjectWithListsEntity> workspace;
    std::optional<QString> failure;
};

} // namespace

ProjectsView::ProjectsView(const AppServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_taskActions(new TaskActions(this))
    , m_sidebar(new ProjectsSidebarPaneView(this))
    , m_detail(new TasksDetailPaneView(*m_taskActions, this))
    , m_midnight(new QTimer(this))
{
    m_midnight->setSingleShot(true);
    connect(m_midnight, &QTimer::timeout, this, &ProjectsView::reloadDays);
    setObjectName(QStringLiteral("projectsView"));
    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_sidebar);
    splitter->addWidget(m_detail);
    splitter->setStretchFactor(1, 1);
    // Narrower than this the project rows would cut off their buttons.
    m_sidebar->setMinimumWidth(220);
    splitter->setSizes({300, 700});
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    connectActions();
    m_services.notificationCenter().addObserver(NotificationName::userAccountDidChange, this, [this](const QVariant&) {
        if (m_started)
            start();
    });
    // An undo or redo changed the stores.
    m_services.notificationCenter().addObserver(NotificationName::tasksDidChange, this, [this](const QVariant&) {
        reload();
        reloadDetail();
    });
}

ProjectsView::~ProjectsView() = default;

void ProjectsView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_started) {
        m_started = true;
        start();
    }
}

// Reads the current user and builds the applications for that kind of account.
void ProjectsView::start()
{
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    render();
    const AppServices* services = &m_services;
    runAsync(
        this, [services] { return services->tasksSession(); },
        [this, generation](const AppServices::TasksSession& started) {
            if (generation != m_generation)
                return;
            const auto& [user, made] = started;
            m_isLoggedIn = user.has_value();
            m_workspace.clear();
            m_selectedProject.reset();
            m_selectedTaskList.reset();
            m_detail->showNone();
            m_projects.reset();
            m_taskLists.reset();
            m_tasks.reset();
            m_agenda.reset();
            m_dueTasks.clear();
            m_sidebar->setDayCounts(0, 0, 0);
            if (!user || !made.result) {
                m_isLoading = false;
                render();
                if (user)
                    showFailure(made.firstMessage().value_or(QString()));
                Q_EMIT loaded();
                return;
            }
            m_userId = QUuid::fromString(user->usrId);
            const auto& apps = *made.dataAs<TasksApplicationFactory::Applications>();
            m_projects = std::make_unique<ProjectsController>(apps.projects, m_services.console());
            m_taskLists = std::make_unique<TaskListsController>(apps.taskLists, m_services.console());
            m_tasks = std::make_unique<TasksController>(apps.tasks, m_services.console());
            m_agenda = std::make_unique<TaskAgendaApplication>(apps.agenda);
            connect(m_projects.get(), &ProjectsController::saved, this, [this](const QUuid& projectId) {
                m_expandedProjectIds.insert(projectId);
                reload();
            });
            connect(m_projects.get(), &ProjectsController::failed, this, &ProjectsView::showFailure);
            connect(m_taskLists.get(), &TaskListsController::saved, this, [this] { reload(); });
            connect(m_taskLists.get(), &TaskListsController::failed, this, &ProjectsView::showFailure);
            connect(m_tasks.get(), &TasksController::saved, this, [this] { reloadDetail(); });
            connect(m_tasks.get(), &TasksController::failed, this, &ProjectsView::showFailure);
            reload();
        });
}

void ProjectsView::reload()
{
    if (!m_projects)
        return;
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    const ProjectsApplication projects = m_projects->application;
    const TaskListsApplication taskLists = m_taskLists->application;
    const QUuid userId = m_userId;
    runAsync(
        this,
        [projects, taskLists, userId] {
            LoadedWorkspace loaded;
            const ResultEntity listedProjects = projects.list(userId);
            if (!listedProjects.result) {
                loaded.failure = listedProjects.firstMessage();
                return loaded;
            }
            for (const ProjectEntity& project : listed<ProjectEntity>(listedProjects)) {
                const ResultEntity lists = taskLists.list(project.prjId);
                if (!lists.result && !loaded.failure)
                    loaded.failure = lists.firstMessage();
                loaded.workspace.append({project, listed<TaskListEntity>(lists)});
            }
            return loaded;
        },
        [this, generation](const LoadedWorkspace& loaded) {
            if (generation != m_generation)
                return;
            m_isLoading = false;
            m_workspace = loaded.workspace;
            // A selection that went away with a deletion elsewhere goes too.
            bool listStillThere = false;
            bool projectStillThere = false;
            for (const ProjectWithListsEntity& item : m_workspace) {
                if (m_selectedProject && item.project.prjId == m_selectedProject->prjId) {
                    projectStillThere = true;
                    m_selectedProject = item.project;
                }
                for (const TaskListEntity& list : item.lists) {
                    if (m_selectedTaskList && list.talId == m_selectedTaskList->talId) {
                        listStillThere = true;
                        m_selectedTaskList = list;
                    }
                }
            }
            if (!listStillThere)
                m_selectedTaskList.reset();
            if (!projectStillThere)
                m_selectedProject.reset();
            render();
            if (loaded.failure)
                showFailure(*loaded.failure);
            if (!revealPending())
                reloadDetail();
        });
}

void ProjectsView::reloadDetail()
{
    if (!m_tasks)
        return;
    // Every change to a task may change what is due when.
    reloadDays();
    if (m_dayView != ProjectsDetailSelectionEnum::none)
        return;
    const quint64 generation = m_generation;
    // Reloads overlap while tasks are added quickly; only the newest may show.
    const quint64 detailGeneration = ++m_detailGeneration;
    const TasksApplication tasks = m_tasks->application;
    const TaskListsApplication taskLists = m_taskLists->application;
    if (m_selectedTaskList) {
        const TaskListEntity list = *m_selectedTaskList;
        runAsync(
            this, [tasks, list] { return tasks.list(list.talId); },
            [this, generation, detailGeneration, list](const ResultEntity& result) {
                if (generation != m_generation || detailGeneration != m_detailGeneration || !m_selectedTaskList
                    || m_selectedTaskList->talId != list.talId)
                    return;
                m_singleListTasks = listed<TaskEntity>(result);
                m_detail->showList(list, m_singleListTasks);
                Q_EMIT loaded();
            });
    } else if (m_selectedProject) {
        const ProjectEntity project = *m_selectedProject;
        runAsync(
            this,
            [tasks, taskLists, project] {
                QList<TaskListWithTasksEntity> overview;
                for (const TaskListEntity& list : listed<TaskListEntity>(taskLists.list(project.prjId)))
                    overview.append({list, listed<TaskEntity>(tasks.list(list.talId))});
                return overview;
            },
            [this, generation, detailGeneration, project](const QList<TaskListWithTasksEntity>& overview) {
                if (generation != m_generation || detailGeneration != m_detailGeneration || !m_selectedProject
                    || m_selectedProject->prjId != project.prjId)
                    return;
                m_projectOverviewLists = overview;
                m_detail->showProject(project, overview);
                Q_EMIT loaded();
            });
    } else {
        m_detail->showNone();
        Q_EMIT loaded();
    }
}

void ProjectsView::reloadDays()
{
    if (!m_agenda)
        return;
    const quint64 generation = m_generation;
    const quint64 daysGeneration = ++m_daysGeneration;
    const TaskAgendaApplication agenda = *m_agenda;
    const QUuid userId = m_userId;
    const QDate today = QDate::currentDate();
    // What is due "today" changes at midnight even when no task does.
    m_midnight->start(int(std::clamp<qint64>(
        QDateTime::currentDateTime().msecsTo(today.addDays(1).startOfDay()) + 1000, 1000, 86400000)));
    runAsync(
        this, [agenda, userId, today] { return agenda.dueUpTo(userId, today.addDays(7)); },
        [this, generation, daysGeneration, today](const ResultEntity& result) {
            if (generation != m_generation || daysGeneration != m_daysGeneration)
                return;
            if (!result.result) {
                m_services.console().appendLine(
                    QStringLiteral("ProjectsView.reloadDays failed: ") + result.firstMessage().value_or(QString()));
            } else {
                m_dueTasks = listed<TaskEntity>(result);
            }
            const QList<TaskEntity> todays
                = TaskDaysContentView::inView(ProjectsDetailSelectionEnum::today, m_dueTasks, today);
            const int overdue = int(std::count_if(
                todays.cbegin(), todays.cend(), [&today](const TaskEntity& task) { return *task.dueDay() < today; }));
            m_sidebar->setDayCounts(int(todays.size()), overdue,
                int(TaskDaysContentView::inView(ProjectsDetailSelectionEnum::upcoming, m_dueTasks, today).size()));
            if (m_dayView != ProjectsDetailSelectionEnum::none) {
                QHash<QUuid, QString> places;
                for (const ProjectWithListsEntity& item : std::as_const(m_workspace)) {
                    for (const TaskListEntity& list : item.lists)
                        places.insert(list.talId, item.project.prjName + QStringLiteral(" \u203a ") + list.talName);
                }
                m_detail->showDays(m_dayView, m_dueTasks, today, places);
            }
            Q_EMIT daysLoaded();
            if (m_dayView != ProjectsDetailSelectionEnum::none)
                Q_EMIT loaded();
        });
}

void ProjectsView::selectDayView(ProjectsDetailSelectionEnum view)
{
    m_selectedTaskList.reset();
    m_selectedProject.reset();
    m_dayView = view;
    m_sidebar->setSelection(QUuid(), QUuid(), view);
    reloadDetail();
}

void ProjectsView::render()
{
    ProjectsSidebarPaneView::State state;
    state.workspace = m_workspace;
    state.isLoading = m_isLoading;
    state.isLoggedIn = m_isLoggedIn;
    state.expandedProjectIds = m_expandedProjectIds;
    state.selectedProjectId = m_selectedTaskList ? QUuid() : (m_selectedProject ? m_selectedProject->prjId : QUuid());
    state.selectedListId = m_selectedTaskList ? m_selectedTaskList->talId : QUuid();
    state.deletingProjectId = m_deletingProjectId;
    state.deletingListId = m_deletingListId;
    state.selectedDayView = m_dayView;
    m_sidebar->show(state);
}

void ProjectsView::showFailure(const QString& message)
{
    // A deletion under way has ended: nothing shows as deleting.
    if (!m_deletingListId.isNull() || !m_deletingProjectId.isNull()) {
        m_deletingListId = QUuid();
        m_deletingProjectId = QUuid();
        render();
    }
    if (!isVisible())
        return;
    QMessageBox box(QMessageBox::Warning, window()->windowTitle(), message, QMessageBox::Ok, this);
    box.setObjectName(QStringLiteral("failureMessage"));
    box.exec();
}

bool ProjectsView::confirm(
    const QString& question, const QString& confirmText, const QString& cancelText, const QString& detail)
{
    QMessageBox box(QMessageBox::Question, window()->windowTitle(), question, QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("confirmation"));
    box.setInformativeText(detail);
    QPushButton* confirmButton = box.addButton(confirmText, QMessageBox::DestructiveRole);
    QPushButton* cancelButton = box.addButton(cancelText, QMessageBox::RejectRole);
    box.setDefaultButton(cancelButton);
    box.setEscapeButton(cancelButton);
    box.exec();
    return box.clickedButton() == confirmButton;
}

void ProjectsView::selectList(const TaskListEntity& taskList, const ProjectEntity& project)
{
    m_dayView = ProjectsDetailSelectionEnum::none;
    m_selectedTaskList = taskList;
    m_selectedProject = project;
    m_sidebar->setSelection(QUuid(), taskList.talId);
    reloadDetail();
}

void ProjectsView::selectProject(const ProjectEntity& project)
{
    m_dayView = ProjectsDetailSelectionEnum::none;
    m_selectedTaskList.reset();
    m_selectedProject = project;
    m_sidebar->setSelection(project.prjId, QUuid());
    reloadDetail();
}

void ProjectsView::deleteProject(const ProjectEntity& project)
{
    // The store refuses a project that still has lists: say so instead of asking first.
    for (const ProjectWithListsEntity& item : std::as_const(m_workspace)) {
        if (item.project.prjId == project.prjId && !item.lists.isEmpty()) {
            QMessageBox box(QMessageBox::Information, window()->windowTitle(),
                //% "“%1” still has lists"
                qtTrId("projects-delete-has-lists-title").arg(project.prjName), QMessageBox::Ok, this);
            box.setObjectName(QStringLiteral("projectHasLists"));
            box.setTextFormat(Qt::PlainText);
            //% "Delete its lists first; then the project can be deleted."
            box.setInformativeText(qtTrId("projects-delete-has-lists-text"));
            box.exec();
            return;
        }
    }
    //% "Delete this project?"
    //% "Delete"
    //% "Cancel"
    if (!confirm(qtTrId("projects-delete-confirmation-title"), qtTrId("projects-delete-confirm-button"),
            qtTrId("projects-delete-cancel-button"), project.prjName))
        return;
    m_deletingProjectId = project.prjId;
    render();
    m_projects->delete_(project, m_userId);
}

void ProjectsView::deleteList(const TaskListEntity& taskList)
{
    //% "Delete this list and its tasks?"
    //% "Delete"
    //% "Cancel"
    if (!confirm(qtTrId("task-lists-delete-confirmation-title"), qtTrId("task-lists-delete-confirm-button"),
            qtTrId("task-lists-delete-cancel-button"), taskList.talName))
        return;
    m_deletingListId = taskList.talId;
    render();
    m_taskLists->delete_(taskList);
}

void ProjectsView::deleteCompleted(const QList<TaskEntity>& tasks)
{
    if (tasks.isEmpty() || !m_selectedTaskList)
        return;
    const QString question = tasks.size() == 1
        //% "Delete the completed task?"
        ? qtTrId("tasks-delete-completed-confirmation-title-one")
        //% "Delete %1 completed tasks?"
        : qtTrId("tasks-delete-completed-confirmation-title").arg(tasks.size());
    //% "Delete"
    //% "Cancel"
    if (!confirm(question, qtTrId("tasks-delete-completed-confirm-button"),
            qtTrId("tasks-delete-completed-cancel-button"), m_selectedTaskList->talName))
        return;
    m_isDeletingCompletedTasks = true;
    m_completedTasksDeletionErrorMessage.reset();
    const TasksApplication tasksApplication = m_tasks->application;
    const QUuid listId = m_selectedTaskList->talId;
    runAsync(
        this, [tasksApplication, listId] { return tasksApplication.deleteCompleted(listId); },
        [this](const ResultEntity& result) {
            m_isDeletingCompletedTasks = false;
            if (!result.result) {
                m_completedTasksDeletionErrorMessage = result.firstMessage().value_or(QString());
                QMessageBox box(QMessageBox::Warning,
                    //% "The completed tasks could not be deleted"
                    qtTrId("tasks-delete-completed-error-title"), *m_completedTasksDeletionErrorMessage,
                    QMessageBox::Ok, this);
                box.setObjectName(QStringLiteral("failureMessage"));
                box.exec();
            }
            reloadDetail();
        });
}

void ProjectsView::connectActions()
{
    connect(m_sidebar, &ProjectsSidebarPaneView::expandedChanged, this, [this](const QUuid& id, bool expanded) {
        if (expanded)
            m_expandedProjectIds.insert(id);
        else
            m_expandedProjectIds.remove(id);
        render();
    });
    connect(m_sidebar, &ProjectsSidebarPaneView::selectProject, this, &ProjectsView::selectProject);
    connect(m_sidebar, &ProjectsSidebarPaneView::selectList, this, &ProjectsView::selectList);
    connect(m_sidebar, &ProjectsSidebarPaneView::selectDayView, this, &ProjectsView::selectDayView);
    connect(m_sidebar, &ProjectsSidebarPaneView::addProject, this,
        [this](const QString& name) { m_projects->add(name, m_userId, answering(m_sidebar->addProjectRow())); });
    connect(m_sidebar, &ProjectsSidebarPaneView::renameProject, this,
        [this](const ProjectEntity& project, const QString& name) {
            ProjectEntity renamed = project;
            renamed.prjName = name;
            m_projects->update(renamed);
        });
    connect(m_sidebar, &ProjectsSidebarPaneView::toggleProjectShowEveryDay, this,
        [this](
            const ProjectEntity& project, bool showEveryDay) { m_projects->setShowEveryDay(project, showEveryDay); });
    connect(m_sidebar, &ProjectsSidebarPaneView::deleteProject, this, &ProjectsView::deleteProject);
    connect(
        m_sidebar, &ProjectsSidebarPaneView::addList, this, [this](const ProjectEntity& project, const QString& name) {
            bool hasLists = false;
            for (const ProjectWithListsEntity& item : m_workspace) {
                if (item.project.prjId == project.prjId)
                    hasLists = !item.lists.isEmpty();
            }
            // A project's first list is its default list, so the schedule has something to show.
            ProjectSectionView* section = m_sidebar->section(project.prjId);
            m_taskLists->add(project, name, !hasLists, answering(section ? section->addListRow() : nullptr));
        });
    connect(m_sidebar, &ProjectsSidebarPaneView::renameList, this,
        [this](const TaskListEntity& list, const QString& name) { m_taskLists->rename(list, name); });
    connect(m_sidebar, &ProjectsSidebarPaneView::setDefaultList, this,
        [this](const TaskListEntity& list) { m_taskLists->setDefault(list); });
    connect(m_sidebar, &ProjectsSidebarPaneView::deleteList, this, &ProjectsView::deleteList);
    connect(m_detail, &TasksDetailPaneView::deleteListRequested, this, &ProjectsView::deleteList);
    connect(m_detail, &TasksDetailPaneView::deleteAllCompletedRequested, this, &ProjectsView::deleteCompleted);
    connect(m_detail, &TasksDetailPaneView::selectList, this, [this](const TaskListEntity& list) {
        if (m_selectedProject)
            selectList(list, *m_selectedProject);
    });

    connect(this, &ProjectsView::loaded, this, [this] {
        m_deletingListId = QUuid();
        m_deletingProjectId = QUuid();
    });

    connect(m_taskActions, &TaskActions::toggleDone, this,
        [this](const TaskEntity& task, bool done) { m_tasks->setDone(task, done); });
    connect(m_taskActions, &TaskActions::rename, this,
        [this](const TaskEntity& task, const QString& title) { m_tasks->rename(task, title); });
    connect(
        m_taskActions, &TaskActions::deleteRequested, this, [this](const TaskEntity& task) { m_tasks->delete_(task); });
    connect(m_taskActions, &TaskActions::setTag, this,
        [this](const TaskEntity& task, std::optional<EisenhowerTagEnum> tag) { m_tasks->setTag(task, tag); });
    connect(m_taskActions, &TaskActions::schedule, this, [this](const TaskEntity& task) { m_tasks->schedule(task); });
    connect(m_taskActions, &TaskActions::skipOccurrence, this,
        [this](const TaskEntity& task) { m_tasks->skipOccurrence(task); });
    connect(m_taskActions, &TaskActions::addTask, this, [this](const TaskListEntity& list, const QString& title) {
        m_tasks->add(list, title, answering(m_detail->addRow()));
    });
}

QUuid ProjectsView::openProjectId() const
{
    if (m_selectedTaskList)
        return m_selectedTaskList->prjId;
    return m_selectedProject ? m_selectedProject->prjId : QUuid();
}

QUuid ProjectsView::openListId() const
{
    return m_selectedTaskList ? m_selectedTaskList->talId : QUuid();
}

void ProjectsView::reveal(const QUuid& projectId, const QUuid& taskListId, const QUuid& taskId)
{
    m_revealing = Revealing {projectId, taskListId, taskId};
    if (m_projects && !m_isLoading)
        revealPending();
}

bool ProjectsView::revealPending()
{
    if (!m_revealing)
        return false;
    const Revealing wanted = *m_revealing;
    for (const ProjectWithListsEntity& item : std::as_const(m_workspace)) {
        if (item.project.prjId != wanted.projectId)
            continue;
        m_revealing.reset();
        m_expandedProjectIds.insert(item.project.prjId);
        render();
        if (wanted.taskListId.isNull()) {
            selectProject(item.project);
            return true;
        }
        for (const TaskListEntity& list : item.lists) {
            if (list.talId != wanted.taskListId)
                continue;
            if (!wanted.taskId.isNull()) {
                // The next load of the detail is this list's.
                connect(
                    this, &ProjectsView::loaded, m_detail,
                    [this, wanted] {
                        if (m_selectedTaskList && m_selectedTaskList->talId == wanted.taskListId)
                            m_detail->highlightTask(wanted.taskId);
                    },
                    Qt::SingleShotConnection);
            }
            selectList(list, item.project);
            return true;
        }
        selectProject(item.project);
        return true;
    }
    // Made since the workspace was read: read it again, once.
    if (!wanted.reloaded && m_projects) {
        m_revealing->reloaded = true;
        reload();
        return true;
    }
    m_revealing.reset();
    return false;
}
