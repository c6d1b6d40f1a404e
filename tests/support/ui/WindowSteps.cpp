#include "support/ui/WindowSteps.h"

#include "ContentView.h"
#include "screens/common/InlineAddRowView.h"
#include "screens/projects/ProjectsView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

MainWindow* WindowSteps::show(const AppServices& services) const
{
    if (!m_window) {
        m_window = std::make_unique<MainWindow>(services);
        m_window->show();
    }
    return m_window.get();
}

ProjectsView* WindowSteps::openProjects(const AppServices& services) const
{
    show(services)->contentView()->select(SidebarItemEnum::projects);
    auto* view = waitFor<ProjectsView>(QStringLiteral("projectsView"));
    if (!QTest::qWaitFor([view] { return !view->isLoading(); }, m_patience))
        throw std::runtime_error("the projects workspace never finished loading");
    return view;
}

void WindowSteps::activate() const
{
    m_window->activateWindow();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        throw std::runtime_error("the window never became active");
}

bool WindowSteps::shows(const QString& objectName) const
{
    return m_window->findChild<QWidget*>(objectName) != nullptr;
}

InlineAddRowView* WindowSteps::addInline(const QString& rowName, const QString& text) const
{
    auto* row = waitFor<InlineAddRowView>(QStringLiteral("inlineAdd:") + rowName);
    if (!row->isEditing())
        row->findChild<QPushButton*>()->click();
    auto* field = row->findChild<QLineEdit*>();
    if (!QTest::qWaitFor([field] { return field->isEnabled(); }, m_patience))
        throw std::runtime_error("the add row " + rowName.toStdString() + " never took text");
    QTest::keyClicks(field, text);
    QTest::keyClick(field, Qt::Key_Return);
    return row;
}

void WindowSteps::addAndWait(const QString& rowName, const QString& text) const
{
    InlineAddRowView* row = addInline(rowName, text);
    if (!QTest::qWaitFor([row] { return !row->isAdding() && row->waitingCount() == 0; }, m_patience))
        throw std::runtime_error("\"" + text.toStdString() + "\" was never stored");
}

void WindowSteps::openList(const QString& list, QObject* within) const
{
    QTest::mouseClick(waitFor(QStringLiteral("list:") + list, within), Qt::LeftButton);
    auto* title = waitFor<QLabel>(QStringLiteral("detailTitle"));
    if (!QTest::qWaitFor([title, &list] { return title->text() == list; }, m_patience))
        throw std::runtime_error("the list " + list.toStdString() + " never opened");
}

void WindowSteps::openListOf(const QString& project, const QString& list) const
{
    addInline(QStringLiteral("projects-add-button"), project);
    waitFor(QStringLiteral("project:") + project);
    addInline(QStringLiteral("task-lists-add-button"), list);
    openList(list);
}

std::optional<TaskListEntity> storedListNamed(
    const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& name)
{
    const TaskResultEntity projects = applications.projects.list(userId);
    if (!projects.result)
        return std::nullopt;
    for (const ProjectEntity& project : *projects.dataAs<QList<ProjectEntity>>()) {
        const TaskResultEntity lists = applications.taskLists.list(project.prjId);
        if (!lists.result)
            continue;
        for (const TaskListEntity& list : *lists.dataAs<QList<TaskListEntity>>()) {
            if (list.talName == name)
                return list;
        }
    }
    return std::nullopt;
}
