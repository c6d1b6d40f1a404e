#include "screens/schedule/ScheduleProjectSectionView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/TaskRowView.h"
#include "screens/schedule/DailyTaskSectionView.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

ScheduleProjectSectionView::ScheduleProjectSectionView(
    const ProjectWithDefaultListEntity& item, bool isExpanded, QWidget* parent)
    : QWidget(parent)
    , m_item(item)
    , m_header(new QToolButton(this))
{
    setObjectName(QStringLiteral("scheduleProjectSection"));
    m_header->setObjectName(QStringLiteral("scheduleProjectHeader"));
    m_header->setAutoRaise(true);
    m_header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_header->setToolTip(item.project.prjName);
    // The name gives way to a narrow pane rather than widening it.
    m_header->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QFont bold = m_header->font();
    bold.setBold(true);
    m_header->setFont(bold);
    connect(m_header, &QToolButton::clicked, this, [this] {
        setExpanded(!m_isExpanded);
        Q_EMIT isExpandedChanged(m_item.project.prjId, m_isExpanded);
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_header);
    setExpanded(isExpanded);
    fitHeader();
}

void ScheduleProjectSectionView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitHeader();
}

void ScheduleProjectSectionView::fitHeader()
{
    // Room for the arrow and the button's own padding.
    const int room = std::max(0, width() - m_header->iconSize().width() - 24);
    const QString name = m_header->fontMetrics().elidedText(m_item.project.prjName, Qt::ElideRight, room);
    // A button reads "&" as the mark of a keyboard shortcut; a name shows it as it was typed.
    m_header->setText(QString(name).replace(QLatin1Char('&'), QStringLiteral("&&")));
}

void ScheduleProjectSectionView::buildBody()
{
    m_body = new QWidget(this);
    auto* body = new QVBoxLayout(m_body);
    body->setContentsMargins(18, 0, 0, 0);
    body->setSpacing(1);
    if (!m_item.list) {
        //% "This project has no default list"
        auto* none = new QLabel(qtTrId("schedule-projects-no-default-list-text"), m_body);
        none->setEnabled(false);
        body->addWidget(none);
    } else {
        const TaskListEntity list = *m_item.list;
        m_add = new InlineAddRowView(
            QStringLiteral("scheduleTask:") + m_item.project.prjId.toString(QUuid::WithoutBraces),
            qtTrId("tasks-add-button"), m_body);
        connect(m_add, &InlineAddRowView::addRequested, this,
            [this, list](const QString& title) { Q_EMIT onAddTask(list, title); });
        body->addWidget(m_add);
        buildTaskRows();
    }
    layout()->addWidget(m_body);
}

void ScheduleProjectSectionView::buildTaskRows()
{
    auto* body = static_cast<QVBoxLayout*>(m_body->layout());
    const TaskListEntity list = *m_item.list;
    QList<TaskEntity> completed;
    // Open tasks first: they are what the day is for.
    QList<TaskEntity> ordered;
    for (const TaskEntity& task : std::as_const(m_item.tasks))
        (task.tasIsDone ? completed : ordered).append(task);
    ordered += completed;
    m_rows = new QWidget(m_body);
    auto* rows = new QVBoxLayout(m_rows);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(1);
    for (const TaskEntity& task : std::as_const(ordered)) {
        auto* row = new TaskRowView(task, m_rows);
        // The pane is narrow: a task's schedule opens from the row's menu or Ctrl+E here.
        if (auto* schedule = row->findChild<QToolButton*>(QStringLiteral("taskSchedule")))
            schedule->hide();
        connect(row, &TaskRowView::toggleDone, this, &ScheduleProjectSectionView::onToggleDone);
        connect(row, &TaskRowView::rename, this, &ScheduleProjectSectionView::onRenameTask);
        connect(row, &TaskRowView::deleteRequested, this, &ScheduleProjectSectionView::onDeleteTask);
        connect(row, &TaskRowView::setTag, this, &ScheduleProjectSectionView::onSetEisenhowerTag);
        addBlockTimeAction(row, [this, task] { Q_EMIT onBlockTime(task); });
        rows->addWidget(row);
    }
    body->insertWidget(0, m_rows);
    m_footer = new QWidget(m_body);
    auto* footer = new QVBoxLayout(m_footer);
    footer->setContentsMargins(0, 0, 0, 0);
    if (!completed.isEmpty()) {
        auto* deleteCompleted = new QPushButton(
            Icons::symbol(QStringLiteral("trash")), qtTrId("tasks-delete-completed-button"), m_footer);
        deleteCompleted->setObjectName(QStringLiteral("scheduleDeleteCompletedButton"));
        deleteCompleted->setFlat(true);
        connect(deleteCompleted, &QPushButton::clicked, this,
            [this, list, completed] { Q_EMIT onDeleteAllCompleted(list, completed); });
        footer->addWidget(deleteCompleted, 0, Qt::AlignLeft);
    }
    body->addWidget(m_footer);
}

bool ScheduleProjectSectionView::setItem(const ProjectWithDefaultListEntity& item)
{
    if (item.project.prjId != m_item.project.prjId || item.list != m_item.list)
        return false;
    m_item = item;
    m_header->setToolTip(item.project.prjName);
    fitHeader();
    if (m_body && m_rows) {
        dropTaskRows();
        if (m_isExpanded)
            buildTaskRows();
    }
    return true;
}

void ScheduleProjectSectionView::dropTaskRows()
{
    // The add row stays as it is: it may hold text being typed and entries still waiting to be
    // stored. A row may be replaced from inside its own signal: let it return first.
    for (QWidget* old : {m_rows.data(), m_footer.data()}) {
        if (!old)
            continue;
        old->hide();
        old->deleteLater();
    }
    m_rows.clear();
    m_footer.clear();
}

void ScheduleProjectSectionView::setExpanded(bool expanded)
{
    m_isExpanded = expanded;
    m_header->setArrowType(expanded ? Qt::DownArrow : Qt::RightArrow);
    if (expanded && !m_body)
        buildBody();
    else if (expanded && m_body && !m_rows && m_item.list)
        buildTaskRows();
    // Folded, a project keeps no rows, so that a big store stays cheap on any day.
    else if (!expanded && m_rows)
        dropTaskRows();
    if (m_body)
        m_body->setVisible(expanded);
}

QList<TaskRowView*> ScheduleProjectSectionView::taskRows() const
{
    return m_rows ? m_rows->findChildren<TaskRowView*>() : QList<TaskRowView*>();
}
