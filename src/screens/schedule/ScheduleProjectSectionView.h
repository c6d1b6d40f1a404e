#pragma once

#include "tasks/entities/EisenhowerTagEnum.h"
#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskEntity.h"
#include "tasks/entities/TaskListEntity.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class InlineAddRowView;
class TaskRowView;

// A project with its default list and that list's tasks, as the schedule shows it.
struct ProjectWithDefaultListEntity {
    ProjectEntity project;
    std::optional<TaskListEntity> list;
    QList<TaskEntity> tasks;

    friend bool operator==(const ProjectWithDefaultListEntity&, const ProjectWithDefaultListEntity&) = default;
};

// One project of the schedule's projects pane: a header that folds it, then its default list's
// tasks with an add row and "delete completed". The tasks are only made into rows once the
// project is first unfolded: a folded project of a big store costs one header.
class ScheduleProjectSectionView final : public QWidget {
    Q_OBJECT

public:
    ScheduleProjectSectionView(const ProjectWithDefaultListEntity& item, bool isExpanded, QWidget* parent = nullptr);

    const ProjectWithDefaultListEntity& item() const { return m_item; }
    // Takes a new state of the same project and list, keeping the add row; false when the
    // project or its default list changed, and the section must be made anew.
    bool setItem(const ProjectWithDefaultListEntity& item);
    bool isExpanded() const { return m_isExpanded; }
    void setExpanded(bool expanded);
    // Empty while the project has never been unfolded.
    QList<TaskRowView*> taskRows() const;
    InlineAddRowView* addRow() const { return m_add; }

Q_SIGNALS:
    void isExpandedChanged(const QUuid& projectId, bool expanded);
    void onToggleDone(const TaskEntity& task, bool isDone);
    void onRenameTask(const TaskEntity& task, const QString& title);
    void onDeleteTask(const TaskEntity& task);
    void onSetEisenhowerTag(const TaskEntity& task, std::optional<EisenhowerTagEnum> tag);
    void onAddTask(const TaskListEntity& list, const QString& title);
    void onDeleteAllCompleted(const TaskListEntity& list, const QList<TaskEntity>& completed);
    void onBlockTime(const TaskEntity& task);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildBody();
    void buildTaskRows();
    void dropTaskRows();
    void fitHeader();

    ProjectWithDefaultListEntity m_item;
    bool m_isExpanded = false;
    QWidget* m_body = nullptr;
    InlineAddRowView* m_add = nullptr;
    QPointer<QWidget> m_rows;
    QPointer<QWidget> m_footer;
    class QToolButton* m_header;
};
