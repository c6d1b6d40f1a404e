#pragma once

#include "screens/projects/ProjectsWorkspaceEntities.h"

#include <QFrame>

class InlineAddRowView;
class InlineEditableLabel;
class QToolButton;

// One project in the sidebar: its header (open the overview, rename, show every day, delete)
// and, when expanded, its lists and an add row. The sidebar keeps it while the project and its
// lists change (setItem()), so an add row being typed into stays open and keeps its entries.
class ProjectSectionView final : public QFrame {
    Q_OBJECT

public:
    ProjectSectionView(const ProjectWithListsEntity& item, bool isExpanded, bool isSelected,
        const QUuid& selectedListId, const QUuid& deletingListId, bool isDeleting, QWidget* parent = nullptr);

    void setItem(const ProjectWithListsEntity& item, bool isExpanded, bool isSelected, const QUuid& selectedListId,
        const QUuid& deletingListId, bool isDeleting);
    const ProjectEntity& project() const { return m_item.project; }
    InlineAddRowView* addListRow() const { return m_addList; }
    void startRenaming();
    // Highlights the project header (selectedProject) or one of its lists, without rebuilding.
    void setSelection(bool projectSelected, const QUuid& selectedListId);

Q_SIGNALS:
    void expandedChanged(const QUuid& projectId, bool expanded);
    void projectSelected(const ProjectEntity& project);
    void renameRequested(const ProjectEntity& project, const QString& name);
    void showEveryDayToggled(const ProjectEntity& project, bool showEveryDay);
    void deleteRequested(const ProjectEntity& project);
    void listSelected(const TaskListEntity& taskList, const ProjectEntity& project);
    void listRenameRequested(const TaskListEntity& taskList, const QString& name);
    void listSetDefaultRequested(const TaskListEntity& taskList);
    void listDeleteRequested(const TaskListEntity& taskList);
    void addListRequested(const ProjectEntity& project, const QString& name);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    ProjectWithListsEntity m_item;
    bool m_isExpanded = false;
    InlineEditableLabel* m_name;
    QFrame* m_header;
    QToolButton* m_fold;
    QToolButton* m_everyDay;
    QWidget* m_lists = nullptr;
    InlineAddRowView* m_addList;
};
