#include "screens/projects/CompletedTasksSectionView.h"

#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QToolButton>
#include <QVBoxLayout>

CompletedTasksSectionView::CompletedTasksSectionView(
    const QList<TaskEntity>& tasks, TaskActions& actions, bool isExpanded, QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 8, 0, 0);
    layout->setSpacing(0);
    QList<TaskEntity> completed;
    for (const TaskEntity& task : tasks) {
        if (task.tasIsDone)
            completed.append(task);
    }
    if (completed.isEmpty()) {
        hide();
        return;
    }
    auto* header = new QToolButton(this);
    header->setObjectName(QStringLiteral("completedHeader"));
    header->setCheckable(true);
    header->setChecked(isExpanded);
    header->setAutoRaise(true);
    header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    header->setArrowType(isExpanded ? Qt::DownArrow : Qt::RightArrow);
    //% "Completed"
    header->setText(QStringLiteral("%1 (%2)").arg(qtTrId("tasks-status-completed")).arg(completed.size()));
    layout->addWidget(header);
    auto* rows = new QWidget(this);
    auto* rowsLayout = new QVBoxLayout(rows);
    rowsLayout->setContentsMargins(0, 0, 0, 0);
    rowsLayout->setSpacing(0);
    for (const TaskEntity& task : completed) {
        auto* row = new TaskRowView(task, rows);
        actions.attach(row);
        rowsLayout->addWidget(row);
    }
    rows->setVisible(isExpanded);
    layout->addWidget(rows);
    connect(header, &QToolButton::toggled, this, [this, header, rows](bool expanded) {
        header->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
        rows->setVisible(expanded);
        Q_EMIT expandedChanged(expanded);
    });
}
