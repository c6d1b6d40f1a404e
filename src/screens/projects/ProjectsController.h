#pragma once

#include "tasks/applications/ProjectsApplication.h"

#include <QObject>

#include <functional>

class ErrorConsoleStore;

// The projects workspace's project actions. Each runs off the GUI thread; success emits saved,
// failure writes "ProjectsController.<action> failed: ..." to the console and emits failed.
class ProjectsController final : public QObject {
    Q_OBJECT

public:
    ProjectsController(ProjectsApplication application, ErrorConsoleStore& console, QObject* parent = nullptr);

    // added hears whether the store took it, after saved or failed.
    void add(const QString& name, const QUuid& userId, std::function<void(bool)> added = {});
    void update(const ProjectEntity& project);
    void setShowEveryDay(const ProjectEntity& project, bool showEveryDay);
    void delete_(const ProjectEntity& project, const QUuid& userId);

    const ProjectsApplication application;

Q_SIGNALS:
    void saved(const QUuid& projectId);
    void failed(const QString& message);

private:
    template <typename Work>
    void run(const QString& action, const QUuid& projectId, Work&& work, std::function<void(bool)> finished = {});

    ErrorConsoleStore& m_console;
};
