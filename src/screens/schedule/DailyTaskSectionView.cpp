#include "screens/schedule/DailyTaskSectionView.h"

#include "screens/common/Icons.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/common/InlineEditableLabel.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDrag>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

DailyTaskRowView::DailyTaskRowView(const DailyTaskEntity& task, QWidget* parent)
    : QWidget(parent)
    , m_task(task)
    , m_done(new QCheckBox(this))
    , m_title(new InlineEditableLabel(task.dtaTitle, this))
{
    setObjectName(QStringLiteral("dailyTaskRow"));
    m_done->setChecked(task.dtaIsDone);
    m_title->setStruckOut(task.dtaIsDone);
    auto* remove = new QToolButton(this);
    remove->setObjectName(QStringLiteral("dailyTaskDeleteButton"));
    remove->setIcon(Icons::symbol(QStringLiteral("trash")));
    remove->setAutoRaise(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_done);
    if (task.dtaIsDone) {
        auto* mark = new QLabel(this);
        mark->setPixmap(Icons::symbol(QStringLiteral("checkmark.circle.fill")).pixmap(14, 14));
        layout->addWidget(mark);
    }
    layout->addWidget(m_title, 1);
    layout->addWidget(remove);
    connect(m_done, &QCheckBox::clicked, this, [this](bool checked) {
        // One change at a time: the box stays disabled until the reload replaces the row.
        m_isToggling = true;
        m_done->setEnabled(false);
        Q_EMIT onToggleDone(m_task, checked);
    });
    connect(m_title, &InlineEditableLabel::committed, this,
        [this](const QString& title) { Q_EMIT onRename(m_task, title); });
    connect(remove, &QToolButton::clicked, this, [this] { Q_EMIT onDelete(m_task); });
    addBlockTimeAction(this, [this] { Q_EMIT onBlockTime(m_task); });
}

void addBlockTimeAction(QWidget* row, std::function<void()> blockTime)
{
    //% "Block time for this task"
    auto* action = new QAction(qtTrId("schedule-block-time-action"), row);
    action->setObjectName(QStringLiteral("blockTimeAction"));
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(action, &QAction::triggered, row, std::move(blockTime));
    row->addAction(action);
    row->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void DailyTaskRowView::mousePressEvent(QMouseEvent* event)
{
    m_pressPosition = event->position().toPoint();
    QWidget::mousePressEvent(event);
}

void DailyTaskRowView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)
        || (event->position().toPoint() - m_pressPosition).manhattanLength() < QApplication::startDragDistance())
        return;
    auto* mime = new QMimeData;
    mime->setData(dragMimeType, m_task.dtaId.toByteArray());
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(grab());
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

DailyTaskSectionView::DailyTaskSectionView(QWidget* parent)
    : QWidget(parent)
    , m_title(new QLabel(this))
    , m_rows(new QVBoxLayout)
    //% "Add a task for today"
    , m_add(new InlineAddRowView(QStringLiteral("dailyTask"), qtTrId("daily-task-add-button"), this))
{
    setObjectName(QStringLiteral("dailyTaskSection"));
    QFont bold = m_title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.1);
    m_title->setFont(bold);
    m_rows->setSpacing(2);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_title);
    layout->addLayout(m_rows);
    layout->addWidget(m_add);
    connect(m_add, &InlineAddRowView::addRequested, this, &DailyTaskSectionView::onAddTask);
    render();
}

void DailyTaskSectionView::setTasks(const QList<DailyTaskEntity>& tasks, bool isLoggedIn)
{
    m_tasks = tasks;
    m_isLoggedIn = isLoggedIn;
    render();
}

void DailyTaskSectionView::finishAdding(bool added)
{
    m_add->finishAdding(added);
}

QString DailyTaskSectionView::title() const
{
    //% "Task of the day"
    //% "Tasks of the day"
    return m_tasks.size() == 1 ? qtTrId("daily-task-title-singular") : qtTrId("daily-task-title-plural");
}

QList<DailyTaskRowView*> DailyTaskSectionView::rows() const
{
    return findChildren<DailyTaskRowView*>();
}

DailyTaskRowView* DailyTaskSectionView::makeRow(const DailyTaskEntity& task)
{
    auto* row = new DailyTaskRowView(task, this);
    connect(row, &DailyTaskRowView::onToggleDone, this, &DailyTaskSectionView::onToggleDone);
    connect(row, &DailyTaskRowView::onRename, this, &DailyTaskSectionView::onRenameTask);
    connect(row, &DailyTaskRowView::onDelete, this, &DailyTaskSectionView::onDeleteTask);
    connect(row, &DailyTaskRowView::onBlockTime, this, &DailyTaskSectionView::onBlockTime);
    return row;
}

void DailyTaskSectionView::render()
{
    while (QLayoutItem* item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_title->setText(title());
    m_add->setVisible(m_isLoggedIn);
    if (!m_isLoggedIn) {
        //% "Sign in to see your tasks"
        auto* required = new QLabel(qtTrId("schedule-login-required-state"), this);
        required->setEnabled(false);
        m_rows->addWidget(required);
        return;
    }
    if (m_tasks.isEmpty()) {
        //% "Nothing planned for this day"
        auto* empty = new QLabel(qtTrId("daily-task-empty-state"), this);
        empty->setObjectName(QStringLiteral("dailyTaskEmptyState"));
        empty->setEnabled(false);
        m_rows->addWidget(empty);
        return;
    }
    QList<DailyTaskEntity> done;
    for (const DailyTaskEntity& task : std::as_const(m_tasks)) {
        if (task.dtaIsDone)
            done.append(task);
        else
            m_rows->addWidget(makeRow(task));
    }
    if (done.isEmpty())
        return;
    auto* header = new QToolButton(this);
    header->setObjectName(QStringLiteral("dailyTaskCompletedHeader"));
    header->setAutoRaise(true);
    header->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    header->setArrowType(m_isCompletedExpanded ? Qt::DownArrow : Qt::RightArrow);
    //% "Completed"
    header->setText(qtTrId("tasks-status-completed") + QStringLiteral(" (%1)").arg(done.size()));
    connect(header, &QToolButton::clicked, this, [this] {
        m_isCompletedExpanded = !m_isCompletedExpanded;
        // Not from inside the header's own click: render replaces the header.
        QMetaObject::invokeMethod(this, &DailyTaskSectionView::render, Qt::QueuedConnection);
    });
    m_rows->addWidget(header);
    if (m_isCompletedExpanded) {
        for (const DailyTaskEntity& task : std::as_const(done))
            m_rows->addWidget(makeRow(task));
    }
}
