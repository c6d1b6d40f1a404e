#pragma once

#include "meetings/entities/MeetEntity.h"

#include <QFrame>

class QVBoxLayout;

// One all-day meet: its colour, its name; a click opens its detail. Dragged onto the timeline,
// it is given a time there.
class AllDayEventRowView final : public QFrame {
    Q_OBJECT

public:
    // The drag carries the meet's identity.
    static inline const QString dragMimeType = QStringLiteral("application/x-tolvane-meet-id");

    AllDayEventRowView(const MeetEntity& meet, QWidget* parent = nullptr);
    const MeetEntity& meet() const { return m_meet; }

Q_SIGNALS:
    void detailRequested(const MeetEntity& meet);
    void onEdit(const MeetEntity& meet);
    void onDelete(const MeetEntity& meet);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    MeetEntity m_meet;
    QPoint m_pressPosition;
    bool m_dragged = false;
};

// The day's all-day meets, above the timeline.
class AllDayEventsSectionView final : public QWidget {
    Q_OBJECT

public:
    explicit AllDayEventsSectionView(QWidget* parent = nullptr);
    void setMeets(const QList<MeetEntity>& meets);
    QList<AllDayEventRowView*> rows() const;

Q_SIGNALS:
    void detailRequested(const MeetEntity& meet);
    void onEditMeet(const MeetEntity& meet);
    void onDeleteMeet(const MeetEntity& meet);

private:
    QVBoxLayout* m_rows;
};
