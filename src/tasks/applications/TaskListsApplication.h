#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/ProjectRepository.h"
#include "tasks/repositories/TaskListRepository.h"
#include "tasks/repositories/TaskRepository.h"

#include <memory>

// The task list use cases the screens call.
class TaskListsApplication {
public:
    TaskListsApplication(std::shared_ptr<TaskListRepository> taskListRepository,
        std::shared_ptr<ProjectRepository> projectRepository, std::shared_ptr<TaskRepository> taskRepository);

    // The list's project must exist.
    TaskResultEntity create(const TaskListEntity& taskList) const;
    TaskResultEntity update(const TaskListEntity& taskList) const;
    // Makes taskList its project's only default list, writing only the lists whose flag changes,
    // one after another in the project's order. A failed write stops there; earlier ones stay.
    TaskResultEntity setDefault(const TaskListEntity& taskList) const;
    // Deletes the list's tasks first, so none is left behind without a list.
    TaskResultEntity delete_(const QUuid& taskListId) const;
    TaskResultEntity find(const QUuid& taskListId) const;
    TaskResultEntity list(const QUuid& projectId) const;
    // The lists of many projects in one read where the store allows.
    TaskResultEntity listOfProjects(const QList<QUuid>& projectIds) const;

    std::shared_ptr<TaskListRepository> taskListRepository;
    std::shared_ptr<ProjectRepository> projectRepository;
    std::shared_ptr<TaskRepository> taskRepository;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;
};
