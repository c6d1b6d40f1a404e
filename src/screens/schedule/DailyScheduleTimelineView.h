#pragma once

#include "meetings/entities/MeetTaskLink.h"
#include "platform/Clock.h"
#include "screens/schedule/DailyScheduleLayout.h"

#include <QDate>
#include <QPointer>
#include <QSet>
#include <QTimeZone>
#include <QWidget>

#include <memory>
#include <optional>

class DailyEventCardView;
class QTimer;

// The hour grid of one day with its timed meets as cards, side by side where they overlap. A
// click on an empty point proposes a new meet starting at that time (rounded down to the quarter
// hour); on today a line marks the current time. A card dragged moves its meet, its bottom edge
// dragged changes its length, both on the quarter hour (the minute with Alt held); Escape puts it
// back. With a card focused, Alt+Up/Down moves it by a quarter hour and Alt+Shift+Up/Down
// changes its length. A task dragged from the projects pane or the daily checklist and dropped on
// the grid asks for time blocked for it at the quarter hour under the pointer; an all-day meet
// dropped there asks for that time, and a card released above the grid asks to be all-day.
class DailyScheduleTimelineView final : public QWidget {
    Q_OBJECT

public:
    static constexpr int slotHeight = 34;
    // Wide enough for "10:00 AM" in the system font.
    static constexpr int hourLabelWidth = 68;
    static constexpr int columnSpacing = 4;
    static constexpr double cardVerticalInset = 0.75;
    static constexpr int currentTimeRefreshMs = 30'000;
    static constexpr int snapMinutes = 15;
    // How far up from a card's bottom edge a press takes the edge rather than the card.
    static constexpr int resizeHandleHeight = 6;

    DailyScheduleTimelineView(std::shared_ptr<const Clock> clock, QTimeZone calendar, QWidget* parent = nullptr);

    // meets: the timed meets of selectedDate; taskDone: whether the task a meet blocks time for
    // is done, by meet.
    void setDay(const QDate& selectedDate, const QList<MeetEntity>& meets, const QSet<QUuid>& armedMeetIds,
        const QHash<QUuid, bool>& taskDone = {});
    void setHourRange(int startHour, int endHour);
    // The row of all-day meets a card may be dragged onto to become one; without it, any release
    // above the grid counts.
    void setAllDayRow(QWidget* row) { m_allDayRow = row; }

    const QList<LayoutedMeet>& layoutedMeets() const { return m_layouted; }
    QList<DailyEventCardView*> cards() const { return m_cards; }
    // Where a time of the selected day sits, and the time at a height.
    double yForTime(const QDateTime& time) const;
    QDateTime timeAt(int y) const;
    QRect cardGeometry(const LayoutedMeet& placed) const;
    bool showsCurrentTime() const;
    bool isDragging() const { return m_drag.active; }
    // The task a drag carries, when it carries one this grid takes.
    static std::optional<MeetTaskLink> taskLinkOf(const class QMimeData* mime);
    // Where a task or all-day meet dragged over the grid would go; none when none is over it.
    const std::optional<QDateTime>& dropTime() const { return m_dropTime; }

    QSize sizeHint() const override;

Q_SIGNALS:
    void onCreateEvent(const QDateTime& start);
    void onEditMeet(const MeetEntity& meet);
    void onDeleteMeet(const MeetEntity& meet);
    void detailRequested(const MeetEntity& meet);
    void alarmToggled(const MeetEntity& meet, bool armed);
    // A card was dropped at another time, or given another length.
    void changeRequested(const MeetEntity& meet, const QDateTime& start, const QDateTime& end);
    void taskDoneToggled(const MeetEntity& meet, bool done);
    // A task was dropped on the grid: block time for it from start.
    void taskDropped(const MeetTaskLink& link, const QDateTime& start);
    // An all-day meet, by identity, was dropped on the grid at start.
    void allDayMeetDropped(const QUuid& metId, const QDateTime& start);
    // A card was dragged up out of the grid, onto the all-day meets.
    void allDayRequested(const MeetEntity& meet);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Drag {
        DailyEventCardView* card = nullptr;
        QPointF pressedAt;
        bool resizing = false;
        bool active = false;
        // A drag called off while the button is still down: its release is not a click.
        bool cancelled = false;
        QDateTime start;
        QDateTime end;
    };
    struct Day {
        QDate date;
        QList<MeetEntity> meets;
        QSet<QUuid> armed;
        QHash<QUuid, bool> taskDone;
    };

    bool cardMouse(DailyEventCardView* card, QMouseEvent* event);
    bool cardKey(DailyEventCardView* card, QKeyEvent* event);
    void followPointer(const QPointF& globalPosition, Qt::KeyboardModifiers modifiers);
    void endDrag();
    QDateTime snapped(const QDateTime& time, int minutes) const;
    // The quarter hour a task dropped at y starts on; none outside the grid.
    std::optional<QDateTime> dropTimeAt(const QPointF& position) const;

    void rebuildCards();
    void placeCards();

    std::shared_ptr<const Clock> m_clock;
    QTimeZone m_calendar;
    QDate m_selectedDate;
    int m_startHour = 5;
    int m_endHour = 21;
    QList<LayoutedMeet> m_layouted;
    QSet<QUuid> m_armed;
    QHash<QUuid, bool> m_taskDone;
    QList<DailyEventCardView*> m_cards;
    std::optional<QDateTime> m_dropTime;
    // How long what is dragged over the grid would be there.
    qint64 m_dropSeconds = MeetTaskLink::blockSeconds;
    QTimer* m_currentTimeTimer;
    Drag m_drag;
    QPointer<QWidget> m_allDayRow;
    // A day that arrived during a drag, shown once the drag ends.
    std::optional<Day> m_pendingDay;
};
