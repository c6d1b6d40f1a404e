#pragma once

#include "tasks/entities/TaskEntity.h"

#include <QWidget>

class InlineEditableLabel;
class QCheckBox;
class LazyMenuButton;

// One task: its done box, its title (renamed in place), when it is due (in words, overdue
// marked, with a mark when it repeats), its quadrant menu and delete. The due date, repetition
// and reminder are edited in a popover (its button, the context menu or Ctrl+E). It can be
// dragged onto a quadrant of the matrix.
class TaskRowView final : public QWidget {
    Q_OBJECT

public:
    static inline const QString dragMimeType = QStringLiteral("application/x-tolvane-task-id");

    explicit TaskRowView(const TaskEntity& task, QWidget* parent = nullptr);

    const TaskEntity& task() const { return m_task; }
    void setToggling(bool toggling);
    // A row keeps to its natural height, which for a title wrapped onto several lines depends
    // on the width the row was given.
    QSize sizeHint() const override;

Q_SIGNALS:
    void toggleDone(const TaskEntity& task, bool isDone);
    void rename(const TaskEntity& task, const QString& title);
    void deleteRequested(const TaskEntity& task);
    void setTag(const TaskEntity& task, std::optional<EisenhowerTagEnum> tag);
    void schedule(const TaskEntity& task);
    void skipOccurrence(const TaskEntity& task);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    // Opens the popover that edits the due date, its repetition and the reminder.
    void openSchedule();

    TaskEntity m_task;
    QCheckBox* m_done;
    InlineEditableLabel* m_title;
    LazyMenuButton* m_tag;
    QPoint m_pressPosition;
};
