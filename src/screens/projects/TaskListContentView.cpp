#include "screens/projects/TaskListContentView.h"

#include "screens/common/InlineAddRowView.h"
#include "screens/projects/CompletedTasksSectionView.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QLabel>
#include <QVBoxLayout>

TaskListContentView::TaskListContentView(const TaskListEntity& taskList, const QList<TaskEntity>& tasks,
    TaskActions& actions, bool isCompletedExpanded, QWidget* parent)
    : QWidget(parent)
    //% "Add task"
    , m_addRow(new InlineAddRowView(QStringLiteral("tasks-add-button"), qtTrId("tasks-add-button"), this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const TaskEntity& task : tasks) {
        if (task.tasIsDone)
            continue;
        auto* row = new TaskRowView(task, this);
        actions.attach(row);
        layout->addWidget(row);
    }
    if (tasks.isEmpty()) {
        //% "No tasks yet"
        auto* empty = new QLabel(qtTrId("tasks-empty-state"), this);
        empty->setObjectName(QStringLiteral("tasksEmptyState"));
        empty->setEnabled(false);
        empty->setContentsMargins(4, 8, 4, 8);
        layout->addWidget(empty);
    }
    layout->addWidget(m_addRow);
    connect(m_addRow, &InlineAddRowView::addRequested, &actions,
        [&actions, taskList](const QString& title) { Q_EMIT actions.addTask(taskList, title); });

    auto* completedSection = new CompletedTasksSectionView(tasks, actions, isCompletedExpanded, this);
    connect(completedSection, &CompletedTasksSectionView::expandedChanged, this,
        &TaskListContentView::completedExpandedChanged);
    layout->addWidget(completedSection);
    layout->addStretch(1);
}
