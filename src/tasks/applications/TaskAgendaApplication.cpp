#include "tasks/applications/TaskAgendaApplication.h"

#include <QSet>

#include <algorithm>
#include <tuple>

TaskAgendaApplication::TaskAgendaApplication(std::shared_ptr<ProjectRepository> projectRepository,
    std::shared_ptr<TaskListRepository> taskListRepository, std::shared_ptr<TaskRepository> taskRepository)
    : projectRepository(std::move(projectRepository))
    , taskListRepository(std::move(taskListRepository))
    , taskRepository(std::move(taskRepository))
{
}

QDateTime TaskAgendaApplication::dueBound(const QDate& lastDay)
{
    const QDate next = lastDay.addDays(1);
    return std::max(next.startOfDay().toUTC(), TaskEntity::dueOnDay(next));
}

bool TaskAgendaApplication::dueEarlier(const TaskEntity& one, const TaskEntity& other)
{
    const auto key = [](const TaskEntity& task) {
        return std::make_tuple(task.dueDay().value_or(QDate()), task.tasDueHasTime,
            task.tasDueHasTime ? task.tasDueDate->toLocalTime().time() : QTime(0, 0));
    };
    if (key(one) != key(other))
        return key(one) < key(other);
    return one.tasTitle.localeAwareCompare(other.tasTitle) < 0;
}

template <typename Direct, typename Keep>
TaskResultEntity TaskAgendaApplication::tasksOfUser(const QUuid& userId, Direct&& direct, Keep&& keep) const
{
    const TaskResultEntity projects = projectRepository->list(userId);
    if (!projects.result)
        return projects;
    QList<QUuid> projectIds;
    for (const ProjectEntity& project : *projects.dataAs<QList<ProjectEntity>>())
        projectIds.append(project.prjId);
    const QSet<QUuid> ownProjects(projectIds.cbegin(), projectIds.cend());

    TaskResultEntity found = direct();
    if (!found.result) {
        // A store without such a query: every list of every project, read in as few reads as
        // the store allows.
        const TaskResultEntity lists = taskListRepository->listOfProjects(projectIds);
        if (!lists.result)
            return lists;
        QList<QUuid> listIds;
        for (const TaskListEntity& list : *lists.dataAs<QList<TaskListEntity>>())
            listIds.append(list.talId);
        found = taskRepository->listOfLists(listIds);
        if (!found.result)
            return found;
    }
    QList<TaskEntity> kept;
    for (const TaskEntity& task : *found.dataAs<QList<TaskEntity>>()) {
        if (ownProjects.contains(task.prjId) && keep(task))
            kept.append(task);
    }
    return TaskResultEntity::success(kept);
}

TaskResultEntity TaskAgendaApplication::dueUpTo(const QUuid& userId, const QDate& lastDay) const
{
    TaskResultEntity found = tasksOfUser(
        userId, [&] { return taskRepository->listOpenDueBefore(dueBound(lastDay)); },
        [&](const TaskEntity& task) { return !task.tasIsDone && task.dueDay() && *task.dueDay() <= lastDay; });
    if (auto* tasks = found.result ? found.dataAs<QList<TaskEntity>>() : nullptr) {
        QList<TaskEntity> sorted = *tasks;
        std::stable_sort(sorted.begin(), sorted.end(), dueEarlier);
        return TaskResultEntity::success(sorted);
    }
    return found;
}

TaskResultEntity TaskAgendaApplication::completedOn(const QUuid& userId, const QDate& day) const
{
    const QDateTime from = day.startOfDay().toUTC();
    const QDateTime to = day.addDays(1).startOfDay().toUTC();
    TaskResultEntity found = tasksOfUser(
        userId, [&] { return taskRepository->listCompletedBetween(from, to); },
        [&](const TaskEntity& task) {
            return task.tasIsDone && task.tasCompletedAt && *task.tasCompletedAt >= from && *task.tasCompletedAt < to;
        });
    if (auto* tasks = found.result ? found.dataAs<QList<TaskEntity>>() : nullptr) {
        QList<TaskEntity> sorted = *tasks;
        std::stable_sort(sorted.begin(), sorted.end(),
            [](const TaskEntity& one, const TaskEntity& other) { return *one.tasCompletedAt < *other.tasCompletedAt; });
        return TaskResultEntity::success(sorted);
    }
    return found;
}
