#include "tasks/applications/TaskAgendaApplication.h"

#include <QSet>

#include <algorithm>
#include <tuple>
#include <vector>

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

QList<TaskEntity> TaskAgendaApplication::soonestFirst(const QList<TaskEntity>& tasks)
{
    // Each task's place worked out once: a timed one's local time is not cheap to find.
    using Place = std::tuple<QDate, bool, QTime>;
    std::vector<std::pair<Place, qsizetype>> places;
    places.reserve(std::size_t(tasks.size()));
    for (qsizetype index = 0; index < tasks.size(); ++index) {
        const TaskEntity& task = tasks.at(index);
        const QDateTime local = task.tasDueHasTime ? task.tasDueDate->toLocalTime() : QDateTime();
        places.emplace_back(Place {task.tasDueHasTime ? local.date() : task.dueDay().value_or(QDate()),
                                task.tasDueHasTime, local.time()},
            index);
    }
    std::stable_sort(places.begin(), places.end(), [&tasks](const auto& one, const auto& other) {
        if (one.first != other.first)
            return one.first < other.first;
        return tasks.at(one.second).tasTitle.localeAwareCompare(tasks.at(other.second).tasTitle) < 0;
    });
    QList<TaskEntity> sorted;
    sorted.reserve(tasks.size());
    for (const auto& place : places)
        sorted.append(tasks.at(place.second));
    return sorted;
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
    if (auto* tasks = found.result ? found.dataAs<QList<TaskEntity>>() : nullptr)
        return TaskResultEntity::success(soonestFirst(*tasks));
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
