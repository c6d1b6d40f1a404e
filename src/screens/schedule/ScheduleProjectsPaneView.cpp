#include "screens/schedule/ScheduleProjectsPaneView.h"

#include "platform/NotificationCenter.h"
#include "screens/common/AppServices.h"
#include "screens/common/Async.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/TasksController.h"
#include "screens/schedule/DailyTaskController.h"
#include "screens/schedule/DailyTaskSectionView.h"
#include "screens/schedule/MiniCalendarHolidaySource.h"

#include <QEvent>
#include <QHash>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

template <typename T> QList<T> listed(const ResultEntity& result)
{
    const auto* items = result.dataAs<QList<T>>();
    return items ? *items : QList<T>();
}

struct LoadedPane {
    QDate date;
    QList<DailyTaskEntity> dailyTasks;
    QList<ProjectWithDefaultListEntity> workspace;
    bool isHoliday = false;
    std::optional<QString> failure;
};

// Each project with its default list and that list's tasks. A store without an index on the
// owning ids passes over a whole table for every query, so the lists of all projects come in one
// read and the tasks of all default lists in another, rather than two reads per project.
QList<ProjectWithDefaultListEntity> readWorkspace(const TasksApplicationFactory::Applications& apps,
    const QList<ProjectEntity>& projects, std::optional<QString>& failure)
{
    QList<QUuid> projectIds;
    projectIds.reserve(projects.size());
    for (const ProjectEntity& project : projects)
        projectIds.append(project.prjId);
    const ResultEntity lists = projectIds.isEmpty() ? ResultEntity::success(QList<TaskListEntity>())
                                                    : apps.taskLists.listOfProjects(projectIds);
    if (!lists.result && !failure)
        failure = lists.firstMessage();
    // The first default list of a project in store order, as a project shows it.
    QHash<QUuid, TaskListEntity> defaults;
    for (const TaskListEntity& list : listed<TaskListEntity>(lists)) {
        if (list.talIsDefault && !defaults.contains(list.prjId))
            defaults.insert(list.prjId, list);
    }
    QList<QUuid> defaultListIds;
    defaultListIds.reserve(defaults.size());
    for (const ProjectEntity& project : projects) {
        if (const auto found = defaults.constFind(project.prjId); found != defaults.cend())
            defaultListIds.append(found->talId);
    }
    QHash<QUuid, QList<TaskEntity>> tasksOfList;
    if (!defaultListIds.isEmpty()) {
        const ResultEntity tasks = apps.tasks.listOfLists(defaultListIds);
        if (!tasks.result && !failure)
            failure = tasks.firstMessage();
        for (const TaskEntity& task : listed<TaskEntity>(tasks))
            tasksOfList[task.talId].append(task);
    }
    QList<ProjectWithDefaultListEntity> workspace;
    workspace.reserve(projects.size());
    for (const ProjectEntity& project : projects) {
        ProjectWithDefaultListEntity item {project, std::nullopt, {}};
        if (const auto found = defaults.constFind(project.prjId); found != defaults.cend()) {
            item.list = *found;
            item.tasks = tasksOfList.value(found->talId);
        }
        workspace.append(item);
    }
    return workspace;
}

} // namespace

ScheduleProjectsPaneView::ScheduleProjectsPaneView(
    const AppServices& services, std::shared_ptr<const MiniCalendarHolidaySource> holidays, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
    , m_holidays(std::move(holidays))
    , m_selectedDate(QDate::currentDate())
    , m_dailySection(new DailyTaskSectionView(this))
    //% "Projects"
    , m_projectsTitle(new QLabel(qtTrId("schedule-projects-panel-title"), this))
    , m_projects(new QVBoxLayout)
{
    setObjectName(QStringLiteral("scheduleProjectsPane"));
    QFont bold = m_projectsTitle->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.1);
    m_projectsTitle->setFont(bold);
    auto* content = new QWidget;
    auto* contentLayout = new QVBoxLayout(content);
    contentLayout->addWidget(m_dailySection);
    contentLayout->addSpacing(12);
    contentLayout->addWidget(m_projectsTitle);
    contentLayout->addLayout(m_projects);
    // The spare height of a tall window goes below the last project, not between the rows.
    contentLayout->addStretch(1);
    auto* scroll = new QScrollArea(this);
    scroll->setObjectName(QStringLiteral("scheduleProjectsScroll"));
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    // Rows follow the pane's width (long names give way), so it only ever scrolls down.
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    connect(m_dailySection, &DailyTaskSectionView::onAddTask, this, [this](const QString& title) {
        if (m_dailyTasksController)
            m_dailyTasksController->add(m_userId, m_selectedDate, title);
    });
    connect(m_dailySection, &DailyTaskSectionView::onToggleDone, this, [this](const DailyTaskEntity& task, bool done) {
        if (m_dailyTasksController)
            m_dailyTasksController->setDone(task, done);
    });
    connect(m_dailySection, &DailyTaskSectionView::onRenameTask, this,
        [this](const DailyTaskEntity& task, const QString& title) {
            if (m_dailyTasksController)
                m_dailyTasksController->rename(task, title);
        });
    connect(m_dailySection, &DailyTaskSectionView::onDeleteTask, this, [this](const DailyTaskEntity& task) {
        if (m_dailyTasksController)
            m_dailyTasksController->delete_(task);
    });
    connect(m_dailySection, &DailyTaskSectionView::onBlockTime, this, [this](const DailyTaskEntity& task) {
        Q_EMIT blockTimeRequested({MeetTaskLink::Kind::dailyTask, task.dtaId});
    });
    m_services.notificationCenter().addObserver(NotificationName::userAccountDidChange, this, [this](const QVariant&) {
        if (m_started)
            start();
    });
    // An undo or redo changed the stores.
    m_services.notificationCenter().addObserver(NotificationName::tasksDidChange, this, [this](const QVariant&) {
        if (m_started)
            reload();
    });
}

ScheduleProjectsPaneView::~ScheduleProjectsPaneView() = default;

bool ScheduleProjectsPaneView::isWorkingDay(const QDate& date, bool isHoliday)
{
    return !isHoliday && QLocale().weekdays().contains(Qt::DayOfWeek(date.dayOfWeek()));
}

// Projects, lists and tasks change in other screens while this one is hidden, or in another
// window; like the hours, they are read again whenever the user comes back to the schedule.
void ScheduleProjectsPaneView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_started) {
        m_started = true;
        start();
        return;
    }
    reload();
}

void ScheduleProjectsPaneView::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible())
        reload();
}

void ScheduleProjectsPaneView::setSelectedDate(const QDate& date)
{
    if (date == m_selectedDate)
        return;
    m_selectedDate = date;
    if (m_started)
        reload();
}

void ScheduleProjectsPaneView::start()
{
    const quint64 generation = ++m_generation;
    const AppServices* services = &m_services;
    m_isLoading = true;
    runAsync(
        this, [services] { return services->tasksSession(); },
        [this, generation](const AppServices::TasksSession& started) {
            if (generation != m_generation)
                return;
            m_isLoggedIn = started.user.has_value();
            m_applications.reset();
            m_dailyTasksController.reset();
            m_tasksController.reset();
            m_workspace.clear();
            m_dailyTasks.clear();
            if (!started.user || !started.applications.result) {
                m_isLoading = false;
                render();
                if (started.user)
                    showFailure(started.applications.firstMessage().value_or(QString()));
                Q_EMIT loaded();
                return;
            }
            m_userId = QUuid::fromString(started.user->usrId);
            m_applications = *started.applications.dataAs<TasksApplicationFactory::Applications>();
            m_dailyTasksController
                = std::make_unique<DailyTaskController>(m_applications->dailyTasks, m_services.console());
            m_tasksController = std::make_unique<TasksController>(m_applications->tasks, m_services.console());
            connect(m_dailyTasksController.get(), &DailyTaskController::saved, this, [this] {
                m_dailySection->finishAdding(true);
                reload();
            });
            connect(m_dailyTasksController.get(), &DailyTaskController::failed, this, [this](const QString& message) {
                m_dailySection->finishAdding(false);
                showFailure(message);
                reload();
            });
            connect(m_tasksController.get(), &TasksController::saved, this, [this] { reload(); });
            connect(m_tasksController.get(), &TasksController::failed, this, [this](const QString& message) {
                showFailure(message);
                reload();
            });
            reload();
        });
}

void ScheduleProjectsPaneView::reload()
{
    if (!m_applications)
        return;
    const quint64 generation = ++m_generation;
    m_isLoading = true;
    const TasksApplicationFactory::Applications apps = *m_applications;
    const QDate date = m_selectedDate;
    const QUuid userId = m_userId;
    const std::shared_ptr<const MiniCalendarHolidaySource> holidays = m_holidays;
    runAsync(
        this,
        [apps, date, userId, holidays] {
            LoadedPane loaded;
            loaded.date = date;
            const ResultEntity daily = apps.dailyTasks.list(DailyTaskController::dateOf(date));
            if (!daily.result)
                loaded.failure = daily.firstMessage();
            loaded.dailyTasks = listed<DailyTaskEntity>(daily);
            if (holidays)
                loaded.isHoliday = holidays->holidayMarks(date).contains(date);
            const ResultEntity projects = apps.projects.list(userId);
            if (!projects.result && !loaded.failure)
                loaded.failure = projects.firstMessage();
            loaded.workspace = readWorkspace(apps, listed<ProjectEntity>(projects), loaded.failure);
            return loaded;
        },
        [this, generation](const LoadedPane& result) {
            if (generation != m_generation)
                return;
            m_isLoading = false;
            m_dailyTasks = result.dailyTasks;
            m_workspace = result.workspace;
            m_isHolidaySelectedDate = result.isHoliday;
            if (m_expandedFor != result.date) {
                m_expandedFor = result.date;
                m_expandedProjectIds.clear();
                m_foldedProjectIds.clear();
            }
            // A project seen for the first time on this day folds by the day's rule; one the
            // user already folded or unfolded keeps that.
            const bool working = isWorkingDay(result.date, result.isHoliday);
            for (const ProjectWithDefaultListEntity& item : std::as_const(m_workspace)) {
                const QUuid& id = item.project.prjId;
                if (m_foldedProjectIds.contains(id) || m_expandedProjectIds.contains(id))
                    continue;
                if (working || item.project.prjShowEveryDay)
                    m_expandedProjectIds.insert(id);
                else
                    m_foldedProjectIds.insert(id);
            }
            render();
            if (result.failure)
                showFailure(*result.failure);
            Q_EMIT loaded();
        });
}

QList<ScheduleProjectSectionView*> ScheduleProjectsPaneView::projectSections() const
{
    QList<ScheduleProjectSectionView*> sections;
    for (int i = 0; i < m_projects->count(); ++i) {
        if (auto* section = qobject_cast<ScheduleProjectSectionView*>(m_projects->itemAt(i)->widget()))
            sections.append(section);
    }
    return sections;
}

void ScheduleProjectsPaneView::render()
{
    m_dailySection->setTasks(m_dailyTasks, m_isLoggedIn);
    // Sections whose project, list and tasks are unchanged are kept as they are: a reload after
    // one change, or a new day, then costs one section rather than every row of the store.
    QHash<QUuid, ScheduleProjectSectionView*> kept;
    while (QLayoutItem* item = m_projects->takeAt(0)) {
        QWidget* widget = item->widget();
        delete item;
        auto* section = qobject_cast<ScheduleProjectSectionView*>(widget);
        if (section && m_isLoggedIn) {
            kept.insert(section->item().project.prjId, section);
            continue;
        }
        if (widget) {
            // A row may be replaced from inside its own signal (a rename's Enter): let it return first.
            widget->hide();
            widget->deleteLater();
        }
    }
    const auto discard = [](QWidget* widget) {
        widget->hide();
        widget->deleteLater();
    };
    if (!m_isLoggedIn) {
        auto* required = new QLabel(qtTrId("schedule-login-required-state"), this);
        required->setEnabled(false);
        m_projects->addWidget(required);
        return;
    }
    for (const ProjectWithDefaultListEntity& item : std::as_const(m_workspace)) {
        const bool expanded = m_expandedProjectIds.contains(item.project.prjId);
        ScheduleProjectSectionView* section = kept.take(item.project.prjId);
        if (section && !(section->item() == item) && !section->setItem(item)) {
            discard(section);
            section = nullptr;
        }
        if (!section)
            section = makeSection(item, expanded);
        else if (section->isExpanded() != expanded)
            section->setExpanded(expanded);
        m_projects->addWidget(section);
    }
    for (ScheduleProjectSectionView* gone : std::as_const(kept))
        discard(gone);
    if (m_workspace.isEmpty() && !m_isLoading) {
        auto* empty = new QLabel(qtTrId("projects-empty-state"), this);
        empty->setObjectName(QStringLiteral("scheduleProjectsEmptyState"));
        empty->setWordWrap(true);
        empty->setEnabled(false);
        m_projects->addWidget(empty);
    }
}

ScheduleProjectSectionView* ScheduleProjectsPaneView::makeSection(
    const ProjectWithDefaultListEntity& item, bool expanded)
{
    auto* section = new ScheduleProjectSectionView(item, expanded, this);
    connect(section, &ScheduleProjectSectionView::isExpandedChanged, this, [this](const QUuid& projectId, bool isOpen) {
        (isOpen ? m_expandedProjectIds : m_foldedProjectIds).insert(projectId);
        (isOpen ? m_foldedProjectIds : m_expandedProjectIds).remove(projectId);
    });
    connect(section, &ScheduleProjectSectionView::onToggleDone, this,
        [this](const TaskEntity& task, bool done) { m_tasksController->setDone(task, done); });
    connect(section, &ScheduleProjectSectionView::onRenameTask, this,
        [this](const TaskEntity& task, const QString& title) { m_tasksController->rename(task, title); });
    connect(section, &ScheduleProjectSectionView::onDeleteTask, this,
        [this](const TaskEntity& task) { m_tasksController->delete_(task); });
    connect(section, &ScheduleProjectSectionView::onSetEisenhowerTag, this,
        [this](const TaskEntity& task, std::optional<EisenhowerTagEnum> tag) { m_tasksController->setTag(task, tag); });
    connect(section, &ScheduleProjectSectionView::onAddTask, this,
        [this, section = QPointer<ScheduleProjectSectionView>(section)](
            const TaskListEntity& list, const QString& title) {
            m_tasksController->add(list, title, [section](bool added) {
                if (section && section->addRow())
                    section->addRow()->finishAdding(added);
            });
        });
    connect(
        section, &ScheduleProjectSectionView::onDeleteAllCompleted, this, &ScheduleProjectsPaneView::deleteCompleted);
    connect(section, &ScheduleProjectSectionView::onBlockTime, this, [this](const TaskEntity& task) {
        Q_EMIT blockTimeRequested({MeetTaskLink::Kind::task, task.tasId});
    });
    return section;
}

void ScheduleProjectsPaneView::showFailure(const QString& message)
{
    if (message.isEmpty())
        return;
    QMessageBox::warning(this, windowTitle(), message);
}

void ScheduleProjectsPaneView::deleteCompleted(const TaskListEntity& list, const QList<TaskEntity>& completed)
{
    if (m_isDeletingCompletedTasks || completed.isEmpty() || !m_applications)
        return;
    QMessageBox box(QMessageBox::Question, qtTrId("tasks-delete-completed-confirmation-title"),
        qtTrId("tasks-delete-completed-confirmation-title"), QMessageBox::NoButton, this);
    QPushButton* confirm = box.addButton(qtTrId("tasks-delete-completed-confirm-button"), QMessageBox::DestructiveRole);
    box.addButton(qtTrId("tasks-delete-completed-cancel-button"), QMessageBox::RejectRole);
    box.exec();
    if (box.clickedButton() != confirm)
        return;
    m_isDeletingCompletedTasks = true;
    const TasksApplication tasks = m_applications->tasks;
    ErrorConsoleStore* console = &m_services.console();
    runAsync(
        this, [tasks, listId = list.talId] { return tasks.deleteCompleted(listId); },
        [this, console](const ResultEntity& result) {
            m_isDeletingCompletedTasks = false;
            if (!result.result) {
                const QString message = result.firstMessage().value_or(QString());
                console->appendLine(QStringLiteral("ScheduleProjectsPaneView.deleteCompleted failed: ") + message);
                QMessageBox::warning(this, qtTrId("tasks-delete-completed-error-title"), message);
            }
            reload();
        });
}
