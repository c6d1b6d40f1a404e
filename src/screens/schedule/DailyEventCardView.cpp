#include "screens/schedule/DailyEventCardView.h"

#include "screens/common/Icons.h"
#include "screens/schedule/ElidedLabel.h"

#include <QCheckBox>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolButton>
#include <QVBoxLayout>

DailyEventCardView::DailyEventCardView(
    const MeetEntity& meet, bool isAlarmSet, std::optional<bool> taskDone, QWidget* parent)
    : QFrame(parent)
    , m_meet(meet)
    , m_isAlarmSet(isAlarmSet)
    , m_title(new ElidedLabel(meet.metName, this))
    , m_time(new QLabel(timeText(meet), this))
    , m_alarm(new QToolButton(this))
{
    setObjectName(QStringLiteral("dailyEventCard"));
    setCursor(Qt::PointingHandCursor);
    setToolTip(meet.metName + QLatin1Char('\n') + timeText(meet));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_time->setEnabled(false);
    m_alarm->setObjectName(QStringLiteral("meetAlarmButton"));
    m_alarm->setCheckable(true);
    m_alarm->setChecked(isAlarmSet);
    m_alarm->setAutoRaise(true);
    m_alarm->setIcon(Icons::symbol(QStringLiteral("alarm")));
    //% "Alarm"
    m_alarm->setToolTip(qtTrId("meet-alarm-button"));
    m_alarm->setIconSize(QSize(14, 14));
    connect(m_alarm, &QToolButton::clicked, this, [this](bool checked) {
        m_alarm->setEnabled(false);
        Q_EMIT alarmToggled(m_meet, checked);
    });
    if (taskDone) {
        m_task = new QCheckBox(this);
        m_task->setObjectName(QStringLiteral("meetTaskCheckBox"));
        m_task->setChecked(*taskDone);
        //% "Task done"
        m_task->setToolTip(qtTrId("meet-task-done-checkbox"));
        m_task->setAccessibleName(qtTrId("meet-task-done-checkbox"));
        connect(m_task, &QCheckBox::clicked, this, [this](bool checked) {
            // One change at a time: the day read again brings a new card.
            m_task->setEnabled(false);
            Q_EMIT taskDoneToggled(m_meet, checked);
        });
    }
    arrange();
}

QString DailyEventCardView::timeText(const MeetEntity& meet)
{
    const QLocale locale;
    const QDateTime start = meet.metDate.toLocalTime();
    return locale.toString(start.time(), QLocale::ShortFormat) + QStringLiteral(" – ")
        + locale.toString(meet.endDate().toLocalTime().time(), QLocale::ShortFormat);
}

void DailyEventCardView::arrange()
{
    delete layout();
    // The compact form puts everything on one line, so a quarter-hour meet is still legible.
    const bool compact = isCompact();
    QBoxLayout* box = compact ? static_cast<QBoxLayout*>(new QHBoxLayout(this)) : new QVBoxLayout(this);
    box->setContentsMargins(6, compact ? 0 : 3, 4, compact ? 0 : 3);
    box->setSpacing(compact ? 6 : 1);
    if (compact) {
        // The name takes what the time and the bell leave, and gives way first.
        if (m_task)
            box->addWidget(m_task);
        box->addWidget(m_title, 1);
        box->addWidget(m_time);
        box->addWidget(m_alarm);
    } else {
        auto* top = new QHBoxLayout;
        if (m_task)
            top->addWidget(m_task);
        top->addWidget(m_title, 1);
        top->addWidget(m_alarm);
        box->addLayout(top);
        box->addWidget(m_time);
        box->addStretch();
    }
}

// Painted rather than styled: a style sheet per card costs more than all the rest of the card,
// and a busy day has hundreds of cards.
void DailyEventCardView::paintEvent(QPaintEvent* /*event*/)
{
    const QColor color(m_meet.metColor.hexValue);
    QColor fill = color;
    fill.setAlphaF(0.22f);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()), 4, 4);
    // The calendar's colour down the leading edge.
    QPainterPath edge;
    edge.addRoundedRect(QRectF(rect()), 4, 4);
    painter.setClipPath(edge);
    painter.fillRect(QRect(0, 0, 3, height()), color);
}

void DailyEventCardView::resizeEvent(QResizeEvent* event)
{
    const bool wasCompact = event->oldSize().height() < compactHeightThreshold;
    QFrame::resizeEvent(event);
    if (wasCompact != isCompact())
        arrange();
}

// The card keeps its clicks: passed on, they would reach the timeline beneath and propose a new
// meet at the same point.
void DailyEventCardView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
}

void DailyEventCardView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT detailRequested(m_meet);
}

void DailyEventCardView::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu(this);
    menu.addAction(Icons::symbol(QStringLiteral("pencil")), qtTrId("meet-detail-edit-button"), this,
        [this] { Q_EMIT onEdit(m_meet); });
    menu.addAction(Icons::symbol(QStringLiteral("trash")), qtTrId("meet-detail-delete-button"), this,
        [this] { Q_EMIT onDelete(m_meet); });
    menu.exec(event->globalPos());
}
