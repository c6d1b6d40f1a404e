#include "screens/schedule/ScheduleProjectSectionView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/TaskRowView.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

ScheduleProjectSectionView::ScheduleProjectSectionView(
    const ProjectWithDefaultListEntity& item, bool isExpanded, QWidget* parent)
    : QWidget(parent)
    , m_item(item)
    , m_isExpanded(isExpanded)
    , m_body(new QWidget(this))
    , m_header(new QToolButton(this))
{
    setObjectName(QStringLiteral("scheduleProjectSection"));
    m_header->setObjectName(QStringLiteral("scheduleProjectHeader"));
    m_header->setAutoRaise(true);
    m_header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_header->setText(item.project.prjName);
    QFont bold = m_header->font();
    bold.setBold(true);
    m_header->setFont(bold);
    connect(m_header, &QToolButton::clicked, this, [this] {
        setExpanded(!m_isExpanded);
        Q_EMIT isExpandedChanged(m_item.project.prjId, m_isExpanded);
    });

    auto* body = new QVBoxLayout(m_body);
    body->setContentsMargins(18, 0, 0, 0);
    body->setSpacing(1);
    if (!item.list) {
        //% "This project has no default list"
        auto* none = new QLabel(qtTrId("schedule-projects-no-default-list-text"), m_body);
        none->setEnabled(false);
        body->addWidget(none);
    } else {
        const TaskListEntity list = *item.list;
        QList<TaskEntity> completed;
        // Open tasks first: they are what the day is for.
        QList<TaskEntity> ordered;
        for (const TaskEntity& task : item.tasks)
            (task.tasIsDone ? completed : ordered).append(task);
        ordered += completed;
        for (const TaskEntity& task : std::as_const(ordered)) {
            auto* row = new TaskRowView(task, m_body);
            connect(row, &TaskRowView::toggleDone, this, &ScheduleProjectSectionView::onToggleDone);
            connect(row, &TaskRowView::rename, this, &ScheduleProjectSectionView::onRenameTask);
            connect(row, &TaskRowView::deleteRequested, this, &ScheduleProjectSectionView::onDeleteTask);
            connect(row, &TaskRowView::setTag, this, &ScheduleProjectSectionView::onSetEisenhowerTag);
            body->addWidget(row);
        }
        m_add
            = new InlineAddRowView(QStringLiteral("scheduleTask:") + item.project.prjId.toString(QUuid::WithoutBraces),
                qtTrId("tasks-add-button"), m_body);
        connect(m_add, &InlineAddRowView::addRequested, this,
            [this, list](const QString& title) { Q_EMIT onAddTask(list, title); });
        body->addWidget(m_add);
        if (!completed.isEmpty()) {
            auto* deleteCompleted = new QPushButton(
                Icons::symbol(QStringLiteral("trash")), qtTrId("tasks-delete-completed-button"), m_body);
            deleteCompleted->setObjectName(QStringLiteral("scheduleDeleteCompletedButton"));
            deleteCompleted->setFlat(true);
            connect(deleteCompleted, &QPushButton::clicked, this,
                [this, list, completed] { Q_EMIT onDeleteAllCompleted(list, completed); });
            body->addWidget(deleteCompleted, 0, Qt::AlignLeft);
        }
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_header);
    layout->addWidget(m_body);
    setExpanded(isExpanded);
}

void ScheduleProjectSectionView::setExpanded(bool expanded)
{
    m_isExpanded = expanded;
    m_header->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
    m_body->setVisible(expanded);
}

QList<TaskRowView*> ScheduleProjectSectionView::taskRows() const
{
    return m_body->findChildren<TaskRowView*>();
}
