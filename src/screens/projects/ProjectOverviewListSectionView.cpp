#include "screens/projects/ProjectOverviewListSectionView.h"

#include "screens/common/UserText.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

ProjectOverviewListSectionView::ProjectOverviewListSectionView(
    const TaskListWithTasksEntity& item, TaskActions& actions, bool isExpanded, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("overview:") + item.taskList.talName);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 4);
    layout->setSpacing(0);

    auto* header = new QHBoxLayout;
    auto* fold = new QToolButton(this);
    fold->setCheckable(true);
    fold->setChecked(isExpanded);
    fold->setAutoRaise(true);
    fold->setArrowType(isExpanded ? Qt::DownArrow : Qt::RightArrow);
    int open = 0;
    for (const TaskEntity& task : item.tasks)
        open += task.tasIsDone ? 0 : 1;
    auto* title = new QPushButton(
        QStringLiteral("%1  (%2/%3)").arg(UserText::onButton(item.taskList.talName)).arg(open).arg(item.tasks.size()),
        this);
    title->setObjectName(QStringLiteral("overviewListTitle"));
    title->setToolTip(item.taskList.talName);
    title->setFlat(true);
    title->setCursor(Qt::PointingHandCursor);
    title->setStyleSheet(QStringLiteral("text-align: left; font-weight: bold;"));
    header->addWidget(fold);
    header->addWidget(title, 1);
    layout->addLayout(header);

    auto* rows = new QWidget(this);
    auto* rowsLayout = new QVBoxLayout(rows);
    rowsLayout->setContentsMargins(24, 0, 0, 0);
    rowsLayout->setSpacing(0);
    for (const TaskEntity& task : item.tasks) {
        auto* row = new TaskRowView(task, rows);
        actions.attach(row);
        rowsLayout->addWidget(row);
    }
    rows->setVisible(isExpanded);
    layout->addWidget(rows);

    connect(fold, &QToolButton::toggled, this, [this, fold, rows, id = item.taskList.talId](bool expanded) {
        fold->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
        rows->setVisible(expanded);
        Q_EMIT expandedChanged(id, expanded);
    });
    connect(title, &QPushButton::clicked, this, [this, list = item.taskList] { Q_EMIT openList(list); });
}
