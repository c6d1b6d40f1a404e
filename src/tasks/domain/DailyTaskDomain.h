#pragma once

#include "tasks/entities/DailyTaskEntity.h"
#include "tasks/entities/TaskResultEntity.h"

// The rule on daily tasks; a failure carries its text as domainMessage.
namespace DailyTaskDomain {

TaskResultEntity validateTitle(const DailyTaskEntity& dailyTask);

} // namespace DailyTaskDomain
