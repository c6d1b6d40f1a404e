#include "screens/projects/ProjectsSidebarPaneView.h"

#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectSectionView.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

ProjectsSidebarPaneView::ProjectsSidebarPaneView(QWidget* parent)
    : QWidget(parent)
    , m_state(new QLabel(this))
    , m_scroll(new QScrollArea(this))
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
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(m_state);
    layout->addWidget(m_scroll, 1);
    layout->addWidget(m_addProject);
    connect(m_addProject, &InlineAddRowView::addRequested, this, &ProjectsSidebarPaneView::addProject);
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

    const int scrolled = m_scroll->verticalScrollBar()->value();
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    m_sections.clear();
    for (const ProjectWithListsEntity& item : state.workspace) {
        const QUuid id = item.project.prjId;
        auto* section
            = new ProjectSectionView(item, state.expandedProjectIds.contains(id), id == state.selectedProjectId,
                state.selectedListId, state.deletingListId, id == state.deletingProjectId, content);
        connect(section, &ProjectSectionView::expandedChanged, this, &ProjectsSidebarPaneView::expandedChanged);
        connect(section, &ProjectSectionView::projectSelected, this, &ProjectsSidebarPaneView::selectProject);
        connect(section, &ProjectSectionView::renameRequested, this, &ProjectsSidebarPaneView::renameProject);
        connect(section, &ProjectSectionView::showEveryDayToggled, this,
            &ProjectsSidebarPaneView::toggleProjectShowEveryDay);
        connect(section, &ProjectSectionView::deleteRequested, this, &ProjectsSidebarPaneView::deleteProject);
        connect(section, &ProjectSectionView::listSelected, this, &ProjectsSidebarPaneView::selectList);
        connect(section, &ProjectSectionView::listRenameRequested, this, &ProjectsSidebarPaneView::renameList);
        connect(section, &ProjectSectionView::listSetDefaultRequested, this, &ProjectsSidebarPaneView::setDefaultList);
        connect(section, &ProjectSectionView::listDeleteRequested, this, &ProjectsSidebarPaneView::deleteList);
        connect(section, &ProjectSectionView::addListRequested, this, &ProjectsSidebarPaneView::addList);
        layout->addWidget(section);
        m_sections.append(section);
    }
    layout->addStretch(1);
    // The old content may be handling the very click that asked for this.
    if (QWidget* old = m_scroll->takeWidget())
        old->deleteLater();
    m_scroll->setWidget(content);
    m_scroll->verticalScrollBar()->setValue(scrolled);
}

void ProjectsSidebarPaneView::setSelection(const QUuid& selectedProjectId, const QUuid& selectedListId)
{
    for (ProjectSectionView* section : m_sections)
        section->setSelection(section->project().prjId == selectedProjectId, selectedListId);
}
