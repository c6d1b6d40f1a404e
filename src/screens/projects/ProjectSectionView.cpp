#include "screens/projects/ProjectSectionView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/common/InlineEditableLabel.h"
#include "screens/common/LazyMenuButton.h"
#include "screens/projects/TaskListSidebarRowView.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

ProjectSectionView::ProjectSectionView(const ProjectWithListsEntity& item, bool isExpanded, bool isSelected,
    const QUuid& selectedListId, const QUuid& deletingListId, bool isDeleting, QWidget* parent)
    : QFrame(parent)
    , m_item(item)
    , m_name(new InlineEditableLabel(item.project.prjName, this))
    //% "Add list"
    , m_addList(new InlineAddRowView(QStringLiteral("task-lists-add-button"), qtTrId("task-lists-add-button"), this))
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto* header = m_header = new QFrame(this);
    header->setObjectName(QStringLiteral("projectHeader"));

    header->installEventFilter(this);
    auto* headerLayout = new QHBoxLayout(header);
    headerLayout->setContentsMargins(4, 4, 4, 4);
    m_fold = new QToolButton(header);
    m_fold->setObjectName(QStringLiteral("projectFold"));
    m_fold->setAutoRaise(true);
    QFont bold = m_name->font();
    bold.setBold(true);
    m_name->setLabelFont(bold);
    m_name->setElided(true);
    m_everyDay = new QToolButton(header);
    m_everyDay->setObjectName(QStringLiteral("showEveryDay"));
    m_everyDay->setCheckable(true);
    m_everyDay->setAutoRaise(true);
    //% "Show every day"
    m_everyDay->setToolTip(qtTrId("projects-show-every-day-button"));
    auto* more = new LazyMenuButton(
        [this](QMenu* menu) {
            //% "Rename"
            menu->addAction(Icons::symbol(QStringLiteral("pencil")), qtTrId("projects-edit-button"), this,
                &ProjectSectionView::startRenaming);
            QAction* everyDayAction
                = menu->addAction(Icons::symbol(QStringLiteral("star")), qtTrId("projects-show-every-day-button"));
            everyDayAction->setCheckable(true);
            everyDayAction->setChecked(m_item.project.prjShowEveryDay);
            connect(everyDayAction, &QAction::triggered, this,
                [this](bool checked) { Q_EMIT showEveryDayToggled(m_item.project, checked); });
            //% "Delete project"
            menu->addAction(Icons::symbol(QStringLiteral("trash")), qtTrId("projects-delete-button"), this,
                [this] { Q_EMIT deleteRequested(m_item.project); });
        },
        header);
    more->setObjectName(QStringLiteral("projectMenu"));
    more->setText(QStringLiteral("⋯"));
    headerLayout->addWidget(m_fold);
    headerLayout->addWidget(m_name, 1);
    headerLayout->addWidget(m_everyDay);
    headerLayout->addWidget(more);
    layout->addWidget(header);
    m_addList->setContentsMargins(24, 0, 0, 0);
    layout->addWidget(m_addList);

    connect(m_addList, &InlineAddRowView::addRequested, this,
        [this](const QString& name) { Q_EMIT addListRequested(m_item.project, name); });
    connect(
        m_fold, &QToolButton::clicked, this, [this] { Q_EMIT expandedChanged(m_item.project.prjId, !m_isExpanded); });
    connect(m_name, &InlineEditableLabel::committed, this,
        [this](const QString& name) { Q_EMIT renameRequested(m_item.project, name); });
    connect(m_everyDay, &QToolButton::clicked, this,
        [this](bool checked) { Q_EMIT showEveryDayToggled(m_item.project, checked); });
    setItem(item, isExpanded, isSelected, selectedListId, deletingListId, isDeleting);
}

void ProjectSectionView::setItem(const ProjectWithListsEntity& item, bool isExpanded, bool isSelected,
    const QUuid& selectedListId, const QUuid& deletingListId, bool isDeleting)
{
    m_item = item;
    m_isExpanded = isExpanded;
    const ProjectEntity& project = item.project;
    setObjectName(QStringLiteral("project:") + project.prjName);
    setEnabled(!isDeleting);
    if (!m_name->isEditing())
        m_name->setText(project.prjName);
    m_fold->setArrowType(isExpanded ? Qt::DownArrow : Qt::RightArrow);
    m_everyDay->setChecked(project.prjShowEveryDay);
    m_everyDay->setIcon(Icons::symbol(project.prjShowEveryDay ? QStringLiteral("star.fill") : QStringLiteral("star")));

    auto* lists = new QWidget(this);
    auto* listsLayout = new QVBoxLayout(lists);
    listsLayout->setContentsMargins(0, 0, 0, 0);
    listsLayout->setSpacing(0);
    for (const TaskListEntity& list : item.lists) {
        auto* row = new TaskListSidebarRowView(list, list.talId == selectedListId, list.talId == deletingListId, lists);
        connect(row, &TaskListSidebarRowView::selected, this,
            [this](const TaskListEntity& taskList) { Q_EMIT listSelected(taskList, m_item.project); });
        connect(row, &TaskListSidebarRowView::renameRequested, this, &ProjectSectionView::listRenameRequested);
        connect(row, &TaskListSidebarRowView::setDefaultRequested, this, &ProjectSectionView::listSetDefaultRequested);
        connect(row, &TaskListSidebarRowView::deleteRequested, this, &ProjectSectionView::listDeleteRequested);
        listsLayout->addWidget(row);
    }
    auto* layout = static_cast<QVBoxLayout*>(this->layout());
    if (m_lists) {
        layout->removeWidget(m_lists);
        // It may be handling the very click that asked for this.
        m_lists->hide();
        m_lists->deleteLater();
    }
    m_lists = lists;
    layout->insertWidget(1, lists);
    lists->setVisible(isExpanded);
    m_addList->setVisible(isExpanded);
    setSelection(isSelected, selectedListId);
}

void ProjectSectionView::setSelection(bool projectSelected, const QUuid& selectedListId)
{
    m_header->setAutoFillBackground(projectSelected);
    m_header->setBackgroundRole(projectSelected ? QPalette::Highlight : QPalette::Window);
    for (QWidget* child : m_header->findChildren<QWidget*>())
        child->setBackgroundRole(m_header->backgroundRole());
    m_header->update();
    for (TaskListSidebarRowView* row : findChildren<TaskListSidebarRowView*>())
        row->setSelected(row->taskList().talId == selectedListId);
}

void ProjectSectionView::startRenaming()
{
    m_name->startEditing();
}

bool ProjectSectionView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
        Q_EMIT projectSelected(m_item.project);
    return QFrame::eventFilter(watched, event);
}
