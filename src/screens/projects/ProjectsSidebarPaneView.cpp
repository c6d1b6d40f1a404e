#include "screens/projects/ProjectsSidebarPaneView.h"

#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectSectionView.h"
#include "screens/projects/TaskDayViewSidebarRowView.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

ProjectsSidebarPaneView::ProjectsSidebarPaneView(QWidget* parent)
    : QWidget(parent)
    , m_state(new QLabel(this))
    , m_today(new TaskDayViewSidebarRowView(ProjectsDetailSelectionEnum::today, this))
    , m_upcoming(new TaskDayViewSidebarRowView(ProjectsDetailSelectionEnum::upcoming, this))
    , m_scroll(new QScrollArea(this))
    , m_content(new QWidget)
    , m_contentLayout(new QVBoxLayout(m_content))
    //% "Add project"
    , m_addProject(new InlineAddRowView(QStringLiteral("projects-add-button"), qtTrId("projects-add-button"), this))
{
    setObjectName(QStringLiteral("projectsSidebar"));
    //% "Projects"
    auto* title = new QLabel(qtTrId("projects-screen-title"), this);
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.4);
    titleFont.setBold(true);
    title->setFont(titleFont);
    m_state->setObjectName(QStringLiteral("sidebarState"));
    m_state->setWordWrap(true);
    m_state->setEnabled(false);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_contentLayout->setContentsMargins(0, 0, 0, 0);
    m_contentLayout->setSpacing(2);
    m_contentLayout->addStretch(1);
    m_scroll->setWidget(m_content);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(m_today);
    layout->addWidget(m_upcoming);
    layout->addWidget(m_state);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(m_addProject);
    connect(m_addProject, &InlineAddRowView::addRequested, this, &ProjectsSidebarPaneView::addProject);
    for (TaskDayViewSidebarRowView* view : {m_today, m_upcoming})
        connect(view, &TaskDayViewSidebarRowView::selected, this, &ProjectsSidebarPaneView::selectDayView);
}

TaskDayViewSidebarRowView* ProjectsSidebarPaneView::dayView(ProjectsDetailSelectionEnum view) const
{
    return view == ProjectsDetailSelectionEnum::today   ? m_today
        : view == ProjectsDetailSelectionEnum::upcoming ? m_upcoming
                                                        : nullptr;
}

void ProjectsSidebarPaneView::setDayCounts(int today, int overdue, int upcoming)
{
    m_today->setCount(today, overdue);
    m_upcoming->setCount(upcoming);
}

ProjectSectionView* ProjectsSidebarPaneView::section(const QUuid& projectId) const
{
    for (ProjectSectionView* section : m_sections) {
        if (section->project().prjId == projectId)
            return section;
    }
    return nullptr;
}

void ProjectsSidebarPaneView::show(const State& state)
{
    if (!state.isLoggedIn) {
        //% "Set up your account to start"
        m_state->setText(qtTrId("schedule-login-required-state"));
    } else if (state.isLoading && state.workspace.isEmpty()) {
        //% "Loading…"
        m_state->setText(qtTrId("projects-loading-state"));
    } else if (state.workspace.isEmpty()) {
        //% "No projects yet. Add your first one below."
        m_state->setText(qtTrId("projects-empty-state"));
    }
    m_state->setVisible(!state.isLoggedIn || state.workspace.isEmpty());
    m_addProject->setVisible(state.isLoggedIn);
    m_today->setVisible(state.isLoggedIn);
    m_upcoming->setVisible(state.isLoggedIn);
    m_today->setSelected(state.selectedDayView == ProjectsDetailSelectionEnum::today);
    m_upcoming->setSelected(state.selectedDayView == ProjectsDetailSelectionEnum::upcoming);

    // Sections stay while their projects do, in the workspace's order.
    QList<ProjectSectionView*> sections;
    for (const ProjectWithListsEntity& item : state.workspace) {
        const QUuid id = item.project.prjId;
        const bool expanded = state.expandedProjectIds.contains(id);
        ProjectSectionView* section = this->section(id);
        if (section) {
            section->setItem(item, expanded, id == state.selectedProjectId, state.selectedListId, state.deletingListId,
                id == state.deletingProjectId);
        } else {
            section = new ProjectSectionView(item, expanded, id == state.selectedProjectId, state.selectedListId,
                state.deletingListId, id == state.deletingProjectId, m_content);
            connectSection(section);
        }
        sections.append(section);
    }
    for (ProjectSectionView* old : std::as_const(m_sections)) {
        if (!sections.contains(old)) {
            m_contentLayout->removeWidget(old);
            // It may be handling the very click that asked for this.
            old->hide();
            old->deleteLater();
        }
    }
    for (int index = 0; index < sections.size(); ++index) {
        if (m_contentLayout->indexOf(sections.at(index)) != index) {
            m_contentLayout->removeWidget(sections.at(index));
            m_contentLayout->insertWidget(index, sections.at(index));
        }
    }
    m_sections = sections;
}

void ProjectsSidebarPaneView::connectSection(ProjectSectionView* section)
{
    connect(section, &ProjectSectionView::expandedChanged, this, &ProjectsSidebarPaneView::expandedChanged);
    connect(section, &ProjectSectionView::projectSelected, this, &ProjectsSidebarPaneView::selectProject);
    connect(section, &ProjectSectionView::renameRequested, this, &ProjectsSidebarPaneView::renameProject);
    connect(
        section, &ProjectSectionView::showEveryDayToggled, this, &ProjectsSidebarPaneView::toggleProjectShowEveryDay);
    connect(section, &ProjectSectionView::deleteRequested, this, &ProjectsSidebarPaneView::deleteProject);
    connect(section, &ProjectSectionView::listSelected, this, &ProjectsSidebarPaneView::selectList);
    connect(section, &ProjectSectionView::listRenameRequested, this, &ProjectsSidebarPaneView::renameList);
    connect(section, &ProjectSectionView::listSetDefaultRequested, this, &ProjectsSidebarPaneView::setDefaultList);
    connect(section, &ProjectSectionView::listDeleteRequested, this, &ProjectsSidebarPaneView::deleteList);
    connect(section, &ProjectSectionView::addListRequested, this, &ProjectsSidebarPaneView::addList);
}

void ProjectsSidebarPaneView::setSelection(
    const QUuid& selectedProjectId, const QUuid& selectedListId, ProjectsDetailSelectionEnum selectedDayView)
{
    m_today->setSelected(selectedDayView == ProjectsDetailSelectionEnum::today);
    m_upcoming->setSelected(selectedDayView == ProjectsDetailSelectionEnum::upcoming);
    for (ProjectSectionView* section : m_sections)
        section->setSelection(section->project().prjId == selectedProjectId, selectedListId);
}
