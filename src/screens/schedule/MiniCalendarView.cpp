#include "screens/schedule/MiniCalendarView.h"

#include "screens/common/Async.h"
#include "screens/common/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int weekdayRowHeight = 18;
constexpr int shownWeeks = 6;

} // namespace

QPainterPath HolidayWedgeShape::path(const QRectF& frame) const
{
    const double radius = std::min(frame.width(), frame.height()) / 2;
    const QPointF center = frame.center();
    const QRectF circle(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius);
    QPainterPath slice(center);
    // QPainterPath turns counter-clockwise with y up; the wedges turn clockwise with y down.
    slice.arcTo(circle, -startAngle, -(endAngle - startAngle));
    slice.closeSubpath();
    return slice;
}

// The days, painted rather than built from buttons: 42 cells with wedges and circles stay cheap.
class MiniCalendarGrid final : public QWidget {
public:
    explicit MiniCalendarGrid(MiniCalendarView* view)
        : QWidget(view)
        , m_view(view)
    {
        setObjectName(QStringLiteral("miniCalendarGrid"));
        setMouseTracking(true);
        setFixedSize(7 * MiniCalendarView::cellSize, weekdayRowHeight + shownWeeks * MiniCalendarView::cellSize);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        m_view->paintGrid(painter);
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        m_view->hover(m_view->dayAt(event->position().toPoint()), event->globalPosition().toPoint());
    }
    void leaveEvent(QEvent*) override { m_view->hover(std::nullopt, {}); }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() != Qt::LeftButton)
            return;
        if (const std::optional<QDate> day = m_view->dayAt(event->position().toPoint())) {
            m_view->setSelectedDate(*day);
            Q_EMIT m_view->onSelectDate(*day);
        }
    }

private:
    MiniCalendarView* m_view;
};

MiniCalendarView::MiniCalendarView(
    std::shared_ptr<const MiniCalendarHolidaySource> holidays, std::shared_ptr<const Clock> clock, QWidget* parent)
    : QWidget(parent)
    , m_holidays(std::move(holidays))
    , m_clock(std::move(clock))
    , m_displayedMonth(m_clock->now().date())
    , m_monthTitle(new QLabel(this))
    , m_previousButton(new QToolButton(this))
    , m_nextButton(new QToolButton(this))
    , m_grid(new MiniCalendarGrid(this))
{
    setObjectName(QStringLiteral("miniCalendarView"));
    m_monthTitle->setObjectName(QStringLiteral("miniCalendarMonthTitle"));
    QFont titleFont = m_monthTitle->font();
    titleFont.setBold(true);
    m_monthTitle->setFont(titleFont);
    m_previousButton->setObjectName(QStringLiteral("miniCalendarPreviousMonthButton"));
    m_nextButton->setObjectName(QStringLiteral("miniCalendarNextMonthButton"));
    m_previousButton->setIcon(Icons::symbol(QStringLiteral("chevron.left")));
    m_nextButton->setIcon(Icons::symbol(QStringLiteral("chevron.right")));
    for (QToolButton* button : {m_previousButton, m_nextButton}) {
        button->setFixedSize(stepButtonSize, stepButtonSize);
        button->setAutoRaise(true);
    }
    connect(
        m_previousButton, &QToolButton::clicked, this, [this] { setDisplayedMonth(m_displayedMonth.addMonths(-1)); });
    connect(m_nextButton, &QToolButton::clicked, this, [this] { setDisplayedMonth(m_displayedMonth.addMonths(1)); });

    auto* header = new QHBoxLayout;
    header->addWidget(m_monthTitle, 1);
    header->addWidget(m_previousButton);
    header->addWidget(m_nextButton);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(header);
    layout->addWidget(m_grid);
    setDisplayedMonth(m_displayedMonth);
}

void MiniCalendarView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!m_started) {
        m_started = true;
        loadHolidayMarks();
    }
}

void MiniCalendarView::setDisplayedMonth(const QDate& month)
{
    const QDate first(month.year(), month.month(), 1);
    const bool changed = first != m_displayedMonth;
    m_displayedMonth = first;
    m_monthTitle->setText(QLocale().toString(first, QStringLiteral("MMMM yyyy")));
    m_hoveredHolidayDay.reset();
    if (changed && m_started) {
        m_holidayMarks.clear();
        loadHolidayMarks();
    }
    m_grid->update();
}

void MiniCalendarView::setSelectedDate(const QDate& date)
{
    m_selectedDate = date;
    m_grid->update();
}

void MiniCalendarView::reloadMarks()
{
    if (m_started)
        loadHolidayMarks();
}

void MiniCalendarView::loadHolidayMarks()
{
    const quint64 generation = ++m_generation;
    runAsync(
        this, [holidays = m_holidays, month = m_displayedMonth] { return holidays->holidayMarks(month); },
        [this, generation](const MiniCalendarHolidayMarks& marks) {
            if (generation != m_generation)
                return;
            m_holidayMarks = marks;
            m_grid->update();
            Q_EMIT holidayMarksLoaded();
        });
}

QDate MiniCalendarView::firstShownDay() const
{
    const int firstWeekday = QLocale().firstDayOfWeek();
    const int leading = (m_displayedMonth.dayOfWeek() - firstWeekday + 7) % 7;
    return m_displayedMonth.addDays(-leading);
}

QList<MiniCalendarDayCellEntity> MiniCalendarView::dayCells() const
{
    const QDate today = m_clock->now().date();
    QList<MiniCalendarDayCellEntity> cells;
    const QDate first = firstShownDay();
    for (int index = 0; index < 7 * shownWeeks; ++index) {
        const QDate day = first.addDays(index);
        cells.append({.mcdId = day,
            .mcdDayNumber = day.day(),
            .mcdIsCurrentMonth = day.month() == m_displayedMonth.month(),
            .mcdIsToday = day == today});
    }
    return cells;
}

QList<HolidayWedgeShape> MiniCalendarView::wedgesFor(qsizetype markCount)
{
    const qsizetype shown = std::min<qsizetype>(markCount, maxWedges);
    QList<HolidayWedgeShape> wedges;
    for (qsizetype index = 0; index < shown; ++index) {
        wedges.append({.startAngle = double(index) / double(shown) * 360.0 - 90.0,
            .endAngle = double(index + 1) / double(shown) * 360.0 - 90.0});
    }
    return wedges;
}

QList<HolidayWedgeShape> MiniCalendarView::wedges(const QDate& day) const
{
    return wedgesFor(m_holidayMarks.value(day).size());
}

QString MiniCalendarView::hoveredHolidayText() const
{
    if (!m_hoveredHolidayDay)
        return {};
    QStringList titles;
    for (const MiniCalendarHolidayMarkEntity& mark : m_holidayMarks.value(*m_hoveredHolidayDay))
        titles.append(mark.mchTitle);
    return titles.join(QLatin1Char('\n'));
}

QRect MiniCalendarView::cellRect(const QDate& day) const
{
    const qint64 index = firstShownDay().daysTo(day);
    if (index < 0 || index >= 7 * shownWeeks)
        return {};
    return QRect(int(index % 7) * cellSize, weekdayRowHeight + int(index / 7) * cellSize, cellSize, cellSize);
}

std::optional<QDate> MiniCalendarView::dayAt(const QPoint& point) const
{
    if (point.x() < 0 || point.y() < weekdayRowHeight || point.x() >= 7 * cellSize)
        return std::nullopt;
    const int row = (point.y() - weekdayRowHeight) / cellSize;
    if (row >= shownWeeks)
        return std::nullopt;
    return firstShownDay().addDays(row * 7 + point.x() / cellSize);
}

void MiniCalendarView::hover(const std::optional<QDate>& day, const QPoint& globalPosition)
{
    const std::optional<QDate> holiday = day && m_holidayMarks.contains(*day) ? day : std::nullopt;
    if (holiday == m_hoveredHolidayDay)
        return;
    m_hoveredHolidayDay = holiday;
    if (holiday)
        QToolTip::showText(globalPosition, hoveredHolidayText(), m_grid, cellRect(*holiday));
    else
        QToolTip::hideText();
}

void MiniCalendarView::paintGrid(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette& colors = palette();
    QFont font = painter.font();
    font.setPixelSize(dayFontSize);
    painter.setFont(font);

    const QLocale locale;
    const int firstWeekday = locale.firstDayOfWeek();
    painter.setPen(colors.color(QPalette::Disabled, QPalette::WindowText));
    for (int column = 0; column < 7; ++column) {
        const int weekday = (firstWeekday - 1 + column) % 7 + 1;
        painter.drawText(QRect(column * cellSize, 0, cellSize, weekdayRowHeight), Qt::AlignCenter,
            locale.dayName(weekday, QLocale::NarrowFormat));
    }

    for (const MiniCalendarDayCellEntity& cell : dayCells()) {
        const QRectF frame = cellRect(cell.mcdId);
        const QList<MiniCalendarHolidayMarkEntity> marks = m_holidayMarks.value(cell.mcdId);
        const QList<HolidayWedgeShape> slices = wedgesFor(marks.size());
        for (qsizetype index = 0; index < slices.size(); ++index) {
            QColor fill
                = marks.at(index).mchColor.isValid() ? marks.at(index).mchColor : colors.color(QPalette::Highlight);
            fill.setAlphaF(0.25f);
            painter.fillPath(slices.at(index).path(frame), fill);
        }
        const QRectF circle(frame.center().x() - todayCircleSize / 2.0, frame.center().y() - todayCircleSize / 2.0,
            todayCircleSize, todayCircleSize);
        // Dimmed by transparency rather than the disabled colour: dark palettes often give that
        // the same colour as the active text.
        QColor text = colors.color(QPalette::Active, QPalette::WindowText);
        if (!cell.mcdIsCurrentMonth)
            text.setAlphaF(0.35f);
        if (cell.mcdIsToday) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(colors.color(QPalette::Highlight));
            painter.drawEllipse(circle);
            text = colors.color(QPalette::HighlightedText);
        } else if (cell.mcdId == m_selectedDate) {
            painter.setPen(QPen(colors.color(QPalette::Highlight), 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(circle);
        }
        painter.setPen(text);
        painter.drawText(frame, Qt::AlignCenter, QString::number(cell.mcdDayNumber));
    }
}
