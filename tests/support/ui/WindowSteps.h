#pragma once

#include "MainWindow.h"
#include "tasks/TasksApplicationFactory.h"

#include <QString>
#include <QTest>

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

class AppServices;
class InlineAddRowView;
class ProjectsView;

// The steps the window tests take through the main window: building it, opening the projects
// workspace and its lists, typing into the add rows, finding widgets by object name. Each step
// waits up to `patience` ms for what it expects and throws when it does not come, which fails
// the test function that took it.
class WindowSteps {
public:
    // window: the test's own, which it may drop and build again between steps.
    WindowSteps(std::unique_ptr<MainWindow>& window, int patience)
        : m_window(window)
        , m_patience(patience)
    {
    }

    // Builds and shows the window over services, unless one is up already.
    MainWindow* show(const AppServices& services) const;
    // The projects workspace in front, read to the end.
    ProjectsView* openProjects(const AppServices& services) const;
    // The window in front with the keyboard focus, as the user's keys need it.
    void activate() const;

    template <typename T = QWidget> T* waitFor(const QString& objectName, QObject* within = nullptr) const
    {
        QObject* parent = within ? within : m_window.get();
        T* found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = parent->findChild<T*>(objectName)) != nullptr; }, m_patience))
            throw std::runtime_error("nothing named " + objectName.toStdString() + " showed up");
        return found;
    }
    bool shows(const QString& objectName) const;

    // Opens the add row named "inlineAdd:<rowName>", types text into it and presses Enter.
    InlineAddRowView* addInline(const QString& rowName, const QString& text) const;
    // The same, then waits until what was typed is stored.
    void addAndWait(const QString& rowName, const QString& text) const;
    // Clicks a list in the sidebar (within a project's section, when names repeat) and waits
    // for the detail pane to show it.
    void openList(const QString& list, QObject* within = nullptr) const;
    // Adds a project with one list through the add rows and opens the list.
    void openListOf(const QString& project, const QString& list) const;

private:
    std::unique_ptr<MainWindow>& m_window;
    int m_patience;
};

// Results of the use cases that set up a test's world: the entity, or an exception that fails
// the test with the store's reason.
template <typename Entity> Entity stored(const ResultEntity& result)
{
    const Entity* entity = result.result ? result.dataAs<Entity>() : nullptr;
    if (!entity)
        throw std::runtime_error("not stored: " + result.firstMessage().value_or(QString()).toStdString());
    return *entity;
}

// The list of that name among the user's projects, as the stores have it.
std::optional<TaskListEntity> storedListNamed(
    const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& name);
