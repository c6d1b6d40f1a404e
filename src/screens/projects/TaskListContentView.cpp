#include "screens/projects/TaskListContentView.h"

#include "screens/common/InlineAddRowView.h"
#include "screens/projects/CompletedTasksSectionView.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QLabel>
#include <QVBoxLayout>

TaskListContentView::TaskListContentView(TaskActions& actions, QWidget* parent)
    : QWidget(parent)
    , m_actions(actions)
    , m_layout(new QVBoxLayout(this))
    //% "Add task"
    , m_addRow(new InlineAddRowView(QStringLiteral("tasks-add-button"), qtTrId("tasks-add-button"), this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_addRow);
    m_layout->addStretch(1);
    // The entry goes to the list shown when it is handed over: the one it was typed into.
    connect(m_addRow, &InlineAddRowView::addRequested, this,
        [this](const QString& title) { Q_EMIT m_actions.addTask(m_taskList, title); });
}

void TaskListContentView::setTasks(
    const TaskListEntity& taskList, const QList<TaskEntity>& tasks, bool isCompletedExpanded)
{
    m_taskList = taskList;
    auto* open = new QWidget(this);
    auto* openLayout = new QVBoxLayout(open);
    openLayout->setContentsMargins(0, 0, 0, 0);
    openLayout->setSpacing(0);
    for (const TaskEntity& task : tasks) {
        if (task.tasIsDone)
            continue;
        auto* row = new TaskRowView(task, open);
        m_actions.attach(row);
        openLayout->addWidget(row);
    }
    if (tasks.isEmpty()) {
        //% "No tasks yet"
        auto* empty = new QLabel(qtTrId("tasks-empty-state"), open);
        empty->setObjectName(QStringLiteral("tasksEmptyState"));
        empty->setEnabled(false);
        empty->setContentsMargins(4, 8, 4, 8);
        openLayout->addWidget(empty);
    }
    replace(m_openTasks, open, 0);

    auto* completed = new CompletedTasksSectionView(tasks, m_actions, isCompletedExpanded, this);
    connect(
        completed, &CompletedTasksSectionView::expandedChanged, this, &TaskListContentView::completedExpandedChanged);
    replace(m_completedTasks, completed, 2);
}

void TaskListContentView::replace(QWidget*& current, QWidget* next, int index)
{
    if (current) {
        m_layout->removeWidget(current);
        // It may be handling the very click that asked for this.
        current->hide();
        current->deleteLater();
    }
    m_layout->insertWidget(index, next);
    current = next;
}
