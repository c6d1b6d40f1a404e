#include "screens/projects/TaskEisenhowerMatrixView.h"

#include "screens/projects/CompletedTasksSectionView.h"
#include "screens/projects/EisenhowerTagStyle.h"
#include "screens/projects/TaskActions.h"
#include "screens/projects/TaskRowView.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMimeData>
#include <QVBoxLayout>

namespace {

// One quadrant (or the untagged tray): a titled box that takes dropped tasks.
class QuadrantView final : public QFrame {
public:
    // allTasks: every task of the matrix, so a dropped identifier can be found again.
    QuadrantView(std::optional<EisenhowerTagEnum> tag, const QList<TaskEntity>& tasks,
        const QList<TaskEntity>& allTasks, TaskActions& actions, QWidget* parent)
        : QFrame(parent)
        , m_tag(tag)
        , m_allTasks(allTasks)
        , m_actions(actions)
    {
        setObjectName(QStringLiteral("quadrant-") + (tag ? EisenhowerTag::rawValue(*tag) : QStringLiteral("none")));
        setAcceptDrops(true);
        setFrameShape(QFrame::StyledPanel);
        // The columns share the width equally, however long the titles in one of them.
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        setMinimumWidth(160);
        const QString accent = tag ? EisenhowerTagStyle::color(*tag).name() : QStringLiteral("#8E8E93");
        setStyleSheet(QStringLiteral("QFrame#%1 { border: 1px solid %2; border-top: 4px solid %2; "
                                     "border-radius: 6px; }")
                          .arg(objectName(), accent));
        auto* layout = new QVBoxLayout(this);
        auto* title = new QLabel(EisenhowerTagStyle::label(tag), this);
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
        layout->addWidget(title);
        for (const TaskEntity& task : tasks) {
            auto* row = new TaskRowView(task, this);
            actions.attach(row);
            layout->addWidget(row);
        }
        if (tasks.isEmpty() && tag) {
            //% "Drop tasks here"
            auto* empty = new QLabel(qtTrId("eisenhower-matrix-quadrant-empty"), this);
            empty->setEnabled(false);
            layout->addWidget(empty);
        }
        layout->addStretch();
    }

    void dragEnterEvent(QDragEnterEvent* event) override
    {
        if (event->mimeData()->hasFormat(TaskRowView::dragMimeType))
            event->acceptProposedAction();
    }

    void dropEvent(QDropEvent* event) override
    {
        const QUuid id(event->mimeData()->data(TaskRowView::dragMimeType));
        event->acceptProposedAction();
        for (const TaskEntity& task : m_allTasks) {
            if (task.tasId == id && task.tasEisenhowerTag != m_tag) {
                Q_EMIT m_actions.setTag(task, m_tag);
                return;
            }
        }
    }

private:
    std::optional<EisenhowerTagEnum> m_tag;
    QList<TaskEntity> m_allTasks;
    TaskActions& m_actions;
};

} // namespace

TaskEisenhowerMatrixView::TaskEisenhowerMatrixView(
    const QList<TaskEntity>& tasks, TaskActions& actions, bool isCompletedExpanded, QWidget* parent)
    : QWidget(parent)
{
    const auto openWith = [&](std::optional<EisenhowerTagEnum> tag) {
        QList<TaskEntity> matching;
        for (const TaskEntity& task : tasks) {
            if (!task.tasIsDone && task.tasEisenhowerTag == tag)
                matching.append(task);
        }
        return matching;
    };

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* grid = new QGridLayout;
    grid->setSpacing(8);
    int cell = 0;
    for (const EisenhowerTagEnum tag : EisenhowerTag::allCases) {
        grid->addWidget(new QuadrantView(tag, openWith(tag), tasks, actions, this), cell / 2, cell % 2);
        ++cell;
    }
    grid->setRowStretch(0, 1);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    layout->addLayout(grid, 1);
    const QList<TaskEntity> untagged = openWith(std::nullopt);
    if (!untagged.isEmpty())
        layout->addWidget(new QuadrantView(std::nullopt, untagged, tasks, actions, this));

    auto* completedSection = new CompletedTasksSectionView(tasks, actions, isCompletedExpanded, this);
    connect(completedSection, &CompletedTasksSectionView::expandedChanged, this,
        &TaskEisenhowerMatrixView::completedExpandedChanged);
    layout->addWidget(completedSection);
}
