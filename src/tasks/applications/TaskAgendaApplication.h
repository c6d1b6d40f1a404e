#pragma once

#include "tasks/repositories/ProjectRepository.h"
#include "tasks/repositories/TaskListRepository.h"
#include "tasks/repositories/TaskRepository.h"

#include <QDate>

#include <memory>

// Tasks found by their days across all of the user's projects: what is due (the "Today" and
// "Upcoming" views, the morning plan) and what was completed (the evening review).
class TaskAgendaApplication {
public:
    TaskAgendaApplication(std::shared_ptr<ProjectRepository> projectRepository,
        std::shared_ptr<TaskListRepository> taskListRepository, std::shared_ptr<TaskRepository> taskRepository);

    // The user's open tasks due on lastDay or earlier (a timed one by its local day, a day-only
    // one by its calendar day in any zone), soonest first; data: QList<TaskEntity>.
    TaskResultEntity dueUpTo(const QUuid& userId, const QDate& lastDay) const;
    // The user's tasks marked done during that local day, in the order they were done;
    // data: QList<TaskEntity>.
    TaskResultEntity completedOn(const QUuid& userId, const QDate& day) const;

    // The first instant after every due date that falls on lastDay or before: the later of the
    // next local midnight (timed tasks) and the next midnight UTC (day-only tasks).
    static QDateTime dueBound(const QDate& lastDay);
    // Soonest first: by due day, then a day-only task before a timed one, then by time, then title.
    static QList<TaskEntity> soonestFirst(const QList<TaskEntity>& tasks);

    std::shared_ptr<ProjectRepository> projectRepository;
    std::shared_ptr<TaskListRepository> taskListRepository;
    std::shared_ptr<TaskRepository> taskRepository;

private:
    // The user's tasks the store finds with direct (a query without lists), or else the tasks of
    // every list of the user's projects; only those kept passes, and only tasks of the user's
    // projects.
    template <typename Direct, typename Keep>
    TaskResultEntity tasksOfUser(const QUuid& userId, Direct&& direct, Keep&& keep) const;
};
