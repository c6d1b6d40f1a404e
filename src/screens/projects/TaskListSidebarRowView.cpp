#include "screens/projects/TaskListSidebarRowView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineEditableLabel.h"
#include "screens/common/LazyMenuButton.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>

TaskListSidebarRowView::TaskListSidebarRowView(
    const TaskListEntity& taskList, bool isSelected, bool isDeleting, QWidget* parent)
    : QFrame(parent)
    , m_taskList(taskList)
    , m_name(new InlineEditableLabel(taskList.talName, this))
{
    setObjectName(QStringLiteral("list:") + taskList.talName);
    m_name->setElided(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setSelected(isSelected);
    setEnabled(!isDeleting);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(28, 2, 4, 2);
    layout->addWidget(m_name, 1);
    if (taskList.talIsDefault) {
        //% "Default"
        auto* badge = new QLabel(qtTrId("task-lists-default-badge"), this);
        badge->setObjectName(QStringLiteral("defaultBadge"));
        badge->setStyleSheet(QStringLiteral("border: 1px solid palette(mid); border-radius: 6px; padding: 0 4px;"));
        layout->addWidget(badge);
    }
    auto* more = new LazyMenuButton(
        [this](QMenu* menu) {
            //% "Rename"
            menu->addAction(Icons::symbol(QStringLiteral("pencil")), qtTrId("task-lists-rename-button"), this,
                &TaskListSidebarRowView::startRenaming);
            //% "Make default"
            menu->addAction(Icons::symbol(QStringLiteral("star")), qtTrId("task-lists-set-default-button"), this,
                    [this] { Q_EMIT setDefaultRequested(m_taskList); })
                ->setEnabled(!m_taskList.talIsDefault);
            //% "Delete list"
            menu->addAction(Icons::symbol(QStringLiteral("trash")), qtTrId("task-lists-delete-button"), this,
                [this] { Q_EMIT deleteRequested(m_taskList); });
        },
        this);
    more->setObjectName(QStringLiteral("listMenu"));
    more->setText(QStringLiteral("⋯"));
    layout->addWidget(more);

    connect(m_name, &InlineEditableLabel::committed, this,
        [this](const QString& name) { Q_EMIT renameRequested(m_taskList, name); });
}

void TaskListSidebarRowView::setSelected(bool selected)
{
    // Children take their text colour from the background role, so it changes with the selection.
    setAutoFillBackground(selected);
    setBackgroundRole(selected ? QPalette::Highlight : QPalette::Window);
    for (QWidget* child : findChildren<QWidget*>())
        child->setBackgroundRole(backgroundRole());
    update();
}

void TaskListSidebarRowView::startRenaming()
{
    m_name->startEditing();
}

void TaskListSidebarRowView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT selected(m_taskList);
    QFrame::mousePressEvent(event);
}

void TaskListSidebarRowView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT selected(m_taskList);
        return;
    case Qt::Key_F2:
        startRenaming();
        return;
    case Qt::Key_Delete:
        Q_EMIT deleteRequested(m_taskList);
        return;
    default:
        QFrame::keyPressEvent(event);
    }
}
