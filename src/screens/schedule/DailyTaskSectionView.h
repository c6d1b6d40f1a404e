#pragma once

#include "tasks/entities/DailyTaskEntity.h"

#include <QWidget>

class InlineAddRowView;
class InlineEditableLabel;
class QCheckBox;
class QLabel;
class QToolButton;
class QVBoxLayout;

// One entry of the daily checklist: its check mark, its title (renamed in place) and delete.
class DailyTaskRowView final : public QWidget {
    Q_OBJECT

public:
    explicit DailyTaskRowView(const DailyTaskEntity& task, QWidget* parent = nullptr);

    const DailyTaskEntity& task() const { return m_task; }
    bool isToggling() const { return m_isToggling; }
    QCheckBox* checkMark() const { return m_done; }
    InlineEditableLabel* title() const { return m_title; }

Q_SIGNALS:
    void onToggleDone(const DailyTaskEntity& task, bool isDone);
    void onRename(const DailyTaskEntity& task, const QString& title);
    void onDelete(const DailyTaskEntity& task);

private:
    DailyTaskEntity m_task;
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
