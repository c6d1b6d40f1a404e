#pragma once

#include "tasks/entities/DailyTaskEntity.h"

#include <QWidget>

#include <functional>

class InlineAddRowView;
class InlineEditableLabel;
class QCheckBox;
class QLabel;
class QToolButton;
class QVBoxLayout;

// The row's "Block time for this task" entry, in its context menu and on Ctrl+B while the focus
// is in the row: the keyboard's way to what dragging the row onto the timeline does.
void addBlockTimeAction(QWidget* row, std::function<void()> blockTime);

// One entry of the daily checklist: its check mark, its title (renamed in place) and delete. It
// can be dragged onto the timeline, or asked from its menu (Ctrl+B), to block time for it.
class DailyTaskRowView final : public QWidget {
    Q_OBJECT

public:
    static inline const QString dragMimeType = QStringLiteral("application/x-tolvane-daily-task-id");

    explicit DailyTaskRowView(const DailyTaskEntity& task, QWidget* parent = nullptr);

    const DailyTaskEntity& task() const { return m_task; }
    bool isToggling() const { return m_isToggling; }
    QCheckBox* checkMark() const { return m_done; }
    InlineEditableLabel* title() const { return m_title; }

Q_SIGNALS:
    void onToggleDone(const DailyTaskEntity& task, bool isDone);
    void onRename(const DailyTaskEntity& task, const QString& title);
    void onDelete(const DailyTaskEntity& task);
    void onBlockTime(const DailyTaskEntity& task);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    DailyTaskEntity m_task;
    QPoint m_pressPosition;
    bool m_isToggling = false;
    QCheckBox* m_done;
    InlineEditableLabel* m_title;
};

// The day's checklist: open entries, then the done ones folded under a header, and an add row.
class DailyTaskSectionView final : public QWidget {
    Q_OBJECT

public:
    explicit DailyTaskSectionView(QWidget* parent = nullptr);

    void setTasks(const QList<DailyTaskEntity>& tasks, bool isLoggedIn);
    void finishAdding(bool added);
    bool isCompletedExpanded() const { return m_isCompletedExpanded; }
    QString title() const;
    QList<DailyTaskRowView*> rows() const;
    InlineAddRowView* addRow() const { return m_add; }

Q_SIGNALS:
    void onToggleDone(const DailyTaskEntity& task, bool isDone);
    void onRenameTask(const DailyTaskEntity& task, const QString& title);
    void onDeleteTask(const DailyTaskEntity& task);
    void onAddTask(const QString& title);
    void onBlockTime(const DailyTaskEntity& task);

private:
    void render();
    DailyTaskRowView* makeRow(const DailyTaskEntity& task);

    QList<DailyTaskEntity> m_tasks;
    bool m_isLoggedIn = false;
    bool m_isCompletedExpanded = false;
    QLabel* m_title;
    QVBoxLayout* m_rows;
    InlineAddRowView* m_add;
};
