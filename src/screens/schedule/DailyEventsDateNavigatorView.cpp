#include "screens/schedule/DailyEventsDateNavigatorView.h"

#include "screens/common/Icons.h"
#include "screens/schedule/DayTitle.h"
#include "screens/schedule/ElidedLabel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

DailyEventsDateNavigatorView::DailyEventsDateNavigatorView(QWidget* parent)
    : QWidget(parent)
    , m_previous(new QToolButton(this))
    , m_title(new ElidedLabel(QString(), this))
    , m_next(new QToolButton(this))
    //% "Today"
    , m_today(new QPushButton(qtTrId("daily-events-today-button"), this))
    , m_dayAlarm(new QToolButton(this))
{
    setObjectName(QStringLiteral("dailyEventsDateNavigator"));
    m_previous->setObjectName(QStringLiteral("dailyEventsPreviousDay"));
    m_previous->setIcon(Icons::symbol(QStringLiteral("chevron.left")));
    m_next->setObjectName(QStringLiteral("dailyEventsNextDay"));
    m_next->setIcon(Icons::symbol(QStringLiteral("chevron.right")));
    m_today->setObjectName(QStringLiteral("dailyEventsTodayButton"));
    m_title->setObjectName(QStringLiteral("dailyEventsDateTitle"));
    QFont titleFont = m_title->font();
    titleFont.setPointSizeF(titleFontSize);
    titleFont.setBold(true);
    m_title->setFont(titleFont);
    m_dayAlarm->setObjectName(QStringLiteral("meetAlarmDayButton"));
    m_dayAlarm->setCheckable(true);
    m_dayAlarm->setIcon(Icons::symbol(QStringLiteral("alarm")));
    m_dayAlarm->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    //% "Alarms for the day"
    m_dayAlarm->setText(qtTrId("meet-alarm-day-button"));

    m_actions = new QWidget(this);
    auto* actions = new QHBoxLayout(m_actions);
    actions->setContentsMargins(0, 0, 0, 0);
    actions->addWidget(m_dayAlarm);
    actions->addWidget(m_today);
    m_layout = new QGridLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_previous, 0, 0);
    m_layout->addWidget(m_next, 0, 1);
    m_layout->addWidget(m_title, 0, 2);
    m_layout->setColumnStretch(2, 1);
    m_layout->addWidget(m_actions, 1, 0, 1, 3, Qt::AlignLeft);

    connect(m_previous, &QToolButton::clicked, this, [this] { step(-1); });
    connect(m_next, &QToolButton::clicked, this, [this] { step(1); });
    connect(m_today, &QPushButton::clicked, this, &DailyEventsDateNavigatorView::todayRequested);
    connect(m_dayAlarm, &QToolButton::clicked, this, [this](bool checked) {
        if (m_isTogglingDayAlarms)
            return;
        setTogglingDayAlarms(true);
        Q_EMIT dayAlarmToggled(checked);
    });
}

void DailyEventsDateNavigatorView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeActions();
}

void DailyEventsDateNavigatorView::placeActions()
{
    const int spacing = m_layout->horizontalSpacing();
    QFont font = m_title->font();
    font.setPointSizeF(titleFontSize);
    const int arrows = m_previous->sizeHint().width() + m_next->sizeHint().width() + 2 * spacing;
    const int wholeTitle = QFontMetrics(font).horizontalAdvance(m_title->fullText()) + 4;
    const bool beside = width() >= arrows + wholeTitle + m_actions->sizeHint().width() + spacing;
    if (beside != m_actionsBeside) {
        m_actionsBeside = beside;
        m_layout->removeWidget(m_actions);
        if (beside)
            m_layout->addWidget(m_actions, 0, 3);
        else
            m_layout->addWidget(m_actions, 1, 0, 1, 3, Qt::AlignLeft);
    }
    // Alone on its line and still too long, the date gets smaller before it is cut.
    const int room = width() - arrows - (beside ? m_actions->sizeHint().width() + spacing : 0);
    while (
        QFontMetrics(font).horizontalAdvance(m_title->fullText()) + 4 > room && font.pointSizeF() > titleFontSize * 0.6)
        font.setPointSizeF(font.pointSizeF() - 1);
    if (font != m_title->font())
        m_title->setFont(font);
}

void DailyEventsDateNavigatorView::setBounds(const QDate& minDate, const QDate& maxDate)
{
    m_minDate = minDate;
    m_maxDate = maxDate;
    render();
}

void DailyEventsDateNavigatorView::setSelectedDate(const QDate& date)
{
    m_selectedDate = date;
    render();
}

void DailyEventsDateNavigatorView::step(int days)
{
    const QDate target = m_selectedDate.addDays(days);
    if (target < m_minDate || target > m_maxDate)
        return;
    Q_EMIT selectedDateChanged(target);
}

void DailyEventsDateNavigatorView::setDayAlarm(bool isDayAlarmSet, bool hasMeets)
{
    m_isDayAlarmSet = isDayAlarmSet;
    m_hasMeets = hasMeets;
    render();
}

void DailyEventsDateNavigatorView::setTogglingDayAlarms(bool toggling)
{
    m_isTogglingDayAlarms = toggling;
    render();
}

void DailyEventsDateNavigatorView::render()
{
    m_title->setFullText(DayTitle::of(m_selectedDate));
    placeActions();
    m_previous->setEnabled(m_selectedDate.addDays(-1) >= m_minDate);
    m_next->setEnabled(m_selectedDate.addDays(1) <= m_maxDate);
    m_dayAlarm->setChecked(m_isDayAlarmSet);
    m_dayAlarm->setEnabled(m_hasMeets && !m_isTogglingDayAlarms);
}

DailyEventsTimeRangeControlView::DailyEventsTimeRangeControlView(QWidget* parent)
    : QWidget(parent)
    , m_start(new QSpinBox(this))
    , m_end(new QSpinBox(this))
{
    setObjectName(QStringLiteral("dailyEventsTimeRange"));
    m_start->setObjectName(QStringLiteral("dailyEventsStartHour"));
    m_end->setObjectName(QStringLiteral("dailyEventsEndHour"));
    m_start->setSuffix(QStringLiteral(":00"));
    m_end->setSuffix(QStringLiteral(":00"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    //% "From"
    layout->addWidget(new QLabel(qtTrId("daily-events-start-hour-label"), this));
    layout->addWidget(m_start);
    //% "to"
    layout->addWidget(new QLabel(qtTrId("daily-events-end-hour-label"), this));
    layout->addWidget(m_end);
    layout->addStretch();
    const auto changed = [this] {
        bound();
        Q_EMIT rangeChanged(m_start->value(), m_end->value());
    };
    connect(m_start, &QSpinBox::valueChanged, this, changed);
    connect(m_end, &QSpinBox::valueChanged, this, changed);
}

void DailyEventsTimeRangeControlView::setRange(int startHour, int endHour)
{
    const QSignalBlocker blockStart(m_start);
    const QSignalBlocker blockEnd(m_end);
    m_start->setRange(0, 22);
    m_end->setRange(1, 23);
    m_start->setValue(startHour);
    m_end->setValue(endHour);
    bound();
}

// Each stepper's range follows the other's value, so the start never reaches the end.
void DailyEventsTimeRangeControlView::bound()
{
    const QSignalBlocker blockStart(m_start);
    const QSignalBlocker blockEnd(m_end);
    m_start->setRange(0, m_end->value() - 1);
    m_end->setRange(m_start->value() + 1, 23);
}
