#include "rituals/QuickAdd.h"

namespace QuickAdd {

namespace {

Outcome failed(const QString& notice)
{
    return {false, notice};
}

QString why(const TaskResultEntity& result)
{
    return result.firstMessage().value_or(QString());
}

} // namespace

Outcome add(const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& text,
    const QUuid& preferredProjectId)
{
    const TaskResultEntity projectsListed = applications.projects.list(userId);
    if (!projectsListed.result) {
        //% "The task “%1” was not added: %2"
        return failed(qtTrId("quick-add-failed").arg(text, why(projectsListed)));
    }
    const QList<ProjectEntity> projects = *projectsListed.dataAs<QList<ProjectEntity>>();
    if (projects.isEmpty()) {
        //% "The task “%1” was not added: you have no project yet. Create one in Projects first."
        return failed(qtTrId("quick-add-no-project").arg(text));
    }
    ProjectEntity project = projects.constFirst();
    for (const ProjectEntity& candidate : projects) {
        if (candidate.prjId == preferredProjectId)
            project = candidate;
    }

    const TaskResultEntity listsListed = applications.taskLists.list(project.prjId);
    if (!listsListed.result)
        return failed(qtTrId("quick-add-failed").arg(text, why(listsListed)));
    const QList<TaskListEntity> lists = *listsListed.dataAs<QList<TaskListEntity>>();
    if (lists.isEmpty()) {
        //% "The task “%1” was not added: the project “%2” has no task list."
        return failed(qtTrId("quick-add-no-list").arg(text, project.prjName));
    }
    TaskListEntity list = lists.constFirst();
    for (const TaskListEntity& candidate : lists) {
        if (candidate.talIsDefault) {
            list = candidate;
            break;
        }
    }

    const TaskResultEntity created
        = applications.tasks.create(TaskEntity {.prjId = project.prjId, .talId = list.talId, .tasTitle = text});
    if (!created.result)
        return failed(qtTrId("quick-add-failed").arg(text, why(created)));
    //% "Added “%1” to %2 / %3."
    return {true, qtTrId("quick-add-done").arg(text, project.prjName, list.talName)};
}

} // namespace QuickAdd
