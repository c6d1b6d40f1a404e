#include "screens/schedule/AllDayEventsSectionView.h"

#include "screens/common/Icons.h"
#include "screens/schedule/ElidedLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QVBoxLayout>

AllDayEventRowView::AllDayEventRowView(const MeetEntity& meet, std::optional<bool> taskDone, QWidget* parent)
    : QFrame(parent)
    , m_meet(meet)
{
    setObjectName(QStringLiteral("allDayEventRow"));
    setCursor(Qt::PointingHandCursor);
    const QColor color(meet.metColor.hexValue);
    setStyleSheet(QStringLiteral("#allDayEventRow { background: rgba(%1,%2,%3,0.22); border-radius: 4px; }")
                      .arg(color.red())
                      .arg(color.green())
                      .arg(color.blue()));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 3, 8, 3);
    if (taskDone) {
        m_task = new QCheckBox(this);
        m_task->setObjectName(QStringLiteral("meetTaskCheckBox"));
        m_task->setCursor(Qt::ArrowCursor);
        m_task->setChecked(*taskDone);
        m_task->setToolTip(qtTrId("meet-task-done-checkbox"));
        m_task->setAccessibleName(qtTrId("meet-task-done-checkbox"));
        connect(m_task, &QCheckBox::clicked, this, [this](bool checked) {
            // One change at a time: the day read again brings a new row.
            m_task->setEnabled(false);
            Q_EMIT taskDoneToggled(m_meet, checked);
        });
        layout->addWidget(m_task);
    }
    auto* name = new ElidedLabel(meet.metName, this);
    layout->addWidget(name, 1);
}

void AllDayEventRowView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    m_pressPosition = event->position().toPoint();
    m_dragged = false;
}

void AllDayEventRowView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
    if (m_dragged || !(event->buttons() & Qt::LeftButton)
        || (event->position().toPoint() - m_pressPosition).manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragged = true;
    auto* mime = new QMimeData;
    mime->setData(dragMimeType, m_meet.metId.toByteArray());
    auto* drag = new QDrag(this);
    drag->setMimeData(mime);
    drag->setPixmap(grab());
    drag->exec(Qt::MoveAction);
}

void AllDayEventRowView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    // The end of a drag is no click.
    if (event->button() == Qt::LeftButton && !std::exchange(m_dragged, false)
        && rect().contains(event->position().toPoint()))
        Q_EMIT detailRequested(m_meet);
}

void AllDayEventRowView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.addAction(Icons::symbol(QStringLiteral("pencil")), qtTrId("meet-detail-edit-button"), this,
        [this] { Q_EMIT onEdit(m_meet); });
    menu.addAction(Icons::symbol(QStringLiteral("trash")), qtTrId("meet-detail-delete-button"), this,
        [this] { Q_EMIT onDelete(m_meet); });
    menu.exec(event->globalPos());
}

AllDayEventsSectionView::AllDayEventsSectionView(QWidget* parent)
    : QWidget(parent)
    , m_rows(new QVBoxLayout)
{
    setObjectName(QStringLiteral("allDayEventsSection"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    //% "All day"
    auto* title = new QLabel(qtTrId("daily-events-all-day-section-title"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title);
    m_rows->setSpacing(2);
    layout->addLayout(m_rows);
}

void AllDayEventsSectionView::setMeets(const QList<MeetEntity>& meets, const QHash<QUuid, bool>& taskDone)
{
    while (QLayoutItem* item = m_rows->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    if (meets.isEmpty()) {
        //% "No all-day events"
        auto* empty = new QLabel(qtTrId("daily-events-all-day-empty-state-text"), this);
        empty->setObjectName(QStringLiteral("allDayEmptyState"));
        empty->setEnabled(false);
        m_rows->addWidget(empty);
        return;
    }
    for (const MeetEntity& meet : meets) {
        const auto done = taskDone.constFind(meet.metId);
        auto* row
            = new AllDayEventRowView(meet, done == taskDone.cend() ? std::nullopt : std::optional<bool>(*done), this);
        connect(row, &AllDayEventRowView::taskDoneToggled, this, &AllDayEventsSectionView::taskDoneToggled);
        connect(row, &AllDayEventRowView::detailRequested, this, &AllDayEventsSectionView::detailRequested);
        connect(row, &AllDayEventRowView::onEdit, this, &AllDayEventsSectionView::onEditMeet);
        connect(row, &AllDayEventRowView::onDelete, this, &AllDayEventsSectionView::onDeleteMeet);
        m_rows->addWidget(row);
    }
}

QList<AllDayEventRowView*> AllDayEventsSectionView::rows() const
{
    return findChildren<AllDayEventRowView*>();
}
