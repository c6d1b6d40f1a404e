#include "screens/schedule/DailyScheduleTimelineView.h"

#include "screens/projects/TaskRowView.h"
#include "screens/schedule/AllDayEventsSectionView.h"
#include "screens/schedule/DailyEventCardView.h"
#include "screens/schedule/DailyTaskSectionView.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <cmath>

DailyScheduleTimelineView::DailyScheduleTimelineView(
    std::shared_ptr<const Clock> clock, QTimeZone calendar, QWidget* parent)
    : QWidget(parent)
    , m_clock(std::move(clock))
    , m_calendar(std::move(calendar))
    , m_currentTimeTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("dailyScheduleTimeline"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_currentTimeTimer->setInterval(currentTimeRefreshMs);
    connect(m_currentTimeTimer, &QTimer::timeout, this, qOverload<>(&QWidget::update));
    setAcceptDrops(true);
}

QSize DailyScheduleTimelineView::sizeHint() const
{
    // One row per hour, the end hour's own row included, so its meets have room.
    return {400, (m_endHour - m_startHour + 1) * slotHeight + 1};
}

void DailyScheduleTimelineView::setDay(const QDate& selectedDate, const QList<MeetEntity>& meets,
    const QSet<QUuid>& armedMeetIds, const QHash<QUuid, bool>& taskDone)
{
    if (m_drag.active) {
        // Rebuilt now, the card under the pointer would vanish mid-drag.
        m_pendingDay = Day {selectedDate, meets, armedMeetIds, taskDone};
        return;
    }
    // A card pressed but not yet dragged goes with the others: the press is forgotten with it.
    if (m_drag.card && m_drag.cancelled)
        m_drag.card->releaseKeyboard();
    m_drag = {};
    m_pendingDay.reset();
    m_selectedDate = selectedDate;
    m_layouted = DailyScheduleLayout::layout(meets);
    m_armed = armedMeetIds;
    m_taskDone = taskDone;
    if (showsCurrentTime())
        m_currentTimeTimer->start();
    else
        m_currentTimeTimer->stop();
    // Moved from the keyboard, a card is rebuilt at its new time: it keeps the focus, so that the
    // next Alt+Down moves it again.
    QString focusedEvent;
    for (const DailyEventCardView* card : std::as_const(m_cards)) {
        if (card->hasFocus())
            focusedEvent = card->meet().metOriginalIdentifier;
    }
    rebuildCards();
    for (DailyEventCardView* card : std::as_const(m_cards)) {
        if (!focusedEvent.isEmpty() && card->meet().metOriginalIdentifier == focusedEvent) {
            card->setFocus(Qt::OtherFocusReason);
            break;
        }
    }
    update();
}

void DailyScheduleTimelineView::setHourRange(int startHour, int endHour)
{
    m_startHour = startHour;
    m_endHour = endHour;
    setFixedHeight(sizeHint().height());
    updateGeometry();
    placeCards();
    update();
}

bool DailyScheduleTimelineView::showsCurrentTime() const
{
    return m_selectedDate == m_clock->now().toTimeZone(m_calendar).date();
}

double DailyScheduleTimelineView::yForTime(const QDateTime& time) const
{
    const QDateTime rangeStart(m_selectedDate, QTime(m_startHour, 0), m_calendar);
    return double(rangeStart.secsTo(time)) / 3600.0 * slotHeight;
}

QDateTime DailyScheduleTimelineView::timeAt(int y) const
{
    const int minutes = int(std::floor(double(y) / slotHeight * 60.0));
    const int quarter = (minutes / 15) * 15;
    return QDateTime(m_selectedDate, QTime(m_startHour, 0), m_calendar).addSecs(qint64(quarter) * 60);
}

QRect DailyScheduleTimelineView::cardGeometry(const LayoutedMeet& placed) const
{
    const double available = std::max(0, width() - hourLabelWidth - columnSpacing);
    const double columnWidth
        = (available - columnSpacing * double(placed.columnCount - 1)) / double(placed.columnCount);
    const double x = hourLabelWidth + columnSpacing + placed.column * (columnWidth + columnSpacing);
    const double top = std::max(0.0, yForTime(placed.meet.metDate)) + cardVerticalInset;
    const double bottom = std::min(double(height()), yForTime(placed.meet.endDate())) - cardVerticalInset;
    // A meet of no length still gets a sliver that can be clicked.
    const double cardHeight = std::max(bottom - top, slotHeight / 2.0);
    return QRectF(x, top, columnWidth, cardHeight).toAlignedRect();
}

void DailyScheduleTimelineView::rebuildCards()
{
    qDeleteAll(m_cards);
    m_cards.clear();
    for (const LayoutedMeet& placed : std::as_const(m_layouted)) {
        const auto done = m_taskDone.constFind(placed.meet.metId);
        auto* card = new DailyEventCardView(placed.meet, m_armed.contains(placed.meet.metId),
            placed.meet.metTaskLink && done != m_taskDone.cend() ? std::optional(*done) : std::nullopt, this);
        connect(card, &DailyEventCardView::taskDoneToggled, this, &DailyScheduleTimelineView::taskDoneToggled);
        connect(card, &DailyEventCardView::detailRequested, this, &DailyScheduleTimelineView::detailRequested);
        connect(card, &DailyEventCardView::onEdit, this, &DailyScheduleTimelineView::onEditMeet);
        connect(card, &DailyEventCardView::onDelete, this, &DailyScheduleTimelineView::onDeleteMeet);
        connect(card, &DailyEventCardView::alarmToggled, this, &DailyScheduleTimelineView::alarmToggled);
        card->setFocusPolicy(Qt::StrongFocus);
        card->installEventFilter(this);
        m_cards.append(card);
    }
    placeCards();
}

void DailyScheduleTimelineView::placeCards()
{
    for (qsizetype i = 0; i < m_cards.size(); ++i) {
        const QRect geometry = cardGeometry(m_layouted.at(i));
        // Meets wholly outside the chosen hours are not drawn.
        const bool visible = geometry.bottom() > 0 && geometry.top() < height();
        m_cards.at(i)->setGeometry(geometry);
        m_cards.at(i)->setVisible(visible);
    }
}

void DailyScheduleTimelineView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeCards();
}

void DailyScheduleTimelineView::mouseReleaseEvent(QMouseEvent* event)
{
    // Only an empty point proposes a new meet; a card opens its own meet.
    const QPoint point = event->position().toPoint();
    if (event->button() == Qt::LeftButton && point.x() > hourLabelWidth && rect().contains(point) && !childAt(point))
        Q_EMIT onCreateEvent(timeAt(point.y()));
    QWidget::mouseReleaseEvent(event);
}

void DailyScheduleTimelineView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QLocale locale;
    QColor line = palette().color(QPalette::Mid);
    line.setAlphaF(0.5f);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    painter.setFont(small);
    for (int hour = m_startHour; hour <= m_endHour; ++hour) {
        const int y = (hour - m_startHour) * slotHeight;
        painter.setPen(line);
        painter.drawLine(hourLabelWidth, y, width(), y);
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(QRect(0, y + 1, hourLabelWidth - 6, slotHeight), Qt::AlignRight | Qt::AlignTop,
            locale.toString(QTime(hour, 0), QLocale::ShortFormat));
    }
    if (m_dropTime) {
        // Where what is dragged would go, and for how long.
        QColor ghost = palette().color(QPalette::Highlight);
        const double top = yForTime(*m_dropTime);
        const double bottom = yForTime(m_dropTime->addSecs(m_dropSeconds));
        const QRectF area(
            hourLabelWidth + columnSpacing, top, width() - hourLabelWidth - 2 * columnSpacing, bottom - top);
        painter.setPen(QPen(ghost, 1.5, Qt::DashLine));
        ghost.setAlphaF(0.18f);
        painter.setBrush(ghost);
        painter.drawRoundedRect(area, 4, 4);
        painter.setBrush(Qt::NoBrush);
    }
    if (showsCurrentTime()) {
        const double y = yForTime(m_clock->now());
        if (y >= 0 && y <= height()) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(QColor(0xE5, 0x39, 0x35), 1.5));
            painter.setBrush(QColor(0xE5, 0x39, 0x35));
            painter.drawEllipse(QPointF(hourLabelWidth, y), 3.5, 3.5);
            painter.drawLine(QPointF(hourLabelWidth, y), QPointF(width(), y));
        }
    }
}

QDateTime DailyScheduleTimelineView::snapped(const QDateTime& time, int minutes) const
{
    const QDateTime midnight(m_selectedDate, QTime(0, 0), m_calendar);
    const qint64 step = qint64(minutes) * 60;
    const qint64 seconds = midnight.secsTo(time);
    return midnight.addSecs(qint64(std::llround(double(seconds) / double(step))) * step);
}

bool DailyScheduleTimelineView::eventFilter(QObject* watched, QEvent* event)
{
    auto* card = qobject_cast<DailyEventCardView*>(watched);
    if (!card || !m_cards.contains(card))
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return cardMouse(card, static_cast<QMouseEvent*>(event));
    case QEvent::KeyPress:
        return cardKey(card, static_cast<QKeyEvent*>(event));
    default:
        return QWidget::eventFilter(watched, event);
    }
}

bool DailyScheduleTimelineView::cardMouse(DailyEventCardView* card, QMouseEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        // The bell takes its own presses; the labels pass theirs on to the card.
        if (event->button() != Qt::LeftButton)
            return false;
        m_drag = Drag {card, event->globalPosition(), event->position().y() >= card->height() - resizeHandleHeight,
            false, false, card->meet().metDate, card->meet().endDate()};
        return false;
    case QEvent::MouseMove:
        if (m_drag.card != card || m_drag.cancelled)
            return m_drag.cancelled;
        if (!m_drag.active) {
            if ((event->globalPosition() - m_drag.pressedAt).manhattanLength() < QApplication::startDragDistance())
                return false;
            m_drag.active = true;
            card->raise();
            card->setFocus(Qt::MouseFocusReason);
            // Escape must reach the drag wherever the focus was.
            card->grabKeyboard();
        }
        followPointer(event->globalPosition(), event->modifiers());
        return true;
    case QEvent::MouseButtonRelease: {
        if (m_drag.card != card)
            return false;
        const Drag drag = m_drag;
        if (!drag.active && !drag.cancelled) {
            m_drag = {};
            return false;
        }
        const MeetEntity meet = card->meet();
        // Only on the all-day row itself; a card let go elsewhere above the grid (over the
        // navigator, say) was merely dragged too far, and goes back.
        const bool above = mapFromGlobal(event->globalPosition()).y() < 0;
        const bool onAllDayRow = m_allDayRow && m_allDayRow->isVisible()
            ? m_allDayRow->rect().contains(m_allDayRow->mapFromGlobal(event->globalPosition()).toPoint())
            : above;
        endDrag();
        if (!drag.cancelled && !drag.resizing && onAllDayRow) {
            placeCards();
            Q_EMIT allDayRequested(meet);
        } else if (above && !drag.resizing) {
            placeCards();
        } else if (!drag.cancelled && (drag.start != meet.metDate || drag.end != meet.endDate())) {
            Q_EMIT changeRequested(meet, drag.start, drag.end);
        }
        return true;
    }
    default:
        return false;
    }
}

void DailyScheduleTimelineView::followPointer(const QPointF& globalPosition, Qt::KeyboardModifiers modifiers)
{
    const MeetEntity& meet = m_drag.card->meet();
    const int step = modifiers & Qt::AltModifier ? 1 : snapMinutes;
    const qint64 moved = qint64(std::llround((globalPosition.y() - m_drag.pressedAt.y()) / slotHeight * 3600.0));
    if (m_drag.resizing) {
        m_drag.start = meet.metDate;
        m_drag.end = std::max(snapped(meet.endDate().addSecs(moved), step), meet.metDate.addSecs(qint64(step) * 60));
    } else {
        m_drag.start = snapped(meet.metDate.addSecs(moved), step);
        m_drag.end = m_drag.start.addSecs(meet.metDate.secsTo(meet.endDate()));
    }
    QRect geometry = m_drag.card->geometry();
    const int top = int(std::lround(yForTime(m_drag.start) + cardVerticalInset));
    const int bottom = int(std::lround(yForTime(m_drag.end) - cardVerticalInset));
    geometry.setTop(top);
    geometry.setBottom(std::max(bottom, top + slotHeight / 2));
    m_drag.card->setGeometry(geometry);
}

void DailyScheduleTimelineView::endDrag()
{
    if (m_drag.active || m_drag.cancelled)
        m_drag.card->releaseKeyboard();
    m_drag = {};
    if (m_pendingDay) {
        const Day day = *std::exchange(m_pendingDay, std::nullopt);
        setDay(day.date, day.meets, day.armed, day.taskDone);
    }
}

bool DailyScheduleTimelineView::cardKey(DailyEventCardView* card, QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_drag.card == card && m_drag.active) {
        m_drag.active = false;
        m_drag.cancelled = true;
        placeCards();
        return true;
    }
    const bool up = event->key() == Qt::Key_Up;
    if ((!up && event->key() != Qt::Key_Down) || !(event->modifiers() & Qt::AltModifier) || m_drag.active)
        return false;
    const MeetEntity& meet = card->meet();
    const qint64 step = qint64(up ? -snapMinutes : snapMinutes) * 60;
    if (event->modifiers() & Qt::ShiftModifier) {
        const QDateTime end = meet.endDate().addSecs(step);
        if (end > meet.metDate)
            Q_EMIT changeRequested(meet, meet.metDate, end);
    } else {
        Q_EMIT changeRequested(meet, meet.metDate.addSecs(step), meet.endDate().addSecs(step));
    }
    return true;
}

std::optional<MeetTaskLink> DailyScheduleTimelineView::taskLinkOf(const QMimeData* mime)
{
    if (!mime)
        return std::nullopt;
    MeetTaskLink link;
    if (mime->hasFormat(TaskRowView::dragMimeType)) {
        link.id = QUuid(mime->data(TaskRowView::dragMimeType));
    } else if (mime->hasFormat(DailyTaskRowView::dragMimeType)) {
        link.kind = MeetTaskLink::Kind::dailyTask;
        link.id = QUuid(mime->data(DailyTaskRowView::dragMimeType));
    }
    if (link.id.isNull())
        return std::nullopt;
    return link;
}

std::optional<QDateTime> DailyScheduleTimelineView::dropTimeAt(const QPointF& position) const
{
    const QPoint point = position.toPoint();
    if (point.x() <= hourLabelWidth || !rect().contains(point))
        return std::nullopt;
    return timeAt(point.y());
}

namespace {

bool carriesAllDayMeet(const QMimeData* mime)
{
    return mime && mime->hasFormat(AllDayEventRowView::dragMimeType);
}

} // namespace

void DailyScheduleTimelineView::dragEnterEvent(QDragEnterEvent* event)
{
    const bool meet = carriesAllDayMeet(event->mimeData());
    if ((!meet && !taskLinkOf(event->mimeData())) || !m_selectedDate.isValid()) {
        event->ignore();
        return;
    }
    m_dropSeconds = meet ? 3600 : MeetTaskLink::blockSeconds;
    event->acceptProposedAction();
    m_dropTime = dropTimeAt(event->position());
    update();
}

void DailyScheduleTimelineView::dragMoveEvent(QDragMoveEvent* event)
{
    const std::optional<QDateTime> time = dropTimeAt(event->position());
    if ((!taskLinkOf(event->mimeData()) && !carriesAllDayMeet(event->mimeData())) || !time) {
        event->ignore();
        if (std::exchange(m_dropTime, std::nullopt))
            update();
        return;
    }
    event->acceptProposedAction();
    if (m_dropTime != time) {
        m_dropTime = time;
        update();
    }
}

void DailyScheduleTimelineView::dragLeaveEvent(QDragLeaveEvent* event)
{
    m_dropTime.reset();
    update();
    QWidget::dragLeaveEvent(event);
}

void DailyScheduleTimelineView::dropEvent(QDropEvent* event)
{
    m_dropTime.reset();
    update();
    const std::optional<MeetTaskLink> link = taskLinkOf(event->mimeData());
    const std::optional<QDateTime> start = dropTimeAt(event->position());
    if (start && carriesAllDayMeet(event->mimeData())) {
        event->acceptProposedAction();
        Q_EMIT allDayMeetDropped(QUuid(event->mimeData()->data(AllDayEventRowView::dragMimeType)), *start);
        return;
    }
    if (!link || !start) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    Q_EMIT taskDropped(*link, *start);
}
