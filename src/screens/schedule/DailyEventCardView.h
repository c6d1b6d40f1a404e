#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QFrame>

class ElidedLabel;
class QCheckBox;
class QLabel;
class QToolButton;

// A timed meet on the timeline: its name and time, in one line when the card is short, and its
// alarm bell; before the name, the check box of the task the meet blocks time for. A click opens
// the meet's detail; the context menu edits or deletes it.
class DailyEventCardView final : public QFrame {
    Q_OBJECT

public:
    static constexpr int compactHeightThreshold = 40;

    // taskDone: whether the meet's task is done; none for a meet that blocks time for no task.
    DailyEventCardView(const MeetEntity& meet, bool isAlarmSet, std::optional<bool> taskDone = std::nullopt,
        QWidget* parent = nullptr);

    const MeetEntity& meet() const { return m_meet; }
    bool isAlarmSet() const { return m_isAlarmSet; }
    bool isCompact() const { return height() < compactHeightThreshold; }
    QToolButton* alarmButton() const { return m_alarm; }
    // Null without a task.
    QCheckBox* taskCheckBox() const { return m_task; }

    // The text shown for the meet's time, "09:00 – 10:30".
    static QString timeText(const MeetEntity& meet);

Q_SIGNALS:
    void detailRequested(const MeetEntity& meet);
    void onEdit(const MeetEntity& meet);
    void onDelete(const MeetEntity& meet);
    void alarmToggled(const MeetEntity& meet, bool armed);
    void taskDoneToggled(const MeetEntity& meet, bool done);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();

    MeetEntity m_meet;
    bool m_isAlarmSet;
    ElidedLabel* m_title;
    QLabel* m_time;
    QToolButton* m_alarm;
    QCheckBox* m_task = nullptr;
};
