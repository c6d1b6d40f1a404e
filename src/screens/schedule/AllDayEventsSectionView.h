#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QFrame>
#include <QHash>

#include <optional>

class QCheckBox;
class QVBoxLayout;

// One all-day meet: its colour, its name, and the box of the task it is linked to; a click opens
// its detail. Dragged onto the timeline, it is given a time there.
class AllDayEventRowView final : public QFrame {
    Q_OBJECT

public:
    // The drag carries the meet's identity.
    static inline const QString dragMimeType = QStringLiteral("application/x-tolvane-meet-id");

    // taskDone: whether the meet's task is done; none for a meet linked to no task.
    AllDayEventRowView(const MeetEntity& meet, std::optional<bool> taskDone = std::nullopt, QWidget* parent = nullptr);
    const MeetEntity& meet() const { return m_meet; }
    QCheckBox* taskCheckBox() const { return m_task; }

Q_SIGNALS:
    void detailRequested(const MeetEntity& meet);
    void taskDoneToggled(const MeetEntity& meet, bool done);
    void onEdit(const MeetEntity& meet);
    void onDelete(const MeetEntity& meet);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    MeetEntity m_meet;
    QCheckBox* m_task = nullptr;
    QPoint m_pressPosition;
    bool m_dragged = false;
};

// The day's all-day meets, above the timeline.
class AllDayEventsSectionView final : public QWidget {
    Q_OBJECT

public:
    explicit AllDayEventsSectionView(QWidget* parent = nullptr);
    // taskDone: by meet, whether its linked task is done.
    void setMeets(const QList<MeetEntity>& meets, const QHash<QUuid, bool>& taskDone = {});
    QList<AllDayEventRowView*> rows() const;

Q_SIGNALS:
    void detailRequested(const MeetEntity& meet);
    void taskDoneToggled(const MeetEntity& meet, bool done);
    void onEditMeet(const MeetEntity& meet);
    void onDeleteMeet(const MeetEntity& meet);

private:
    QVBoxLayout* m_rows;
};
