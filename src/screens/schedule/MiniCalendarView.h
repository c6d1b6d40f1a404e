#pragma once

#include "platform/Clock.h"
#include "screens/schedule/MiniCalendarEntities.h"
#include "screens/schedule/MiniCalendarHolidaySource.h"

#include <QWidget>

#include <memory>
#include <optional>

class QLabel;
class QToolButton;

// A small month grid to pick a day: today's number in a circle, the chosen day ringed, and on
// holidays a pie of up to four pale wedges, one per holiday, whose titles show while the pointer
// rests on the day. The week starts on the locale's first day; the grid always shows six weeks,
// so its height does not jump between months.
class MiniCalendarView final : public QWidget {
    Q_OBJECT

public:
    static constexpr int cellSize = 26;
    static constexpr int todayCircleSize = 20;
    static constexpr int dayFontSize = 11;
    static constexpr int stepButtonSize = 21;
    static constexpr int maxWedges = 4;

    MiniCalendarView(std::shared_ptr<const MiniCalendarHolidaySource> holidays, std::shared_ptr<const Clock> clock,
        QWidget* parent = nullptr);

    // Any date of the month to show; the holidays of that month are loaded again.
    void setDisplayedMonth(const QDate& month);
    QDate displayedMonth() const { return m_displayedMonth; }
    void setSelectedDate(const QDate& date);
    // Reads the displayed month's marks again, keeping the old ones on screen meanwhile: the
    // calendars changed.
    void reloadMarks();
    QDate selectedDate() const { return m_selectedDate; }

    // The 42 days shown, from the first weekday on or before the 1st.
    QList<MiniCalendarDayCellEntity> dayCells() const;
    const MiniCalendarHolidayMarks& holidayMarks() const { return m_holidayMarks; }
    // The slices drawn on day, at most maxWedges, the first starting at the top.
    QList<HolidayWedgeShape> wedges(const QDate& day) const;
    static QList<HolidayWedgeShape> wedgesFor(qsizetype markCount);
    const std::optional<QDate>& hoveredHolidayDay() const { return m_hoveredHolidayDay; }
    // The titles shown for the hovered day, one per line.
    QString hoveredHolidayText() const;

    // Where day sits inside the grid widget (object name "miniCalendarGrid"); empty when not shown.
    QRect cellRect(const QDate& day) const;
    QWidget* grid() const { return m_grid; }

Q_SIGNALS:
    // The user chose day.
    void onSelectDate(const QDate& day);
    // The marks of the displayed month arrived.
    void holidayMarksLoaded();

protected:
    void showEvent(QShowEvent* event) override;

private:
    friend class MiniCalendarGrid;

    void loadHolidayMarks();
    QDate firstShownDay() const;
    std::optional<QDate> dayAt(const QPoint& point) const;
    void paintGrid(QPainter& painter) const;
    void hover(const std::optional<QDate>& day, const QPoint& globalPosition);

    std::shared_ptr<const MiniCalendarHolidaySource> m_holidays;
    std::shared_ptr<const Clock> m_clock;
    QDate m_displayedMonth;
    QDate m_selectedDate;
    MiniCalendarHolidayMarks m_holidayMarks;
    std::optional<QDate> m_hoveredHolidayDay;
    bool m_started = false;
    quint64 m_generation = 0;

    QLabel* m_monthTitle;
    QToolButton* m_previousButton;
    QToolButton* m_nextButton;
    QWidget* m_grid;
};
