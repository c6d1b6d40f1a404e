#include "screens/projects/ProjectsController.h"

#include "screens/common/ActionRunner.h"
#include "tasks/domain/ProjectDomain.h"

ProjectsController::ProjectsController(ProjectsApplication application, ErrorConsoleStore& console, QObject* parent)
    : QObject(parent)
    , application(std::move(application))
    , m_console(console)
{
}

template <typename Work>
void ProjectsController::run(
    const QString& action, const QUuid& projectId, Work&& work, std::function<void(bool)> finished)
{
    runAction(this, m_console, QStringLiteral("ProjectsController.") + action, std::forward<Work>(work),
        [this, projectId, finished = std::move(finished)](const ResultEntity& result) {
            // The backend gives a new project an id of its own.
            const ProjectEntity* stored = result.dataAs<ProjectEntity>();
            if (result.result)
                Q_EMIT saved(stored ? stored->prjId : projectId);
            else
                Q_EMIT failed(result.firstMessage().value_or(QString()));
            if (finished)
                finished(result.result);
        });
}

void ProjectsController::add(const QString& name, const QUuid& userId, std::function<void(bool)> added)
{
    const ProjectEntity project {.prjUserId = userId, .prjName = name};
    run(
        QStringLiteral("add"), project.prjId, [app = application, project] { return app.create(project); },
        std::move(added));
}

void ProjectsController::update(const ProjectEntity& project)
{
    run(QStringLiteral("update"), project.prjId, [app = application, project] { return app.update(project); });
}

void ProjectsController::setShowEveryDay(const ProjectEntity& project, bool showEveryDay)
{
    ProjectEntity changed = project;
    changed.prjShowEveryDay = showEveryDay;
    run(QStringLiteral("setShowEveryDay"), project.prjId, [app = application, changed] { return app.update(changed); });
}

void ProjectsController::delete_(const ProjectEntity& project, const QUuid& userId)
{
    run(QStringLiteral("delete"), project.prjId,
        [app = application, id = project.prjId, userId] { return app.delete_(id, userId); });
}
