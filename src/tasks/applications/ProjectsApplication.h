#pragma once

#include "tasks/applications/TaskChangeRecorder.h"
#include "tasks/repositories/ProjectRepository.h"
#include "tasks/repositories/TaskListRepository.h"

#include <memory>

// The project use cases the screens call.
class ProjectsApplication {
public:
    ProjectsApplication(
        std::shared_ptr<ProjectRepository> projectRepository, std::shared_ptr<TaskListRepository> taskListRepository);

    TaskResultEntity create(const ProjectEntity& project) const;
    TaskResultEntity update(const ProjectEntity& project) const;
    // Only the owner may delete a project, and only once it has no task lists.
    TaskResultEntity delete_(const QUuid& projectId, const QUuid& userId) const;
    TaskResultEntity list(const QUuid& userId) const;

    std::shared_ptr<ProjectRepository> projectRepository;
    std::shared_ptr<TaskListRepository> taskListRepository;
    // Hears each change completed here; none while a change is being undone.
    std::shared_ptr<TaskChangeRecorder> recorder;
};
