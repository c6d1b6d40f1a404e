#include "rituals/QuickAdd.h"

#include <algorithm>

namespace QuickAdd {

namespace {

Outcome failed(const QString& notice)
{
    return {false, notice, std::nullopt};
}

QString why(const TaskResultEntity& result)
{
    return result.firstMessage().value_or(QString());
}

} // namespace

QList<QuickAddParser::ProjectNames> Catalogue::names() const
{
    QList<QuickAddParser::ProjectNames> names;
    for (const ProjectEntity& project : projects) {
        QStringList listNames;
        for (const TaskListEntity& list : lists.value(project.prjId))
            listNames.append(list.talName);
        names.append({project.prjName, listNames});
    }
    return names;
}

QString Catalogue::nameOf(const QUuid& projectId) const
{
    for (const ProjectEntity& project : projects) {
        if (project.prjId == projectId)
            return project.prjName;
    }
    return {};
}

Catalogue catalogue(const TasksApplicationFactory::Applications& applications, const QUuid& userId)
{
    Catalogue catalogue;
    const TaskResultEntity projectsListed = applications.projects.list(userId);
    if (!projectsListed.result) {
        catalogue.failure = why(projectsListed);
        return catalogue;
    }
    catalogue.projects = *projectsListed.dataAs<QList<ProjectEntity>>();
    for (const ProjectEntity& project : std::as_const(catalogue.projects)) {
        const TaskResultEntity listsListed = applications.taskLists.list(project.prjId);
        if (!listsListed.result) {
            catalogue.failure = why(listsListed);
            return catalogue;
        }
        catalogue.lists.insert(project.prjId, *listsListed.dataAs<QList<TaskListEntity>>());
    }
    return catalogue;
}

Outcome add(const TasksApplicationFactory::Applications& applications, const QUuid& userId, const QString& text,
    const OpenPlace& open, QuickAddParser::Options options)
{
    const Catalogue known = catalogue(applications, userId);
    if (!known.failure.isEmpty()) {
        //% "The task “%1” was not added: %2"
        return failed(qtTrId("quick-add-failed").arg(text, known.failure));
    }
    options.projects = known.names();
    options.openProject = known.nameOf(open.projectId);
    const QuickAddParser::Fields fields = QuickAddParser::parse(text, options);
    if (fields.title.isEmpty()) {
        // clang-format off
        //% "The task “%1” was not added: it needs a title besides the day, time and other details."
        return failed(qtTrId("quick-add-no-title").arg(text));
        // clang-format on
    }
    if (!fields.unknownProject.isEmpty()) {
        //% "The task “%1” was not added: you have no project named “%2”."
        return failed(qtTrId("quick-add-unknown-project").arg(text, fields.unknownProject));
    }
    if (known.projects.isEmpty()) {
        //% "The task “%1” was not added: you have no project yet. Create one in Projects first."
        return failed(qtTrId("quick-add-no-project").arg(text));
    }

    // Of several projects of the same name, one that has the list named, and the open one first.
    const auto hasNamedList = [&known, &fields](const ProjectEntity& candidate) {
        const QList<TaskListEntity> lists = known.lists.value(candidate.prjId);
        return fields.list.isEmpty()
            || std::any_of(lists.cbegin(), lists.cend(),
                [&fields](const TaskListEntity& list) { return list.talName == fields.list; });
    };
    ProjectEntity project = known.projects.constFirst();
    bool projectFound = false;
    for (const ProjectEntity& candidate : known.projects) {
        const bool isOpen = candidate.prjId == open.projectId;
        const bool named = candidate.prjName == fields.project && hasNamedList(candidate);
        if (fields.project.isEmpty() ? isOpen : named && (!projectFound || isOpen)) {
            project = candidate;
            projectFound = true;
            if (isOpen)
                break;
        }
    }
    if (!fields.unknownList.isEmpty()) {
        //% "The task “%1” was not added: the project “%2” has no list named “%3”."
        return failed(qtTrId("quick-add-unknown-list").arg(text, project.prjName, fields.unknownList));
    }
    const QList<TaskListEntity> lists = known.lists.value(project.prjId);
    if (lists.isEmpty()) {
        //% "The task “%1” was not added: the project “%2” has no task list."
        return failed(qtTrId("quick-add-no-list").arg(text, project.prjName));
    }
    const auto firstList = [&lists](const auto& matches) {
        const auto found = std::find_if(lists.cbegin(), lists.cend(), matches);
        return found == lists.cend() ? std::optional<TaskListEntity>() : std::optional<TaskListEntity>(*found);
    };
    std::optional<TaskListEntity> chosen;
    if (!fields.list.isEmpty())
        chosen = firstList([&fields](const TaskListEntity& list) { return list.talName == fields.list; });
    // The list open counts only for a line that names no place at all: "#Work" alone means
    // Work's default list even with another of Work's lists open.
    if (!chosen && fields.project.isEmpty() && project.prjId == open.projectId && !open.listId.isNull())
        chosen = firstList([&open](const TaskListEntity& list) { return list.talId == open.listId; });
    if (!chosen && fields.list.isEmpty())
        chosen = firstList([](const TaskListEntity& list) { return list.talIsDefault; });
    const TaskListEntity list = chosen.value_or(lists.constFirst());

    TaskEntity task;
    task.prjId = project.prjId;
    task.talId = list.talId;
    fields.applyTo(task);
    const TaskResultEntity created = applications.tasks.create(task);
    if (!created.result)
        return failed(qtTrId("quick-add-failed").arg(text, why(created)));
    //% "Added “%1” to %2 / %3."
    return {true, qtTrId("quick-add-done").arg(fields.title, project.prjName, list.talName), task};
}

} // namespace QuickAdd
