#include "screens/projects/TasksDetailPaneView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/common/LogoPlaceholderView.h"
#include "screens/projects/ProjectOverviewListSectionView.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskDaysContentView.h"
#include "screens/projects/TaskEisenhowerMatrixView.h"
#include "screens/projects/TaskListContentView.h"
#include "screens/projects/TaskRowView.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QToolButton* toolButton(const QString& objectName, const QString& text, const QIcon& icon, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(objectName);
    button->setText(text);
    button->setIcon(icon);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setAutoRaise(true);
    return button;
}

} // namespace

TasksDetailPaneView::TasksDetailPaneView(TaskActions& actions, QWidget* parent)
    : QWidget(parent)
    , m_actions(actions)
    , m_pages(new QStackedWidget(this))
    //% "Choose a list or a project"
    , m_placeholder(new LogoPlaceholderView(
          qtTrId("tasks-select-list-placeholder"), QStringLiteral("detailPlaceholder"), 96, this))
    , m_content(new QWidget(this))
    , m_title(new QLabel(this))
    , m_listTools(new QWidget(this))
    , m_bodies(new QStackedWidget(this))
    , m_scroll(new QScrollArea(this))
    , m_listScroll(new QScrollArea(this))
    , m_listContent(new TaskListContentView(actions))
{
    setObjectName(QStringLiteral("tasksDetailPane"));

    QFont titleFont = m_title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
    titleFont.setBold(true);
    m_title->setFont(titleFont);
    m_title->setObjectName(QStringLiteral("detailTitle"));
    m_title->setTextFormat(Qt::PlainText);

    //% "Tasks"
    m_tasksMode = toolButton(QStringLiteral("viewModeTasks"), qtTrId("task-list-view-mode-tasks"),
        Icons::symbol(QStringLiteral("list.bullet")), m_listTools);
    //% "Matrix"
    m_matrixMode = toolButton(QStringLiteral("viewModeMatrix"), qtTrId("task-list-view-mode-detail"),
        Icons::symbol(QStringLiteral("square.grid.2x2")), m_listTools);
    for (QToolButton* mode : {m_tasksMode, m_matrixMode})
        mode->setCheckable(true);
    auto* modes = new QButtonGroup(this);
    modes->addButton(m_tasksMode);
    modes->addButton(m_matrixMode);
    m_tasksMode->setChecked(true);
    //% "Delete completed"
    m_deleteCompleted = toolButton(QStringLiteral("deleteCompleted"), qtTrId("tasks-delete-completed-button"),
        Icons::symbol(QStringLiteral("checkmark.circle.fill")), m_listTools);
    //% "Delete list"
    QToolButton* deleteList = m_deleteList = toolButton(QStringLiteral("deleteList"),
        qtTrId("task-lists-delete-button"), Icons::symbol(QStringLiteral("trash")), m_listTools);
    auto* toolsLayout = new QHBoxLayout(m_listTools);
    toolsLayout->setContentsMargins(0, 0, 0, 0);
    toolsLayout->addWidget(m_tasksMode);
    toolsLayout->addWidget(m_matrixMode);
    toolsLayout->addStretch();
    toolsLayout->addWidget(m_deleteCompleted);
    toolsLayout->addWidget(deleteList);

    for (QScrollArea* scroll : {m_scroll, m_listScroll}) {
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_bodies->addWidget(scroll);
    }
    m_listScroll->setObjectName(QStringLiteral("taskListScroll"));
    m_listScroll->setWidget(m_listContent);
    connect(m_listContent, &TaskListContentView::completedExpandedChanged, this,
        [this](bool expanded) { m_isCompletedExpanded = expanded; });
    // While the user adds tasks the list grows under the add row: keep the row, and the task
    // just added above it, in view.
    connect(m_listScroll->verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        InlineAddRowView* row = m_listContent->addRow();
        if (row->isEditing() && row->isAncestorOf(QApplication::focusWidget()))
            m_listScroll->ensureWidgetVisible(row, 0, 2 * row->height());
    });
    auto* contentLayout = new QVBoxLayout(m_content);
    contentLayout->addWidget(m_title);
    contentLayout->addWidget(m_listTools);
    contentLayout->addWidget(m_bodies, 1);

    m_pages->addWidget(m_placeholder);
    m_pages->addWidget(m_content);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addWidget(m_pages);

    connect(m_tasksMode, &QToolButton::clicked, this, [this] { setTaskListViewMode(TaskListViewModeEnum::tasks); });
    connect(m_matrixMode, &QToolButton::clicked, this, [this] { setTaskListViewMode(TaskListViewModeEnum::detail); });
    connect(deleteList, &QToolButton::clicked, this, [this] { Q_EMIT deleteListRequested(m_taskList); });
    connect(m_deleteCompleted, &QToolButton::clicked, this, [this] {
        QList<TaskEntity> completed;
        for (const TaskEntity& task : m_tasks) {
            if (task.tasIsDone)
                completed.append(task);
        }
        Q_EMIT deleteAllCompletedRequested(completed);
    });
    showNone();
}

void TasksDetailPaneView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    // In a narrow pane the deletions keep their icons (and say what they do as tooltips), so the
    // tools fit without pushing the pane wider than the window allows.
    const bool narrow = width() < 560;
    for (QToolButton* button : {m_deleteCompleted, m_deleteList}) {
        button->setToolButtonStyle(narrow ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
        button->setToolTip(narrow ? button->text() : QString());
    }
}

void TasksDetailPaneView::setTaskListViewMode(TaskListViewModeEnum mode)
{
    m_viewMode = mode;
    (mode == TaskListViewModeEnum::tasks ? m_tasksMode : m_matrixMode)->setChecked(true);
    if (m_selection == ProjectsDetailSelectionEnum::list)
        rebuildList();
}

InlineAddRowView* TasksDetailPaneView::addRow() const
{
    return m_selection == ProjectsDetailSelectionEnum::list && m_viewMode == TaskListViewModeEnum::tasks
        ? m_listContent->addRow()
        : nullptr;
}

void TasksDetailPaneView::showNone()
{
    m_selection = ProjectsDetailSelectionEnum::none;
    m_pages->setCurrentWidget(m_placeholder);
}

void TasksDetailPaneView::showProject(const ProjectEntity& project, const QList<TaskListWithTasksEntity>& lists)
{
    m_selection = ProjectsDetailSelectionEnum::project;
    m_title->setText(project.prjName);
    m_listTools->hide();
    auto* body = new QWidget;
    auto* layout = new QVBoxLayout(body);
    if (lists.isEmpty()) {
        //% "This project has no lists yet"
        auto* empty = new QLabel(qtTrId("project-overview-empty-state"), body);
        empty->setObjectName(QStringLiteral("overviewEmptyState"));
        empty->setEnabled(false);
        layout->addWidget(empty);
    }
    for (const TaskListWithTasksEntity& item : lists) {
        auto* section = new ProjectOverviewListSectionView(
            item, m_actions, m_expandedOverviewListIds.contains(item.taskList.talId), body);
        connect(
            section, &ProjectOverviewListSectionView::expandedChanged, this, [this](const QUuid& id, bool expanded) {
                if (expanded)
                    m_expandedOverviewListIds.insert(id);
                else
                    m_expandedOverviewListIds.remove(id);
            });
        connect(section, &ProjectOverviewListSectionView::openList, this, &TasksDetailPaneView::selectList);
        layout->addWidget(section);
    }
    layout->addStretch(1);
    setBody(body);
    m_bodies->setCurrentWidget(m_scroll);
    m_pages->setCurrentWidget(m_content);
}

void TasksDetailPaneView::showList(const TaskListEntity& taskList, const QList<TaskEntity>& tasks)
{
    const bool sameList = m_selection == ProjectsDetailSelectionEnum::list && m_taskList.talId == taskList.talId;
    InlineAddRowView* row = m_listContent->addRow();
    if (!sameList && !row->isAdding() && row->waitingCount() == 0)
        row->cancel();
    m_selection = ProjectsDetailSelectionEnum::list;
    m_taskList = taskList;
    m_tasks = tasks;
    m_title->setText(taskList.talName);
    m_listTools->show();
    rebuildList();
    m_pages->setCurrentWidget(m_content);
}

void TasksDetailPaneView::showDays(ProjectsDetailSelectionEnum view, const QList<TaskEntity>& tasks, const QDate& today,
    const QHash<QUuid, QString>& places)
{
    const bool same = m_selection == view;
    m_selection = view;
    //% "Today"
    //% "Upcoming"
    m_title->setText(view == ProjectsDetailSelectionEnum::today ? qtTrId("tasks-day-view-today")
                                                                : qtTrId("tasks-day-view-upcoming"));
    m_listTools->hide();
    // The row that had the focus (ticked or scheduled by keyboard) hands it to the same place.
    int focused = -1;
    if (same && m_scroll->widget()) {
        const QList<TaskRowView*> rows = m_scroll->widget()->findChildren<TaskRowView*>();
        for (int index = 0; index < rows.size(); ++index) {
            if (rows.at(index)->isAncestorOf(QApplication::focusWidget()) || rows.at(index)->hasFocus())
                focused = index;
        }
    }
    auto* body = new TaskDaysContentView(view, tasks, today, places, m_actions);
    setBody(body);
    m_bodies->setCurrentWidget(m_scroll);
    m_pages->setCurrentWidget(m_content);
    const QList<TaskRowView*> rows = body->findChildren<TaskRowView*>();
    if (focused >= 0 && !rows.isEmpty())
        rows.at(std::min<int>(focused, rows.size() - 1))->setFocus(Qt::OtherFocusReason);
}

void TasksDetailPaneView::rebuildList()
{
    m_deleteCompleted->setEnabled(
        std::any_of(m_tasks.begin(), m_tasks.end(), [](const TaskEntity& task) { return task.tasIsDone; }));
    if (m_viewMode == TaskListViewModeEnum::tasks) {
        m_listContent->setTasks(m_taskList, m_tasks, m_isCompletedExpanded);
        m_bodies->setCurrentWidget(m_listScroll);
    } else {
        auto* body = new TaskEisenhowerMatrixView(m_tasks, m_actions, m_isCompletedExpanded);
        connect(body, &TaskEisenhowerMatrixView::completedExpandedChanged, this,
            [this](bool expanded) { m_isCompletedExpanded = expanded; });
        setBody(body);
        m_bodies->setCurrentWidget(m_scroll);
    }
}

void TasksDetailPaneView::setBody(QWidget* body)
{
    const int scrolled = m_scroll->verticalScrollBar() ? m_scroll->verticalScrollBar()->value() : 0;
    // The old content may be handling the very click that asked for this.
    if (QWidget* old = m_scroll->takeWidget())
        old->deleteLater();
    m_scroll->setWidget(body);
    m_scroll->verticalScrollBar()->setValue(scrolled);
}

void TasksDetailPaneView::highlightTask(const QUuid& taskId)
{
    const auto task = std::find_if(
        m_tasks.cbegin(), m_tasks.cend(), [&taskId](const TaskEntity& each) { return each.tasId == taskId; });
    if (m_selection != ProjectsDetailSelectionEnum::list || task == m_tasks.cend())
        return;
    if (m_viewMode != TaskListViewModeEnum::tasks)
        setTaskListViewMode(TaskListViewModeEnum::tasks);
    if (task->tasIsDone && !m_isCompletedExpanded) {
        m_isCompletedExpanded = true;
        rebuildList();
    }
    for (TaskRowView* row : m_listContent->findChildren<TaskRowView*>()) {
        if (row->task().tasId != taskId)
            continue;
        // Rows being replaced linger, hidden, until deleted.
        bool replaced = false;
        for (QWidget* part = row; part && part != m_listContent; part = part->parentWidget())
            replaced = replaced || (part->isHidden() && part->testAttribute(Qt::WA_WState_ExplicitShowHide));
        if (replaced)
            continue;
        row->setAutoFillBackground(true);
        QPalette marked = row->palette();
        marked.setColor(QPalette::Window, palette().color(QPalette::Highlight).lighter(170));
        row->setPalette(marked);
        m_highlightedRow = row;
        row->setFocus(Qt::OtherFocusReason);
        // New rows have their places once the layout has run.
        QTimer::singleShot(0, row, [this, row] { m_listScroll->ensureWidgetVisible(row, 0, row->height()); });
        return;
    }
}

QUuid TasksDetailPaneView::highlightedTaskId() const
{
    const auto* row = qobject_cast<const TaskRowView*>(m_highlightedRow.data());
    return row ? row->task().tasId : QUuid();
}
