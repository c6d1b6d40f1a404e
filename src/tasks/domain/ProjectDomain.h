#pragma once

#include "tasks/entities/ProjectEntity.h"
#include "tasks/entities/TaskListEntity.h"
#include "tasks/entities/TaskResultEntity.h"

#include <QList>

// The rules on projects; each failure carries its text as domainMessage.
namespace ProjectDomain {

// The name must keep something once white space and line breaks are trimmed from both ends.
TaskResultEntity validateName(const ProjectEntity& project);
// A project can only go once it has no task lists.
TaskResultEntity canDelete(const QList<TaskListEntity>& taskLists);
TaskResultEntity belongsToUser(const ProjectEntity& project, const QUuid& userId);

} // namespace ProjectDomain
