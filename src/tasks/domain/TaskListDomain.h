#pragma once

#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <optional>

// The rules on task lists; each failure carries its text as domainMessage.
namespace TaskListDomain {

TaskResultEntity validateName(const TaskListEntity& taskList);
// The project looked up for the list's prjId must be there.
TaskResultEntity parentProjectExists(const std::optional<ProjectEntity>& project);

} // namespace TaskListDomain
