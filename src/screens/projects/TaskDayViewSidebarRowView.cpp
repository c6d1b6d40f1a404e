#include "screens/projects/TaskDayViewSidebarRowView.h"

#include "screens/common/Icons.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

TaskDayViewSidebarRowView::TaskDayViewSidebarRowView(ProjectsDetailSelectionEnum view, QWidget* parent)
    : QFrame(parent)
    , m_view(view)
    , m_count(new QLabel(this))
{
    const bool today = view == ProjectsDetailSelectionEnum::today;
    setObjectName(today ? QStringLiteral("dayView:today") : QStringLiteral("dayView:upcoming"));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    auto* icon = new QLabel(this);
    icon->setPixmap(Icons::symbol(today ? QStringLiteral("sun.max") : QStringLiteral("calendar")).pixmap(16, 16));
    //% "Today"
    //% "Upcoming"
    auto* name = new QLabel(today ? qtTrId("tasks-day-view-today") : qtTrId("tasks-day-view-upcoming"), this);
    QFont bold = name->font();
    bold.setBold(true);
    name->setFont(bold);
    m_count->setObjectName(QStringLiteral("dayViewCount"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 3, 8, 3);
    layout->addWidget(icon);
    layout->addWidget(name, 1);
    layout->addWidget(m_count);
    setCount(0);
}

void TaskDayViewSidebarRowView::setCount(int count, int overdue)
{
    m_countValue = count;
    m_count->setText(count > 0 ? QString::number(count) : QString());
    m_count->setProperty("overdue", overdue > 0);
    QPalette palette = this->palette();
    if (overdue > 0)
        palette.setColor(QPalette::WindowText, QColor(0xc6, 0x28, 0x28));
    m_count->setPalette(palette);
    //% "%1 overdue"
    m_count->setToolTip(overdue > 0 ? qtTrId("tasks-day-view-overdue-count").arg(overdue) : QString());
}

void TaskDayViewSidebarRowView::setSelected(bool selected)
{
    setAutoFillBackground(selected);
    setBackgroundRole(selected ? QPalette::Highlight : QPalette::Window);
    for (QWidget* child : findChildren<QWidget*>())
        child->setBackgroundRole(backgroundRole());
    update();
}

void TaskDayViewSidebarRowView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT selected(m_view);
    QFrame::mousePressEvent(event);
}

void TaskDayViewSidebarRowView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        Q_EMIT selected(m_view);
        return;
    default:
        QFrame::keyPressEvent(event);
    }
}
