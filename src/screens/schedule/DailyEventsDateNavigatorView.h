#pragma once

#include <QDate>
#include <QWidget>

class QLabel;
class ElidedLabel;
class QToolButton;
class QPushButton;

// The day shown, with steps to the day before and after inside [minDate, maxDate], "today", and
// the switch that arms the alarms of every meet of the day.
class DailyEventsDateNavigatorView final : public QWidget {
    Q_OBJECT

public:
    static constexpr double titleFontSize = 18;

    explicit DailyEventsDateNavigatorView(QWidget* parent = nullptr);

    void setBounds(const QDate& minDate, const QDate& maxDate);
    void setSelectedDate(const QDate& date);
    QDate selectedDate() const { return m_selectedDate; }
    QDate minDate() const { return m_minDate; }
    QDate maxDate() const { return m_maxDate; }
    void setDayAlarm(bool isDayAlarmSet, bool hasMeets);
    void setTogglingDayAlarms(bool toggling);
    bool isDayAlarmSet() const { return m_isDayAlarmSet; }
    bool isTogglingDayAlarms() const { return m_isTogglingDayAlarms; }

    QToolButton* previousButton() const { return m_previous; }
    QToolButton* nextButton() const { return m_next; }
    QPushButton* todayButton() const { return m_today; }
    QToolButton* dayAlarmButton() const { return m_dayAlarm; }

Q_SIGNALS:
    void selectedDateChanged(const QDate& date);
    void todayRequested();
    void dayAlarmToggled(bool armed);

private:
    void step(int days);
    void render();
    void resizeEvent(QResizeEvent* event) override;
    // The day's buttons sit beside the date while it fits whole, else on a line of their own.
    void placeActions();

    QDate m_selectedDate;
    QDate m_minDate;
    QDate m_maxDate;
    bool m_isDayAlarmSet = false;
    bool m_hasMeets = false;
    bool m_isTogglingDayAlarms = false;
    QToolButton* m_previous;
    ElidedLabel* m_title;
    QToolButton* m_next;
    QPushButton* m_today;
    QToolButton* m_dayAlarm;
    QWidget* m_actions;
    class QGridLayout* m_layout;
    bool m_actionsBeside = false;
};

// The first and last hour the timeline shows, each a stepper that keeps start < end.
class DailyEventsTimeRangeControlView final : public QWidget {
    Q_OBJECT

public:
    explicit DailyEventsTimeRangeControlView(QWidget* parent = nullptr);

    void setRange(int startHour, int endHour);
    class QSpinBox* startStepper() const { return m_start; }
    class QSpinBox* endStepper() const { return m_end; }

Q_SIGNALS:
    void rangeChanged(int startHour, int endHour);

private:
    void bound();

    class QSpinBox* m_start;
    class QSpinBox* m_end;
};
