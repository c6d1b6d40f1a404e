#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/TaskListRepository.h"
#include "tasks/repositories/TaskRepository.h"

#include <memory>

// The task use cases the screens call.
class TasksApplication {
public:
    TasksApplication(
        std::shared_ptr<TaskRepository> taskRepository, std::shared_ptr<TaskListRepository> taskListRepository);

    // The task's list must exist.
    TaskResultEntity create(const TaskEntity& task) const;
    TaskResultEntity rename(const TaskEntity& task) const;
    TaskResultEntity markDone(const QUuid& taskId) const;
    TaskResultEntity markNotDone(const QUuid& taskId) const;
    TaskResultEntity setTag(const QUuid& taskId, std::optional<EisenhowerTagEnum> tag) const;
    TaskResultEntity delete_(const QUuid& taskId) const;
    TaskResultEntity deleteCompleted(const QUuid& taskListId) const;
    TaskResultEntity find(const QUuid& taskId) const;
    TaskResultEntity list(const QUuid& taskListId) const;

    std::shared_ptr<TaskRepository> taskRepository;
    std::shared_ptr<TaskListRepository> taskListRepository;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;
};
