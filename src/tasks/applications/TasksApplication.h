#pragma once

#include "platform/Clock.h"
#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/TaskListRepository.h"
#include "tasks/repositories/TaskRepository.h"

#include <memory>

// The task use cases the screens call.
class TasksApplication {
public:
    TasksApplication(std::shared_ptr<TaskRepository> taskRepository,
        std::shared_ptr<TaskListRepository> taskListRepository, std::shared_ptr<Clock> clock = nullptr);

    // The task's list must exist.
    TaskResultEntity create(const TaskEntity& task) const;
    TaskResultEntity rename(const TaskEntity& task) const;
    // Sets the due date, its time, the repetition and the reminder from task; the title and the
    // done state stay as stored.
    TaskResultEntity schedule(const TaskEntity& task) const;
    // Marks the task done at the clock's time. A repeating task stays done and its next
    // occurrence is created open in the same list (unless the rule has ended); data: the done
    // TaskEntity.
    TaskResultEntity markDone(const QUuid& taskId) const;
    TaskResultEntity markNotDone(const QUuid& taskId) const;
    // Moves an open repeating task to its next due date without completing it; data: the task.
    TaskResultEntity skipOccurrence(const QUuid& taskId) const;
    TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) const;
    TaskResultEntity delete_(const QUuid& taskId) const;
    TaskResultEntity deleteCompleted(const QUuid& taskListId) const;
    TaskResultEntity find(const QUuid& taskId) const;
    TaskResultEntity list(const QUuid& taskListId) const;
    // The tasks of many lists in one read where the store allows.
    TaskResultEntity listOfLists(const QList<QUuid>& taskListIds) const;

    std::shared_ptr<TaskRepository> taskRepository;
    std::shared_ptr<TaskListRepository> taskListRepository;
    std::shared_ptr<Clock> clock;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;
};
